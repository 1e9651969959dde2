// Any lines as one selection of the highlight file.

#include "ExchangeFolder.h"

#include "TYPVectorCATUnicodeString.h"
#include "VornToolsCommon.h"

namespace {

std::vector<std::string> textsOf(const TYPVectorCATUnicodeString& vector) {
    std::vector<std::string> texts;
    for (int i = 0; i < vector.size(); ++i) texts.push_back(bytesOf(vector.at(i)));
    return texts;
}

TYPVectorCATUnicodeString vectorOf(const std::vector<std::string>& lines) {
    TYPVectorCATUnicodeString vector;
    for (const std::string& line : lines) vector.push_back(CATUnicodeString(line.data(), line.size()));
    return vector;
}

/** The selection that means the values; what is read from it is what was read before. */
std::vector<std::string> writtenAgain(const std::vector<std::string>& parts, const std::vector<std::string>& files) {
    std::vector<std::string> lines;
    for (const std::string& part : parts) lines.insert(lines.end(), {"<partnumber>", part, "</partnumber>"});
    for (const std::string& file : files) lines.insert(lines.end(), {"<filename>", file, "</filename>"});
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    bool ended = false;
    const std::vector<std::string> lines = linesOf(std::string(data, data + size), ended);
    TYPVectorCATUnicodeString block = vectorOf(lines);
    TYPVectorCATUnicodeString parts = vectorOf({"stale"});
    TYPVectorCATUnicodeString files = vectorOf({"stale"});
    const HRESULT code = VornToolsCommon::readSelectionBalise(&block, &parts, &files);
    require(textsOf(block) == lines, "a block that was changed");
    if (FAILED(code)) {
        require(parts.size() == 0 && files.size() == 0, "values of a selection that is refused");
        requireCleanliness();
        return 0;
    }
    require(!parts.at(0).IsNull() || !files.at(0).IsNull(), "a selection that names nothing");
    const std::vector<std::string> partTexts = textsOf(parts);
    const std::vector<std::string> fileTexts = textsOf(files);
    require(3 * (partTexts.size() + fileTexts.size()) <= lines.size(), "more values than lines");
    TYPVectorCATUnicodeString again = vectorOf(writtenAgain(partTexts, fileTexts));
    require(VornToolsCommon::readSelectionBalise(&again, &parts, &files) == S_OK, "a clean selection that is refused");
    require(textsOf(parts) == partTexts && textsOf(files) == fileTexts, "a clean selection that is read as another");
    requireCleanliness();
    return 0;
}
