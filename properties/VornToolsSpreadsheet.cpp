#include "VornToolsSpreadsheet.h"

#include "foundation/Environment.h"
#include "foundation/JournalFrame.h"

#include "TYPMapCATUnicodeStringPVoid.h"
#include "UTILFile.h"

#include <memory>

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
    explicit MainBodyOptions(TYPMapCATUnicodeStringPVoid& io_map) : m_map(io_map) { clear(m_map); }
    ~MainBodyOptions() {
        if (m_kept) return;
        for (int i = 0; i < m_map.size(); ++i) delete static_cast<CATUnicodeString*>(m_map.valueAt(i));
        clear(m_map);
    }
    MainBodyOptions(const MainBodyOptions&) = delete;
    MainBodyOptions& operator=(const MainBodyOptions&) = delete;

    bool has(const CATUnicodeString& i_file_name) const { return m_map.contains(i_file_name) != 0; }
    void add(const CATUnicodeString& i_file_name, const CATUnicodeString& i_option) {
        auto p_option = std::make_unique<CATUnicodeString>(i_option);
        m_map.insert(i_file_name, p_option.get(), kValueClass);
        static_cast<void>(p_option.release());
    }
    /** From now on the values are the caller's. */
    HRESULT keep() {
        m_kept = true;
        return S_OK;
    }

private:
    TYPMapCATUnicodeStringPVoid& m_map;
    bool m_kept = false;
};

CATUnicodeString fullNameInImportFolder(const CATUnicodeString& i_folder, const CATUnicodeString& i_file_name) {
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    const int length = i_folder.GetLengthInChar() - separator.GetLengthInChar();
    const bool joined = i_folder.IsNull() || (length >= 0 && i_folder.SubString(length, 1) == separator);
    return i_folder + (joined ? CATUnicodeString() : separator) + i_file_name;
}

} // namespace

HRESULT VornToolsSpreadsheet::readBaliseInfos(UTILFile& io_file, const CATUnicodeString& i_end_tag,
                                              CATListValCATUnicodeString& o_lines) {
    const JournalFrame frame(_CteCLASS_NAME, "readBaliseInfos");
    o_lines.RemoveAll();
    CATUnicodeString line;
    while (io_file.readLine(line) == S_OK) {
        if (line == i_end_tag) return S_OK;
        o_lines.Append(line);
    }
    o_lines.RemoveAll();
    return E_FAIL;
}

HRESULT VornToolsSpreadsheet::getOptionValueFromImportSprdSht(int i_option, CATUnicodeString& o_value) {
    const JournalFrame frame(_CteCLASS_NAME, "getOptionValueFromImportSprdSht");
    o_value = "";
    const CATUnicodeString path = environmentText(&ENVManager::getSpreadSheetPath);
    UTILFile file;
    if (FAILED(file.open(path, "r"))) return frame.report(ErrorFileNotOpened, path);
    if (!beginsWithMenu(file)) return frame.report(kErrorWrongHeader, path);
    CATListValCATUnicodeString menu;
    if (FAILED(readBaliseInfos(file, _CteBALISE_MENU_END, menu))) return frame.platformFailed("readBaliseInfos");
    if (i_option < 1 || i_option > menu.Size()) return frame.report(kErrorIndexOutOfRange, "i_option");
    o_value = menu[i_option];
    return S_OK;
}

HRESULT VornToolsSpreadsheet::getCATPartMainBodyOption(TYPMapCATUnicodeStringPVoid& io_options) {
    const JournalFrame frame(_CteCLASS_NAME, "getCATPartMainBodyOption");
    MainBodyOptions options(io_options);
    const CATUnicodeString folder = environmentText(&ENVManager::getImportPath);
    const CATUnicodeString path = environmentText(&ENVManager::getSpreadSheetPath);
    UTILFile file;
    if (FAILED(file.open(path, "r"))) {
        frame.write("Cannot open file %s", path);
        return E_FAIL;
    }
    const auto refuse = [&] {
        frame.write("Invalid spreadsheet format");
        return E_FAIL;
    };
    CATListValCATUnicodeString menu;
    if (!beginsWithMenu(file) || FAILED(readBaliseInfos(file, _CteBALISE_MENU_END, menu))) return refuse();
    const CATUnicodeString usual =
        menu.Size() >= _CteMENU_MAIN_BODY_OPTION_INDEX ? menu[_CteMENU_MAIN_BODY_OPTION_INDEX] : CATUnicodeString();

    CATUnicodeString name;
    HRESULT code = readEntryName(file, name);
    for (; code == S_OK; code = readEntryName(file, name)) {
        if (!UTILFile::isACATPart(UTILFile::getExtension(name)) || options.has(name)) continue;
        code = skipToMainBodyBlock(file);
        if (FAILED(code)) break;
        if (code != S_OK) {
            frame.write("There is non balise main_body_only for [%s]", fullNameInImportFolder(folder, name));
            continue;
        }
        CATListValCATUnicodeString block;
        if (FAILED(readBaliseInfos(file, _CteBALISE_MAIN_BODY_ONLY_END, block))) return refuse();
        options.add(name, block.Size() >= _CteOPTS_MAIN_BODY_INDEX ? block[_CteOPTS_MAIN_BODY_INDEX] : usual);
    }
    return FAILED(code) ? refuse() : options.keep();
}
