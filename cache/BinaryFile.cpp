#include "VornToolsCommon.h"

#include "VornToolsString.h"
#include "foundation/ImageMemory.h"
#include "foundation/JournalFrame.h"
#include "foundation/OpenFile.h"

#include "UTILFile.h"

#include <cstdio>
#include <limits>

using namespace vorntools;

namespace {

/** Length of an open file, whose position is then its beginning; -1 when it cannot be told. */
long lengthOf(std::FILE* ip_file) {
    if (std::fseek(ip_file, 0, SEEK_END) != 0) return -1;
    const long length = std::ftell(ip_file);
    return std::fseek(ip_file, 0, SEEK_SET) == 0 ? length : -1;
}

} // namespace

VornToolsString* VornToolsCommon::readBinaryFile(CATUnicodeString i_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "readBinaryFile");
    long long size = 0;
    if (!UTILFile::existingFile(i_file_name) || FAILED(UTILFile::getFileSize(i_file_name, size)) || size == 0)
        return nullptr;
    const OpenFile sp_file = openFile(i_file_name, "rb");
    if (!sp_file) return nullptr;
    const long length = lengthOf(sp_file.get());
    if (length < 1 || length >= std::numeric_limits<int>::max()) {
        frame.write("Error while reading (ftell is failed) [%s]. readBinaryFile return NULL.", i_file_name);
        return nullptr;
    }
    char* const p_bytes = allocateImage(static_cast<std::size_t>(length));
    if (!p_bytes || std::fread(p_bytes, static_cast<std::size_t>(length), 1, sp_file.get()) != 1) {
        releaseImage(p_bytes);
        frame.write("Error while reading [%s] (fread is failed). readBinaryFile return NULL.", i_file_name);
        return nullptr;
    }
    return new VornToolsString(static_cast<int>(length), p_bytes);
}
