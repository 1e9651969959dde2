#include "VornToolsCommon.h"

#include "VornToolsString.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/OpenFile.h"

#include "UTILFile.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>

#if defined(__linux__)
#include <sys/mman.h>
#endif

using namespace vorntools;

namespace {

struct FreeBytes {
    void operator()(char* ip_bytes) const { std::free(ip_bytes); }
};

/** For std::free. */
char* allocate(std::size_t i_size) {
#if defined(MADV_HUGEPAGE)
    // Making pages of the usual size for a large image takes longer than the search through it.
    constexpr std::size_t huge_page = std::size_t{2} << 20;
    void* p_bytes = nullptr;
    if (i_size > 16 * huge_page && ::posix_memalign(&p_bytes, huge_page, i_size) == 0) {
        ::madvise(p_bytes, i_size, MADV_HUGEPAGE);
        return static_cast<char*>(p_bytes);
    }
#endif
    return static_cast<char*>(std::malloc(i_size));
}

/** Length of an open file, whose position is then its beginning; -1 when it cannot be told. */
long lengthOf(std::FILE* ip_file) {
    if (std::fseek(ip_file, 0, SEEK_END) != 0) return -1;
    const long length = std::ftell(ip_file);
    return std::fseek(ip_file, 0, SEEK_SET) == 0 ? length : -1;
}

VornToolsString* read(const JournalFrame& i_frame, const CATUnicodeString& i_file_name) {
    const CATUnicodeString name = nameOnDisk(i_file_name);
    long long size = 0;
    if (!UTILFile::existingFile(name) || FAILED(UTILFile::getFileSize(name, size)) || size == 0) return nullptr;
    const auto sp_file = openFile(name, "rb");
    if (!sp_file) return nullptr;
    const long length = lengthOf(sp_file.get());
    if (length < 1 || length >= (std::numeric_limits<int>::max)()) {
        i_frame.write("Error while reading (ftell is failed) [%s]. readBinaryFile return NULL.", i_file_name);
        return nullptr;
    }
    const auto count = static_cast<std::size_t>(length);
    std::unique_ptr<char, FreeBytes> sp_bytes(allocate(count + 1));
    if (!sp_bytes || std::fread(sp_bytes.get(), count, 1, sp_file.get()) != 1) {
        i_frame.write("Error while reading [%s] (fread is failed). readBinaryFile return NULL.", i_file_name);
        return nullptr;
    }
    sp_bytes.get()[count] = '\0';
    auto* const p_image = new VornToolsString(static_cast<int>(length), sp_bytes.get());
    static_cast<void>(sp_bytes.release()); // the string's from now on
    return p_image;
}

} // namespace

VornToolsString* VornToolsCommon::readBinaryFile(CATUnicodeString i_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "readBinaryFile");
    return guarded([&] { return read(frame, i_file_name); }, nullptr);
}
