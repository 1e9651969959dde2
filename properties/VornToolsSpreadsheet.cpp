#include "VornToolsSpreadsheet.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/TextKeys.h"

#include "TYPMapCATUnicodeStringPVoid.h"
#include "UTILFile.h"

#include <cstddef>
#include <memory>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornToolsSpreadsheet::_CteCLASS_NAME("VornToolsSpreadsheet::");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_MENU_START("<menu>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_MENU_END("</menu>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_DOC_START("<doc>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_OPTS_START("<opts>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_OPTS_END("</opts>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_MAIN_BODY_ONLY_START("<main_body_only>");
const CATUnicodeString VornToolsSpreadsheet::_CteBALISE_MAIN_BODY_ONLY_END("</main_body_only>");

namespace {

constexpr int kErrorIndexOutOfRange = 9101;
constexpr int kErrorWrongHeader = 9112;
constexpr const char* kValueClass = "CATUnicodeString";

/** Reads on to a line with a tag. @return S_OK when it was found, S_FALSE at the end of the file, else a failure */
HRESULT skipTo(UTILFile& io_file, const CATUnicodeString& i_tag) {
    CATUnicodeString line;
    HRESULT code = io_file.readLine(line);
    while (code == S_OK && line != i_tag) code = io_file.readLine(line);
    return code;
}

/** Reads on to the next entry, and its file name. @return as skipTo */
HRESULT readEntryName(UTILFile& io_file, CATUnicodeString& o_name) {
    const HRESULT code = skipTo(io_file, VornToolsSpreadsheet::_CteBALISE_DOC_START);
    return code == S_OK ? io_file.readLine(o_name) : code;
}

/** Reads on to the main-body block of an entry. Kept because the PDM client writes every entry whole: the tags are
 * looked for beyond the entry's own end. @return as skipTo */
HRESULT skipToMainBodyBlock(UTILFile& io_file) {
    const HRESULT code = skipTo(io_file, VornToolsSpreadsheet::_CteBALISE_OPTS_START);
    return code == S_OK ? skipTo(io_file, VornToolsSpreadsheet::_CteBALISE_MAIN_BODY_ONLY_START) : code;
}

bool beginsWithMenu(UTILFile& io_file) {
    CATUnicodeString line;
    return io_file.readLine(line) == S_OK && line == VornToolsSpreadsheet::_CteBALISE_MENU_START;
}

/** Takes everything out of the map; what the values lead to stays. */
void clear(TYPMapCATUnicodeStringPVoid& io_map) {
    for (int last = io_map.size() - 1; last >= 0; --last) io_map.erase(CATUnicodeString(io_map.keyAt(last)));
}

/** Options on their way into the caller's map: it gets all of them or none. */
class MainBodyOptions {
public:
    MainBodyOptions() = default;
    ~MainBodyOptions() {
        for (std::size_t i = 0; p_map && i < m_inserted; ++i) p_map->erase(m_entries[i].file_name);
    }
    MainBodyOptions(const MainBodyOptions&) = delete;
    MainBodyOptions& operator=(const MainBodyOptions&) = delete;

    bool has(const CATUnicodeString& i_file_name) const { return m_file_names.count(i_file_name) != 0; }
    void add(const CATUnicodeString& i_file_name, const CATUnicodeString& i_option) {
        m_entries.push_back({i_file_name, std::make_unique<CATUnicodeString>(i_option)});
        m_file_names.insert(i_file_name);
    }
    /** Fills the map; from then on the values are the caller's. */
    HRESULT moveTo(TYPMapCATUnicodeStringPVoid& io_map) {
        p_map = &io_map;
        for (; m_inserted < m_entries.size(); ++m_inserted)
            io_map.insert(m_entries[m_inserted].file_name, m_entries[m_inserted].option.get(), kValueClass);
        p_map = nullptr;
        for (Entry& entry : m_entries) static_cast<void>(entry.option.release());
        return S_OK;
    }

private:
    struct Entry {
        CATUnicodeString file_name;
        std::unique_ptr<CATUnicodeString> option;
    };

    std::vector<Entry> m_entries;
    TextSet m_file_names;
    TYPMapCATUnicodeStringPVoid* p_map = nullptr; ///< that is being filled
    std::size_t m_inserted = 0;
};

CATUnicodeString fullNameInImportFolder(const CATUnicodeString& i_folder, const CATUnicodeString& i_file_name) {
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    const int length = i_folder.GetLengthInChar() - separator.GetLengthInChar();
    const bool joined = i_folder.IsNull() || (length >= 0 && i_folder.SubString(length, 1) == separator);
    return i_folder + (joined ? CATUnicodeString() : separator) + i_file_name;
}

/** Reads the lines of a block up to its closing tag. */
HRESULT readBlock(UTILFile& io_file, const CATUnicodeString& i_end_tag, CATListValCATUnicodeString& o_lines) {
    const JournalFrame frame(VornToolsSpreadsheet::_CteCLASS_NAME, "readBaliseInfos");
    o_lines.RemoveAll();
    CATUnicodeString line;
    while (io_file.readLine(line) == S_OK) {
        if (line == i_end_tag) return S_OK;
        o_lines.Append(line);
    }
    o_lines.RemoveAll();
    return E_FAIL;
}

/** Reads the entries behind the menu. @param i_line of an entry's block that holds its option. @param i_usual the
 * option of one without that line. @return a failure when an entry breaks off */
HRESULT readEntries(const JournalFrame& i_frame, UTILFile& io_file, int i_line, const CATUnicodeString& i_usual,
                    MainBodyOptions& io_options) {
    const CATUnicodeString folder = environmentText(&ENVManager::getImportPath);
    CATUnicodeString name;
    HRESULT code = readEntryName(io_file, name);
    for (; code == S_OK; code = readEntryName(io_file, name)) {
        if (!UTILFile::isACATPart(UTILFile::getExtension(name)) || io_options.has(name)) continue;
        code = skipToMainBodyBlock(io_file);
        if (FAILED(code)) break;
        if (code != S_OK) {
            i_frame.write("There is non balise main_body_only for [%s]", fullNameInImportFolder(folder, name));
            continue;
        }
        CATListValCATUnicodeString block;
        code = readBlock(io_file, VornToolsSpreadsheet::_CteBALISE_MAIN_BODY_ONLY_END, block);
        if (FAILED(code)) break;
        io_options.add(name, block.Size() >= i_line ? block[i_line] : i_usual);
    }
    return code;
}

} // namespace

HRESULT VornToolsSpreadsheet::readBaliseInfos(UTILFile& io_file, const CATUnicodeString& i_end_tag,
                                              CATListValCATUnicodeString& o_lines) {
    return readBlock(io_file, i_end_tag, o_lines);
}

HRESULT VornToolsSpreadsheet::getOptionValueFromImportSprdSht(int i_option, CATUnicodeString& o_value) {
    const JournalFrame frame(_CteCLASS_NAME, "getOptionValueFromImportSprdSht");
    o_value = "";
    const auto read = [&]() -> HRESULT {
        const CATUnicodeString path = environmentText(&ENVManager::getSpreadSheetPath);
        UTILFile file;
        if (FAILED(file.open(path, "r"))) return frame.report(ErrorFileNotOpened, path);
        if (!beginsWithMenu(file)) return frame.report(kErrorWrongHeader, path);
        CATListValCATUnicodeString menu;
        if (FAILED(readBaliseInfos(file, _CteBALISE_MENU_END, menu))) return frame.platformFailed("readBaliseInfos");
        if (i_option < 1 || i_option > menu.Size()) return frame.report(kErrorIndexOutOfRange, "i_option");
        o_value = menu[i_option];
        return S_OK;
    };
    return guarded(read, E_FAIL);
}

HRESULT VornToolsSpreadsheet::getCATPartMainBodyOption(TYPMapCATUnicodeStringPVoid& io_options) {
    const JournalFrame frame(_CteCLASS_NAME, "getCATPartMainBodyOption");
    const auto read = [&]() -> HRESULT {
        clear(io_options);
        const CATUnicodeString path = environmentText(&ENVManager::getSpreadSheetPath);
        UTILFile file;
        if (FAILED(file.open(path, "r"))) {
            frame.write("Cannot open file %s", path);
            return E_FAIL;
        }
        CATListValCATUnicodeString menu;
        MainBodyOptions options;
        HRESULT code = beginsWithMenu(file) ? readBaliseInfos(file, _CteBALISE_MENU_END, menu) : E_FAIL;
        if (SUCCEEDED(code)) {
            constexpr int kUsual = _CteMENU_MAIN_BODY_OPTION_INDEX;
            code = readEntries(frame, file, _CteOPTS_MAIN_BODY_INDEX,
                               menu.Size() >= kUsual ? menu[kUsual] : CATUnicodeString(), options);
        }
        if (SUCCEEDED(code)) return options.moveTo(io_options);
        frame.write("Invalid spreadsheet format");
        return E_FAIL;
    };
    return guarded(read, E_FAIL);
}
