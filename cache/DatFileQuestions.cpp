#include "VornToolsCommon.h"

#include "cache/DatFile.h"
#include "cache/DatLines.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

using namespace vorntools;

namespace {

/** Answers a question, `ask(DatLines)`, on the DAT file of a document. */
template <class Ask>
HRESULT answerFromDatFile(const JournalFrame& i_frame, const CATUnicodeString& i_file_name, CATDocument* ip_document,
                          Ask&& i_ask, unsigned char& o_answer) {
    o_answer = 0;
    CATListValCATUnicodeString lines;
    const HRESULT code = readDatFile(i_frame, i_file_name, ip_document, "catia_doc_uuid sets to empty.", lines);
    if (FAILED(code))
        i_frame.write("readDatTools returns failed for :  %s ", i_file_name);
    else
        o_answer = i_ask(DatLines(lines)) ? 1 : 0;
    return code;
}

} // namespace

HRESULT VornToolsCommon::itemRevUIDExistsInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                                   unsigned char& o_exists) {
    const JournalFrame frame(_CteCLASS_NAME, "itemRevUIDExistsInDatFile");
    const auto work = [&]() -> HRESULT {
        const auto names_revision = [](const DatLines& i_dat) {
            return i_dat.isPositional() ? !i_dat.fileLine(1).IsNull() : i_dat.has(DatTag::ItemRevUID);
        };
        return answerFromDatFile(frame, i_file_name, ip_document, names_revision, o_exists);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isDesignTableInfoInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                                    unsigned char& o_is_design_table) {
    const JournalFrame frame(_CteCLASS_NAME, "isDesignTableInfoInDatFile");
    const auto work = [&]() -> HRESULT {
        const auto describes_table = [](const DatLines& i_dat) {
            return i_dat.has(DatTag::DesignTableSheets) && i_dat.has(DatTag::DesignTableConfigs) &&
                   i_dat.has(DatTag::DesignTableCksums);
        };
        return answerFromDatFile(frame, i_file_name, ip_document, describes_table, o_is_design_table);
    };
    return guarded(work, E_FAIL);
}
