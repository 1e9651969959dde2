// Spreadsheets of the older kind: a stream of records (BIFF 8, or BIFF 5 with texts of one byte a character). The first
// records describe the workbook; each sheet is a run of records of its own.

#include "embedded/tables/CellTexts.h"
#include "embedded/tables/CompoundFile.h"
#include "embedded/tables/LittleEndian.h"
#include "embedded/tables/Sheets.h"
#include "embedded/text/Characters.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>
#include <vector>

namespace embedded {

namespace {

enum RecordType : unsigned {
    RecordFormula = 0x06,
    RecordEnd = 0x0A,
    RecordDates = 0x22,
    RecordPassword = 0x2F,
    RecordContinue = 0x3C,
    RecordSheet = 0x85,
    RecordManyNumbers = 0xBD,
    RecordRichLabel = 0xD6,
    RecordStyle = 0xE0,
    RecordSharedTexts = 0xFC,
    RecordSharedLabel = 0xFD,
    RecordNumber = 0x203,
    RecordLabel = 0x204,
    RecordBooleanOrError = 0x205,
    RecordFormulaText = 0x207,
    RecordShortNumber = 0x27E,
    RecordFormat = 0x41E,
    RecordBegin = 0x809
};

constexpr unsigned kCells = 0x10; ///< what a sheet's records begin with; others are charts or macros
constexpr std::uint64_t kBooleanResult = 1;
constexpr std::uint64_t kErrorResult = 2;
constexpr unsigned kVersion5 = 0x500;
constexpr unsigned kVersion8 = 0x600;
/** What the format has room for. */
constexpr std::size_t kMostColumns = 256;

struct Record {
    unsigned type = 0;
    std::string_view data;
    std::string_view following; ///< everything behind it
};

/** False when no whole record is left. */
bool takeRecord(std::string_view& stream, Record& record) {
    if (stream.size() < 4) return false;
    const std::size_t size = read16(stream, 2);
    if (size > stream.size() - 4) return false;
    record = {read16(stream, 0), stream.substr(4, size), stream.substr(4 + size)};
    stream = record.following;
    return true;
}

/** Reads a record's data and that of the records that continue it. What is not there fails, once and for all. */
class Reader {
public:
    explicit Reader(const Record& record, std::size_t offset = 0) : m_data(record.data), m_following(record.following) {
        skip(offset);
    }

    bool failed() const { return m_failed; }
    std::uint64_t number(std::size_t size) {
        if (!prepare() || m_data.size() < size) return fail();
        const std::uint64_t value = readLittleEndian(m_data, 0, size);
        m_data.remove_prefix(size);
        return value;
    }
    void skip(std::size_t size) {
        while (size > 0 && prepare()) {
            const std::size_t step = std::min(size, m_data.size());
            m_data.remove_prefix(step);
            size -= step;
        }
    }
    /** Characters of one byte each, as Latin-1, or two. Where another record continues them, it says anew which. */
    std::string characters(std::size_t count, bool areWide, bool isSaidAgain) {
        std::vector<unsigned short> units;
        while (units.size() < count) {
            if (m_data.empty()) {
                if (!prepare()) break;
                if (isSaidAgain) areWide = (number(1) & 1U) != 0;
            }
            const std::size_t size = areWide ? 2 : 1;
            if (m_data.size() < size) fail();
            if (m_failed) break;
            units.push_back(static_cast<unsigned short>(readLittleEndian(m_data, 0, size)));
            m_data.remove_prefix(size);
        }
        return fromUtf16(units.data(), units.size());
    }

private:
    /** Goes on to the record that continues this one. */
    bool prepare() {
        while (!m_failed && m_data.empty()) {
            Record next;
            if (!takeRecord(m_following, next) || next.type != RecordContinue) fail();
            m_data = next.data;
        }
        return !m_failed;
    }
    std::uint64_t fail() {
        m_failed = true;
        m_data = {};
        return 0;
    }

    std::string_view m_data;
    std::string_view m_following;
    bool m_failed = false;
};

/** Whether a workbook's texts may have two bytes a character, and then say so. */
struct TextForm {
    bool mayBeWide;

    /** @param countSize bytes of the number of characters, which stands in front of them */
    std::string read(Reader& reader, std::size_t countSize = 2) const {
        const auto count = static_cast<std::size_t>(reader.number(countSize));
        const bool areWide = mayBeWide && (reader.number(1) & 1U) != 0;
        return reader.characters(count, areWide, mayBeWide);
    }
    /** One of the workbook's shared texts, behind which its fonts and readings stand. */
    static std::string readShared(Reader& reader) {
        const auto count = static_cast<std::size_t>(reader.number(2));
        const std::uint64_t flags = reader.number(1);
        const std::uint64_t fonts = (flags & 8U) != 0 ? reader.number(2) : 0;
        const std::uint64_t readings = (flags & 4U) != 0 ? reader.number(4) : 0;
        std::string text = reader.characters(count, (flags & 1U) != 0, true);
        reader.skip(static_cast<std::size_t>(4 * fonts + readings));
        return text;
    }
};

struct Workbook {
    TextForm texts{false};
    NumberRules rules;
    std::vector<std::size_t> sheets; ///< where the records of each begin
    std::vector<std::string> sharedTexts;
    std::map<unsigned, NumberKind> formats;
    std::vector<unsigned> styles; ///< format of each

    NumberKind kindOfStyle(unsigned style) const {
        if (style >= styles.size()) return NumberKind::number;
        const auto found = formats.find(styles[style]);
        return found == formats.end() ? kindOfFormat(static_cast<int>(styles[style])) : found->second;
    }
};

bool readSharedTexts(const Record& record, std::vector<std::string>& texts) {
    Reader reader(record);
    reader.skip(4);
    const std::uint64_t count = reader.number(4);
    if (count > kMostCells) return false;
    for (std::uint64_t i = 0; i < count && !reader.failed(); ++i) texts.push_back(TextForm::readShared(reader));
    return !reader.failed();
}

void readFormat(const Record& record, Workbook& workbook) {
    Reader reader(record);
    const auto number = static_cast<unsigned>(reader.number(2));
    const std::string code = workbook.texts.read(reader, workbook.texts.mayBeWide ? 2 : 1);
    if (!reader.failed()) workbook.formats[number] = kindOfFormat(code);
}

bool readWorkbookRecord(const Record& record, Workbook& workbook) {
    Reader reader(record);
    switch (record.type) {
    case RecordPassword: return false;
    case RecordDates: workbook.rules.since1904 = reader.number(2) == 1; break;
    case RecordSheet: workbook.sheets.push_back(static_cast<std::size_t>(reader.number(4))); break;
    case RecordSharedTexts: return readSharedTexts(record, workbook.sharedTexts);
    case RecordFormat: readFormat(record, workbook); break;
    case RecordStyle: reader.skip(2), workbook.styles.push_back(static_cast<unsigned>(reader.number(2))); break;
    default: break;
    }
    return !reader.failed();
}

bool readWorkbook(std::string_view stream, Workbook& workbook) {
    Record record;
    if (!takeRecord(stream, record) || record.type != RecordBegin || record.data.size() < 2) return false;
    const unsigned version = read16(record.data, 0);
    if (version != kVersion5 && version != kVersion8) return false;
    workbook.texts.mayBeWide = version == kVersion8;
    while (takeRecord(stream, record)) {
        if (record.type == RecordEnd) return true;
        if (!readWorkbookRecord(record, workbook)) return false;
    }
    return false;
}

/** A number in four bytes: the upper ones of a real, or an integer; maybe a hundred times what is meant. */
double shortNumber(std::uint32_t bits) {
    const std::uint32_t value = bits & ~std::uint32_t(3);
    double number = static_cast<std::int32_t>(value) / 4;
    if ((bits & 2U) == 0) {
        const std::uint64_t whole = static_cast<std::uint64_t>(value) << 32U;
        std::memcpy(&number, &whole, sizeof number);
    }
    return (bits & 1U) != 0 ? number / 100 : number;
}

std::string errorText(std::uint64_t code) {
    switch (code) {
    case 0x00: return "#NULL!";
    case 0x07: return "#DIV/0!";
    case 0x0F: return "#VALUE!";
    case 0x17: return "#REF!";
    case 0x1D: return "#NAME?";
    case 0x24: return "#NUM!";
    case 0x2A: return "#N/A";
    default: return "#ERROR!";
    }
}

class SheetReader {
public:
    explicit SheetReader(const Workbook& workbook) : m_workbook(workbook) {}

    /** @param stream begins with the sheet's records */
    bool read(std::string_view stream) {
        int depth = 0; // charts in a sheet are runs of records within its own
        for (Record record; takeRecord(stream, record);) {
            if (depth == 0 &&
                (record.type != RecordBegin || record.data.size() < 4 || read16(record.data, 2) != kCells))
                return false;
            if (record.type == RecordBegin) ++depth;
            if (record.type == RecordEnd && --depth <= 0) return depth == 0;
            if (depth == 1 && !readCell(record)) return false;
        }
        return false;
    }
    SheetRows take() { return m_sheet.take(); }

private:
    bool readCell(const Record& record) {
        Reader reader(record);
        switch (record.type) {
        case RecordNumber:
        case RecordShortNumber:
        case RecordSharedLabel:
        case RecordLabel:
        case RecordRichLabel:
        case RecordBooleanOrError:
        case RecordFormula: begin(reader); break;
        case RecordManyNumbers: return readNumbers(record);
        case RecordFormulaText: return put(reader, m_workbook.texts.read(reader));
        default: return true;
        }
        const auto style = static_cast<unsigned>(reader.number(2));
        switch (record.type) {
        case RecordNumber: return put(reader, number(reader.number(8), style));
        case RecordShortNumber: return put(reader, number(static_cast<std::uint32_t>(reader.number(4)), style));
        case RecordSharedLabel: return putShared(reader);
        case RecordBooleanOrError: return putBooleanOrError(reader, reader.number(2));
        case RecordFormula: return putFormula(reader, style);
        default: return put(reader, m_workbook.texts.read(reader));
        }
    }

    void begin(Reader& reader) {
        m_row = static_cast<std::size_t>(reader.number(2));
        m_column = static_cast<std::size_t>(reader.number(2));
    }
    bool put(const Reader& reader, std::string text) {
        if (reader.failed() || m_column >= kMostColumns) return false;
        return text.empty() || m_sheet.put(m_row, m_column, std::move(text));
    }
    std::string number(double value, unsigned style) const {
        return numberText(value, m_workbook.kindOfStyle(style), m_workbook.rules);
    }
    std::string number(std::uint64_t bits, unsigned style) const {
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return number(value, style);
    }
    std::string number(std::uint32_t bits, unsigned style) const { return number(shortNumber(bits), style); }

    bool putShared(Reader& reader) {
        const std::uint64_t index = reader.number(4);
        return index < m_workbook.sharedTexts.size() && put(reader, m_workbook.sharedTexts[index]);
    }
    /** @param value in its lower byte; the upper one says that it is an error */
    bool putBooleanOrError(const Reader& reader, std::uint64_t value) {
        const std::uint64_t lower = value & 0xFFU;
        return put(reader, value > 0xFFU ? errorText(lower) : booleanText(lower != 0));
    }
    /** What a formula gave: a number or, where its last bytes are no number's, something else. A text follows in a
     * record of its own. */
    bool putFormula(Reader& reader, unsigned style) {
        const std::uint64_t result = reader.number(8);
        if (result >> 48U != 0xFFFF) return put(reader, number(result, style));
        const std::uint64_t kind = result & 0xFFU;
        const std::uint64_t value = result >> 16U & 0xFFU;
        if (kind == kBooleanResult) return putBooleanOrError(reader, value);
        return kind == kErrorResult ? putBooleanOrError(reader, value | 0x100U) : put(reader, "");
    }
    bool readNumbers(const Record& record) {
        Reader reader(record);
        begin(reader);
        for (std::size_t left = record.data.size(); left >= 12; left -= 6, ++m_column) {
            const auto style = static_cast<unsigned>(reader.number(2));
            if (!put(reader, number(static_cast<std::uint32_t>(reader.number(4)), style))) return false;
        }
        return true;
    }

    const Workbook& m_workbook;
    SheetBuilder m_sheet;
    std::size_t m_row = 0;
    std::size_t m_column = 0;
};

} // namespace

std::optional<SheetRows> readXls(std::string_view bytes, int index, char decimalMark) {
    auto stream = streamOf(bytes, "Workbook");
    if (!stream) stream = streamOf(bytes, "Book");
    Workbook workbook;
    workbook.rules.decimalMark = decimalMark;
    if (!stream || !readWorkbook(*stream, workbook)) return std::nullopt;
    const auto position = static_cast<std::size_t>(index) - 1;
    if (position >= workbook.sheets.size() || workbook.sheets[position] > stream->size()) return std::nullopt;
    SheetReader reader(workbook);
    if (!reader.read(std::string_view(*stream).substr(workbook.sheets[position]))) return std::nullopt;
    return reader.take();
}

} // namespace embedded
