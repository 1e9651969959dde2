#include "tests/support/DocumentImage.h"

#include <algorithm>

using namespace std::string_literals;

namespace {

std::string littleEndian(std::int32_t value, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(static_cast<std::uint32_t>(value) >> 8 * i & 0xFF);
    return text;
}

std::string counted(const std::string& text) { return static_cast<char>(text.size()) + text; }

std::string location(const std::string& type, const std::string& path) {
    const std::string file =
        "\x01" + counted("File") + counted(type) + littleEndian(static_cast<std::int32_t>(path.size()), 2) + path;
    const std::string rest = counted("DocId") + littleEndian(static_cast<std::int32_t>(file.size()), 2) + file;
    return littleEndian(static_cast<std::int32_t>(rest.size())) + rest;
}

} // namespace

ImageRecord ImageRecord::whole(const std::string& type, const std::string& path, std::int32_t uses,
                               std::int32_t symbol) {
    return {"\x01o\0\0\0\0"s + counted("GenericLocate") + location(type, path), uses, symbol};
}

ImageRecord ImageRecord::object(const std::string& type, const std::string& path, const std::string& identity,
                                std::int32_t uses) {
    return {"\x11\x03"s + identity + "\0\0\0\0"s + counted("CATIA") + location(type, path), uses, 0};
}

ImageRecord ImageRecord::unloadable(const std::string& path, std::int32_t uses) {
    return {counted("Undef") + "\0\0\0\0"s + counted("CATWin") + location("CATUnloadable", path), uses, 0};
}

DocumentImage& DocumentImage::raw(const std::string& bytes) {
    m_bytes += bytes;
    return *this;
}

DocumentImage& DocumentImage::application() { return raw("AppliCont\0CATContainer\0\0"s); }

DocumentImage& DocumentImage::references(const std::vector<std::string>& texts) {
    raw(tableText("_CntrName"));
    for (const std::string& text : texts) raw(tableText(text));
    return raw(tableText("CATCatalogManager"));
}

DocumentImage& DocumentImage::pointer(const std::string& identity, const std::string& element) {
    raw("\xE5\x2E\0\0\0\x11\x03"s + identity);
    return element.empty() ? *this : raw("\x07\0\0\0\x05\0"s + element);
}

DocumentImage& DocumentImage::imports(const std::vector<ImageRepository>& repositories,
                                      const std::vector<std::string>& texts) {
    raw("OSMX");
    for (const ImageRepository& repository : repositories) {
        raw("\x7C\x07\x2B\0\0\0\x3B\x86\xE9\xC0\x18\x40\x37"s + number(repository.symbol) + "\xE8\x01\x6F\xFE"s);
        for (const unsigned char text : repository.inputs)
            raw("\x42\x8D\xE9\xC0\x1D\x02\x37"s + static_cast<char>(0x34 + text) + "\xFE"s);
    }
    std::string table = number(static_cast<std::int32_t>(texts.size()) + firstImportText);
    for (const char* text : {"CATCatalogManager", "catalogManager", "", "CATXDLRepository"}) table += tableText(text);
    for (const std::string& text : texts) table += tableText(text);
    return raw("\x7C\x02" + littleEndian(static_cast<std::int32_t>(table.size()) + 6) + table);
}

DocumentImage& DocumentImage::properties(const std::string& ownPath, const std::vector<ImageRecord>& records) {
    raw("CATDocumentProperty\x80\x01\0\0\0\0\x22\x02\0\0\0\x22"s + integer(static_cast<std::int32_t>(records.size())));
    raw("\0\x34\x11\x43\x41\x54SymbolArray\xE0\x03\0\0\0\0\x22"s);
    raw(block(ImageRecord::whole("CATPart", ownPath).text, 0));
    for (const ImageRecord& record : records) {
        // Between two blocks; the first one follows the document's own.
        raw("\xE0\x02\0\0\0\0\x22\x02\0\0\0\xE0\x03\0\0\0\0\x22"s + block(record.text, record.uses));
    }
    std::int32_t place = 0;
    for (const ImageRecord& record : records) {
        ++place;
        raw("\x24" + integer(record.symbol != 0 ? record.symbol : place));
    }
    return raw("\x9F\x36\x08\x46INJPL  "s);
}

DocumentImage& DocumentImage::summary(int version, int release, int servicePack) {
    const auto field = [](const std::string& name, int value) {
        return "<" + name + ">" + std::to_string(value) + "/<" + name + ">";
    };
    return raw("CATSummaryInformation\x07\0\0\0LastSaveVersion"s + field("Version", version) +
               field("Release", release) + field("ServicePack", servicePack));
}

std::string DocumentImage::number(std::int32_t value) {
    if (value < 0x50) return std::string(1, static_cast<char>(0x81 + value));
    if (value < 0x200) return {static_cast<char>(0xD1 + value / 256), static_cast<char>(value % 256)};
    return "\x80" + littleEndian(value);
}

std::string DocumentImage::tableText(const std::string& text) {
    if (text.size() <= 48) return static_cast<char>(text.size() + 1) + text;
    return "\0"s + littleEndian(static_cast<std::int32_t>(text.size())) + text;
}

int DocumentImage::position(const char* name) const {
    const std::size_t found = m_bytes.find(name);
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

std::string DocumentImage::integer(std::int32_t value) const {
    std::string text = littleEndian(value);
    if (!m_littleEndian) std::reverse(text.begin(), text.end());
    return text;
}

std::string DocumentImage::block(const std::string& text, std::int32_t uses) const {
    std::string bytes = integer(static_cast<std::int32_t>(text.size()));
    for (const char byte : text) bytes += "\x3B\x01"s + byte;
    return bytes + "\x9F\x22\0\0\0\0\x22\0\0\0\0\x23"s + integer(uses) + "\x21\0\0\x21\0\0\x9F"s;
}
