#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "TYPVectorCATUnicodeString.h"

#include <utility>

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

/** Reads the values of both kinds. @return E_FAIL, journalled, for a block of another form */
HRESULT readBlock(const JournalFrame& i_frame, const TYPVectorCATUnicodeString& i_block,
                  TYPVectorCATUnicodeString& o_part_numbers, TYPVectorCATUnicodeString& o_file_names) {
    if (!readValues(i_block, o_part_numbers, o_file_names)) {
        i_frame.write("ERROR : There is no end balise.");
        return E_FAIL;
    }
    if (o_part_numbers.at(0).IsNull() && o_file_names.at(0).IsNull()) {
        i_frame.write("ERROR : filename and partnumber are empty.");
        return E_FAIL;
    }
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::readSelectionBalise(TYPVectorCATUnicodeString* ip_block,
                                             TYPVectorCATUnicodeString* op_part_numbers,
                                             TYPVectorCATUnicodeString* op_file_names) {
    const JournalFrame frame(_CteCLASS_NAME, "readSelectionBalise");
    TYPVectorCATUnicodeString part_numbers, file_names;
    const bool asked = ip_block && op_part_numbers && op_file_names;
    const HRESULT code =
        asked ? guarded([&] { return readBlock(frame, *ip_block, part_numbers, file_names); }, E_FAIL) : E_FAIL;
    // Not before the block is read, which may be one of the outputs.
    if (op_part_numbers) op_part_numbers->clear();
    if (op_file_names) op_file_names->clear();
    if (FAILED(code)) return code;
    *op_part_numbers = std::move(part_numbers);
    *op_file_names = std::move(file_names);
    return code;
}
