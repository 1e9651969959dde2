#include "VornToolsCommon.h"

#include "foundation/JournalFrame.h"

#include "TYPVectorCATUnicodeString.h"

using namespace vorntools;

namespace {

const CATUnicodeString kPartNumberOpening("<partnumber>");
const CATUnicodeString kPartNumberClosing("</partnumber>");
const CATUnicodeString kFileNameOpening("<filename>");
const CATUnicodeString kFileNameClosing("</filename>");

/** Reads the value behind its opening tag. @param io_index in: of the opening tag; out: of the closing one
 * @return whether the closing tag is there, letter case ignored */
bool readValue(const TYPVectorCATUnicodeString& i_block, const CATUnicodeString& i_closing, int& io_index,
               TYPVectorCATUnicodeString& io_values) {
    io_values.push_back(i_block.at(io_index + 1));
    io_index += 2;
    return i_block.at(io_index).Compare(i_closing) != 0;
}

/** @return false when a value has no closing tag */
bool readValues(const TYPVectorCATUnicodeString& i_block, TYPVectorCATUnicodeString& io_part_numbers,
                TYPVectorCATUnicodeString& io_file_names) {
    for (int i = 0; i < i_block.size(); ++i) {
        const CATUnicodeString& line = i_block.at(i);
        if (line == kPartNumberOpening && !readValue(i_block, kPartNumberClosing, i, io_part_numbers)) return false;
        if (line == kFileNameOpening && !readValue(i_block, kFileNameClosing, i, io_file_names)) return false;
    }
    return true;
}

} // namespace

HRESULT VornToolsCommon::readSelectionBalise(TYPVectorCATUnicodeString* ip_block,
                                             TYPVectorCATUnicodeString* op_part_numbers,
                                             TYPVectorCATUnicodeString* op_file_names) {
    const JournalFrame frame(_CteCLASS_NAME, "readSelectionBalise");
    // The block may be one of the outputs.
    const TYPVectorCATUnicodeString block = ip_block ? *ip_block : TYPVectorCATUnicodeString();
    if (op_part_numbers) op_part_numbers->clear();
    if (op_file_names) op_file_names->clear();
    if (!ip_block || !op_part_numbers || !op_file_names) return E_FAIL;

    TYPVectorCATUnicodeString part_numbers, file_names;
    if (!readValues(block, part_numbers, file_names)) {
        frame.write("ERROR : There is no end balise.");
        return E_FAIL;
    }
    if (part_numbers.at(0).IsNull() && file_names.at(0).IsNull()) {
        frame.write("ERROR : filename and partnumber are empty.");
        return E_FAIL;
    }
    *op_part_numbers = part_numbers;
    *op_file_names = file_names;
    return S_OK;
}
