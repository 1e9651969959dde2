#include "tools/vorntools/zip/ZipWriter.h"

#include <zip.h>

#include <cstdio>

namespace {

bool addItem(zip_t* zip, const ZipItem& item) {
    constexpr zip_int64_t kToEnd = -1;
    zip_source_t* const source = zip_source_file(zip, item.file, 0, kToEnd);
    if (!source) return false;
    if (zip_file_add(zip, item.name, source, ZIP_FL_ENC_GUESS) >= 0) return true;
    zip_source_free(source);
    return false;
}

} // namespace

extern "C" __attribute__((visibility("default"))) bool
vornToolsWriteZip(const char* zipFile, const ZipItem* items, std::size_t count, char* message, std::size_t size) {
    int code = 0;
    zip_t* const zip = zip_open(zipFile, ZIP_CREATE | ZIP_EXCL, &code);
    if (!zip) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        std::snprintf(message, size, "%s", zip_error_strerror(&error));
        zip_error_fini(&error);
        return false;
    }
    bool good = true;
    for (std::size_t i = 0; good && i < count; ++i) good = addItem(zip, items[i]);
    // Files are read and everything is written only now, beside the final name.
    if (good && zip_close(zip) == 0) return true;
    std::snprintf(message, size, "%s", zip_strerror(zip));
    zip_discard(zip);
    return false;
}
