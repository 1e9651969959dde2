// Any bytes as the highlight file, read with one and with three values a selection.

#include "ExchangeFolder.h"

#include "CATListOfCATUnicodeString.h"
#include "VornToolsCommon.h"

#include <algorithm>

namespace {

/** What a reading gave. */
struct Reading {
    explicit Reading(bool threeValues) {
        embedded::Session::current().environment().commandHighlightItemRevision = threeValues;
        code = VornToolsCommon::readHighlightFile(1, contexts, parts, files);
    }
    HRESULT code = S_OK;
    CATListValCATUnicodeString contexts, parts, files;
};

void checkReading(const Reading& reading, const std::vector<std::string>& lines) {
    require(reading.parts.Size() == reading.files.Size(), "lists that are not parallel");
    require(reading.contexts.Size() <= 1, "more than one context");
    require(reading.contexts.Size() == 0 || (lines[0] == "<Context>" && bytesOf(reading.contexts[1]) == lines[1]),
            "a context that the file does not have");
    const auto stands = [&](const CATUnicodeString& value) {
        return value.IsNull() || std::find(lines.begin(), lines.end(), bytesOf(value)) != lines.end();
    };
    for (int i = 1; i <= reading.parts.Size(); ++i)
        require(stands(reading.parts[i]) && stands(reading.files[i]), "a value that stands nowhere in the file");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const std::string bytes(data, data + size);
    folder.write("highlight_v01.txt", bytes);
    bool ended = false;
    const std::vector<std::string> lines = linesOf(bytes, ended);

    const Reading one(false);
    const Reading three(true);
    checkReading(one, lines);
    checkReading(three, lines);
    require(one.code == three.code && one.contexts.Size() == three.contexts.Size(), "two ways to read one file");
    require(one.parts.Size() <= three.parts.Size() && three.parts.Size() <= 3 * one.parts.Size(),
            "the number of values of each selection");
    for (int i = 1; i <= one.parts.Size(); ++i)
        require(!one.parts[i].IsNull() || !one.files[i].IsNull(), "a selection that names nothing");
    const auto opening = static_cast<int>(std::count(lines.begin(), lines.end(), "<selection>"));
    require(one.parts.Size() <= opening, "more selections than the file has");
    require(FAILED(one.code) || one.parts.Size() > 0 || opening == 0, "a file whose selections are lost");
    requireCleanliness();
    return 0;
}
