#ifndef VornToolsSpreadsheet_H
#define VornToolsSpreadsheet_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class TYPMapCATUnicodeStringPVoid;
class UTILFile;

/**
 * Reads the import spreadsheet: a text file that the PDM client prepares for an import, with the values of the import
 * menu and the options of each document. docs/import-spreadsheet.md describes it. All static; the environment says
 * where the file is.
 *
 * @par Example
 * @snippet properties.cpp VornToolsSpreadsheet
 */
class ExportedByVornTools VornToolsSpreadsheet {
public:
    /** "VornToolsSpreadsheet::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** "<menu>", the file's first line. */
    static const CATUnicodeString _CteBALISE_MENU_START;
    /** "</menu>", behind the menu's values. */
    static const CATUnicodeString _CteBALISE_MENU_END;
    /** "<doc>", before the file name of a document. */
    static const CATUnicodeString _CteBALISE_DOC_START;
    /** "<opts>", before the options of a document. */
    static const CATUnicodeString _CteBALISE_OPTS_START;
    /** "</opts>", behind the options of a document. */
    static const CATUnicodeString _CteBALISE_OPTS_END;
    /** "<main_body_only>", before the main-body option of a document. */
    static const CATUnicodeString _CteBALISE_MAIN_BODY_ONLY_START;
    /** "</main_body_only>", behind the main-body option of a document. */
    static const CATUnicodeString _CteBALISE_MAIN_BODY_ONLY_END;

    /** Menu option that says how geometry is computed. */
    static constexpr int _CteMENU_GEO_COMPUTE_OPTION_INDEX = 4;
    /** Menu option that says how hidden objects are treated. */
    static constexpr int _CteMENU_MGTHIDESHOW_OPTION_INDEX = 10;

    /**
     * Value of a menu option.
     * @param i_option from 1
     * @param o_value the line as it stands there; empty on failure
     * @return S_OK; E_FAIL, reported, when the file cannot be opened (501), does not begin with a menu (9112), its menu
     * does not end (9004) or has no such option (9101)
     */
    static HRESULT getOptionValueFromImportSprdSht(int i_option, CATUnicodeString& o_value);

    /**
     * The main-body option of each part: that of its first entry, or the menu's when its entry leaves it open.
     * @param io_options file name to a new CATUnicodeString (class "CATUnicodeString"), which the caller deletes. What
     * the map held is taken out without being deleted; the map is empty on failure
     * @return S_OK; E_FAIL, journalled, when the file cannot be opened or its format is wrong. An entry without a
     * main-body block is journalled and left out
     */
    static HRESULT getCATPartMainBodyOption(TYPMapCATUnicodeStringPVoid& io_options);

private:
    friend struct VornToolsSpreadsheetTestAccess;

    static constexpr int _CteMENU_MAIN_BODY_OPTION_INDEX = 9;
    static constexpr int _CteOPTS_MAIN_BODY_INDEX = 1;

    /**
     * Reads on up to a line with a tag.
     * @param o_lines the lines before it; empty on failure
     * @return E_FAIL when the file ends first or cannot be read
     */
    static HRESULT readBaliseInfos(UTILFile& io_file, const CATUnicodeString& i_end_tag,
                                   CATListValCATUnicodeString& o_lines);
};

#endif
