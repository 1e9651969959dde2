#include "tools/vorntools/DocumentContents.h"

#include "tools/vorntools/Text.h"

#include "VornToolsString.h"

#include <memory>

namespace {

/** No picture that the platform stores with a document is nearly as large. */
constexpr std::size_t kLargestPicture = 1U << 20U;

ContentsEntry entryOf(VornToolsDocumentFile& file, int index) {
    ContentsEntry entry;
    CATUnicodeString text;
    unsigned char isStream = 0;
    file.getEntry(index, text, entry.parent, isStream, entry.size, entry.pieces);
    entry.name = bytesOf(text);
    entry.isStream = isStream != 0;
    for (std::size_t i = 0; i < entry.dates.size(); ++i) {
        file.getEntryDate(index, static_cast<int>(i) + 1, text);
        entry.dates[i] = bytesOf(text);
    }
    return entry;
}

std::string jpegOf(const char* bytes, std::size_t size) {
    if (size > kLargestPicture) return {};
    std::string picture(bytes, size);
    return picture.compare(0, 2, "\xFF\xD8") == 0 ? picture : std::string();
}

} // namespace

std::vector<ContentsEntry> entriesOf(VornToolsDocumentFile& file) {
    std::vector<ContentsEntry> entries;
    for (int i = 1; i <= file.getEntryCount(); ++i) entries.push_back(entryOf(file, i));
    return entries;
}

std::string pictureOf(VornToolsDocumentFile& file) {
    const std::unique_ptr<VornToolsString> picture(file.readPreview());
    return picture ? jpegOf(picture->bytes(), picture->size()) : std::string();
}

std::string pictureOf(const VornToolsDocumentLinks& document) {
    const VornToolsDocumentLinks::Text picture = document.getPreview();
    return jpegOf(picture.bytes, picture.length);
}
