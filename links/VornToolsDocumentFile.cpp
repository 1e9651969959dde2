#include "VornToolsDocumentFile.h"

#include "VornToolsString.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFile.h"
#include "links/LinkImage.h"

#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

using namespace vorntools;

const CATUnicodeString VornToolsDocumentFile::_CteCLASS_NAME("VornToolsDocumentFile::");

namespace {

VornToolsString* newString(std::string_view i_bytes) {
    constexpr std::size_t longest = (std::numeric_limits<int>::max)();
    return i_bytes.size() < longest ? new VornToolsString(i_bytes.data(), static_cast<int>(i_bytes.size())) : nullptr;
}

/** Year, month and day of a day counted from 1601-01-01. */
struct CivilDate {
    explicit CivilDate(std::uint64_t i_days) {
        // Years that begin in March, counted from the year 0, so that a leap day is the last of its year.
        const std::uint64_t days = i_days + 584694;
        const std::uint64_t era = days / 146097;
        const std::uint64_t day_of_era = days % 146097;
        const std::uint64_t year_of_era =
            (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
        const std::uint64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
        const std::uint64_t march_month = (5 * day_of_year + 2) / 153;
        day = day_of_year - (153 * march_month + 2) / 5 + 1;
        month = march_month < 10 ? march_month + 3 : march_month - 9;
        year = era * 400 + year_of_era + (month <= 2 ? 1 : 0);
    }

    std::uint64_t year, month, day;
};

CATUnicodeString textOfDate(std::uint64_t i_date) {
    if (i_date == 0) return CATUnicodeString();
    const std::uint64_t seconds = i_date / 10000000;
    const CivilDate date(seconds / 86400);
    const auto number = [](std::uint64_t i_number) { return static_cast<unsigned long long>(i_number); };
    char text[64];
    std::snprintf(text, sizeof text, "%04llu-%02llu-%02llu %02llu:%02llu:%02llu", number(date.year), number(date.month),
                  number(date.day), number(seconds / 3600 % 24), number(seconds / 60 % 60), number(seconds % 60));
    return text;
}

void appendUtf8(std::uint32_t i_character, std::string& io_bytes) {
    const auto add = [&](std::uint32_t i_byte) { io_bytes += static_cast<char>(static_cast<unsigned char>(i_byte)); };
    if (i_character < 0x80) return add(i_character);
    if (i_character < 0x800) {
        add(0xC0 | i_character >> 6);
    } else {
        if (i_character < 0x10000) {
            add(0xE0 | i_character >> 12);
        } else {
            add(0xF0 | i_character >> 18);
            add(0x80 | (i_character >> 12 & 0x3F));
        }
        add(0x80 | (i_character >> 6 & 0x3F));
    }
    add(0x80 | (i_character & 0x3F));
}

/** A stored name in the platform's own texts; half of a pair becomes the character for what cannot be read. */
CATUnicodeString textOf(std::u16string_view i_name) {
    std::string bytes;
    for (std::size_t i = 0; i < i_name.size(); ++i) {
        std::uint32_t character = i_name[i];
        const bool is_first = (character & 0xFC00) == 0xD800;
        if (is_first && i + 1 < i_name.size() && (i_name[i + 1] & 0xFC00) == 0xDC00)
            character = 0x10000 + ((character & 0x3FF) << 10) + (i_name[++i] & 0x3FF);
        else if ((character & 0xF800) == 0xD800)
            character = 0xFFFD;
        appendUtf8(character, bytes);
    }
    CATUnicodeString text;
    text.BuildFromUTF8(bytes.data(), bytes.size());
    return text;
}

} // namespace

/** What has been found out of the open file. */
struct VornToolsDocumentFile::Content {
    DocumentFile file;
    EnumDocumentCondition condition = DocumentNotOpen;
    bool is_condition_known = false;
    std::unordered_map<std::uint32_t, int> storages; ///< indices by identifier, once one was asked for

    const DirectoryEntry* entry(int i_index) const {
        const auto& entries = file.entries();
        return i_index >= 1 && static_cast<std::size_t>(i_index) <= entries.size()
                   ? &entries[static_cast<std::size_t>(i_index) - 1]
                   : nullptr;
    }
    int indexOf(std::uint32_t i_storage);
    VornToolsString* makeLinkImage(const JournalFrame& i_frame);
};

/** Index of a storage, from 1; 0 when it is not there. */
int VornToolsDocumentFile::Content::indexOf(std::uint32_t i_storage) {
    if (storages.empty()) {
        int index = 0;
        for (const DirectoryEntry& entry : file.entries()) {
            ++index;
            if (!entry.is_stream) storages.emplace(entry.identifier, index);
        }
    }
    const auto found = storages.find(i_storage);
    return found == storages.end() ? 0 : found->second;
}

VornToolsString* VornToolsDocumentFile::Content::makeLinkImage(const JournalFrame& i_frame) {
    LinkImage image;
    if (!image.read(i_frame, file)) return nullptr;
    is_condition_known = true;
    condition = image.conditionOf(file);
    return image.takeBytes();
}

VornToolsDocumentFile::VornToolsDocumentFile() : m_content(nullptr) {}

VornToolsDocumentFile::~VornToolsDocumentFile() { delete m_content; }

HRESULT VornToolsDocumentFile::open(const CATUnicodeString& i_path) {
    const JournalFrame frame(_CteCLASS_NAME, "open");
    delete std::exchange(m_content, nullptr);
    const bool opened = guarded(
        [&] {
            auto sp_content = std::make_unique<Content>();
            if (!sp_content->file.open(i_path)) return false;
            m_content = sp_content.release();
            return true;
        },
        false);
    return opened ? S_OK : frame.report(ErrorFileNotOpened, i_path);
}

HRESULT VornToolsDocumentFile::close() {
    const JournalFrame frame(_CteCLASS_NAME, "close");
    delete std::exchange(m_content, nullptr);
    return S_OK;
}

unsigned long long VornToolsDocumentFile::getSize() const {
    const JournalFrame frame(_CteCLASS_NAME, "getSize");
    return m_content ? m_content->file.size() : 0;
}

VornToolsDocumentFile::EnumDocumentCondition VornToolsDocumentFile::getCondition() {
    const JournalFrame frame(_CteCLASS_NAME, "getCondition");
    if (!m_content) return DocumentNotOpen;
    if (m_content->is_condition_known) return m_content->condition;
    if (m_content->file.size() == 0) return DocumentNoDocument;
    const bool made =
        guarded([&] { return std::unique_ptr<VornToolsString>(m_content->makeLinkImage(frame)) != nullptr; }, false);
    // What was there a moment ago can be read no more.
    return made ? m_content->condition : DocumentDamaged;
}

int VornToolsDocumentFile::getEntryCount() const {
    const JournalFrame frame(_CteCLASS_NAME, "getEntryCount");
    return m_content ? static_cast<int>(m_content->file.entries().size()) : 0;
}

HRESULT VornToolsDocumentFile::getEntry(int i_index, CATUnicodeString& o_name, int& o_parent,
                                        unsigned char& o_is_stream, unsigned int& o_size, int& o_pieces) const {
    const JournalFrame frame(_CteCLASS_NAME, "getEntry");
    o_name = "";
    o_parent = 0;
    o_is_stream = 0;
    o_size = 0;
    o_pieces = 0;
    const DirectoryEntry* const p_entry = m_content ? m_content->entry(i_index) : nullptr;
    if (!p_entry) return frame.report(ErrorOutOfRange, "i_index");
    const auto name_and_place = [&] {
        o_parent = m_content->indexOf(p_entry->parent);
        o_name = textOf(charactersOf(p_entry->name));
    };
    if (!guarded(name_and_place)) {
        o_parent = 0;
        return E_FAIL;
    }
    o_is_stream = p_entry->is_stream ? 1 : 0;
    o_size = p_entry->size;
    o_pieces = static_cast<int>(p_entry->pieces.size());
    return S_OK;
}

HRESULT VornToolsDocumentFile::getEntryDate(int i_index, int i_which, CATUnicodeString& o_date) const {
    const JournalFrame frame(_CteCLASS_NAME, "getEntryDate");
    o_date = "";
    const DirectoryEntry* const p_entry = m_content ? m_content->entry(i_index) : nullptr;
    if (!p_entry) return frame.report(ErrorOutOfRange, "i_index");
    if (i_which < 1 || i_which > static_cast<int>(EntryDates::count)) return frame.report(ErrorOutOfRange, "i_which");
    return guarded([&] { o_date = textOfDate(p_entry->dates[static_cast<std::size_t>(i_which) - 1]); }) ? S_OK : E_FAIL;
}

VornToolsString* VornToolsDocumentFile::readStream(int i_index, unsigned int i_from, unsigned int i_count) {
    const JournalFrame frame(_CteCLASS_NAME, "readStream");
    const DirectoryEntry* const p_entry = m_content ? m_content->entry(i_index) : nullptr;
    if (!p_entry) {
        frame.report(ErrorOutOfRange, "i_index");
        return nullptr;
    }
    const auto read = [&]() -> VornToolsString* {
        std::string bytes;
        return m_content->file.appendStream(*p_entry, i_from, i_count, bytes) ? newString(bytes) : nullptr;
    };
    VornToolsString* const p_bytes = guarded(read, nullptr);
    if (!p_bytes) frame.callFailed("readStream");
    return p_bytes;
}

VornToolsString* VornToolsDocumentFile::readLinkImage() {
    const JournalFrame frame(_CteCLASS_NAME, "readLinkImage");
    if (!m_content) return nullptr;
    return guarded([&] { return m_content->makeLinkImage(frame); }, nullptr);
}

VornToolsString* VornToolsDocumentFile::readPreview() {
    const JournalFrame frame(_CteCLASS_NAME, "readPreview");
    if (!m_content) return nullptr;
    const auto read = [&]() -> VornToolsString* {
        std::string picture;
        return m_content->file.readPreview(picture) ? newString(picture) : nullptr;
    };
    return guarded(read, nullptr);
}
