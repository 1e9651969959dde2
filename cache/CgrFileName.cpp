// Names of cached visualisation files (".cgr").

#include "VornToolsCommon.h"

#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"

#include "UTILFile.h"
#include "VornCache.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string_view>

using namespace vorntools;

namespace {

constexpr int kSplitFailed = 309;    // this method's own number
constexpr int kDateFieldLength = 24; // ".yyyy-mm-dd-hh.mm.ss.cgr"
constexpr const char* kCachedTypes[] = {"CATPart", "model", "CATShape", "jt"};
constexpr const char* kLongPathPrefix = R"(\\?\)";
constexpr const char* kLogicalNamePrefix = "\x01\x02\\";
constexpr const char* kLogicalNameFolder = "CATDLNAMES";

CATUnicodeString withoutLast(const CATUnicodeString& i_text, int i_count) {
    return i_text.SubString(0, i_text.GetLengthInChar() - i_count);
}

/** "Part1.CATPart" for "Part1.CATPart.cgr", with or without the date field. */
CATUnicodeString sourceNameOf(const CATUnicodeString& i_cache_name) {
    if (VornCache::cgrFileNameContainsLastModificationDateField(i_cache_name))
        return withoutLast(i_cache_name, kDateFieldLength);
    return withoutLast(i_cache_name, 1 + UTILFile::getExtension(i_cache_name).GetLengthInChar());
}

bool isOfCachedType(const CATUnicodeString& i_source_name) {
    const CATUnicodeString extension = UTILFile::getExtension(i_source_name);
    return std::any_of(std::begin(kCachedTypes), std::end(kCachedTypes),
                       [&](const char* i_type) { return extension == CATUnicodeString(i_type); });
}

/** Cuts the folder of one cache off the front of a directory. @param i_cache ends with a separator; empty: no cache */
bool cutCacheFolder(const CATUnicodeString& i_cache, const CATUnicodeString& i_separator, CATUnicodeString& io_folder) {
    const CATUnicodeString folder = i_cache + "cgr" + i_separator;
    if (i_cache.IsNull() || !beginsWith(io_folder, folder)) return false;
    io_folder = behind(io_folder, folder.GetLengthInChar());
    return true;
}

/** The same with the local cache and then the shared ones. @return S_FALSE when the directory lies in none */
HRESULT cutFirstCacheFolder(const CATUnicodeString& i_separator, CATUnicodeString& io_folder) {
    if (cutCacheFolder(environmentText(&ENVManager::getLocalCacheDirectory), i_separator, io_folder)) return S_OK;
    ENVManager* const p_environment = ENVManager::getInstance();
    if (!p_environment) return S_FALSE;
    CATListValCATUnicodeString caches;
    const HRESULT code = p_environment->getReleaseCacheDirectories(caches);
    if (FAILED(code)) return code;
    for (int i = 1; i <= caches.Size(); ++i)
        if (cutCacheFolder(caches[i], i_separator, io_folder)) return S_OK;
    return S_FALSE;
}

int valueOfHexDigit(char i_digit) {
    const int lower = i_digit | 0x20;
    if (i_digit >= '0' && i_digit <= '9') return i_digit - '0';
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/** "C:" for "2". The number counts drives from A and wraps at 256, its characters at one byte. False without a
 * hexadecimal number. */
bool readDrive(const CATUnicodeString& i_number, CATUnicodeString& o_drive) {
    int number = 0;
    const std::string_view digits(i_number.ConvertToChar(), static_cast<std::size_t>(i_number.GetLengthInByte()));
    for (const char character : digits) {
        const int digit = valueOfHexDigit(character);
        if (digit < 0) return false;
        number = (16 * number + digit) % 256;
    }
    const char drive[] = {static_cast<char>(static_cast<unsigned char>('A' + number)), ':'};
    o_drive = CATUnicodeString(drive, sizeof drive);
    return !digits.empty();
}

/** Directory of the source for its folder in a cache. False when the folder names none. */
bool readSourceDirectory(const CATUnicodeString& i_folder, const CATUnicodeString& i_separator,
                         CATUnicodeString& o_directory) {
    const CATUnicodeString logical_names = kLogicalNameFolder + i_separator;
    if (beginsWith(i_folder, "#")) {
        const int found = i_folder.SearchSubString(i_separator);
        const int end = found < 0 ? i_folder.GetLengthInChar() : found;
        if (!readDrive(i_folder.SubString(1, end - 1), o_directory)) return false;
        o_directory.Append(behind(i_folder, end));
    } else if (beginsWith(i_folder, logical_names)) {
        o_directory = kLogicalNamePrefix + behind(i_folder, logical_names.GetLengthInChar());
    } else {
        o_directory = "\\\\" + i_folder;
    }
    return true;
}

/** Name of the source of a cached file; of any other file its own. */
HRESULT readSourceName(const JournalFrame& i_frame, const CATUnicodeString& i_cache_name,
                       CATUnicodeString& o_file_name) {
    o_file_name = i_cache_name;
    if (UTILFile::getExtension(i_cache_name).Compare("cgr") == 0) return S_OK;

    CATUnicodeString folder;
    CATUnicodeString name;
    if (FAILED(splitFullName(i_cache_name, folder, name))) return i_frame.report(kSplitFailed, "splitPathAndFileName");
    const CATUnicodeString source_name = sourceNameOf(name);
    if (!isOfCachedType(source_name)) return S_OK;
    if (folder.IsNull()) {
        o_file_name = source_name;
        return S_OK;
    }

    if (beginsWith(folder, kLongPathPrefix)) folder = behind(folder, static_cast<int>(std::strlen(kLongPathPrefix)));
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    const HRESULT code = cutFirstCacheFolder(separator, folder);
    if (FAILED(code)) return code;
    CATUnicodeString directory;
    if (code == S_OK && readSourceDirectory(folder, separator, directory))
        o_file_name = directory + separator + source_name;
    return S_OK;
}

bool endsWithDate(const CATUnicodeString& i_name) {
    constexpr char kPattern[] = ".dddd-dd-dd-dd.dd.dd.cgr";
    constexpr int kLength = sizeof kPattern - 1;
    const int surplus = i_name.GetLengthInByte() - kLength;
    if (surplus <= 0) return false;
    const char* const p_field = i_name.ConvertToChar() + surplus;
    for (int i = 0; i < kLength; ++i) {
        const bool digit = kPattern[i] == 'd' && p_field[i] >= '0' && p_field[i] <= '9';
        if (!digit && p_field[i] != kPattern[i]) return false;
    }
    return true;
}

} // namespace

HRESULT VornToolsCommon::extractFileNameFromCacheFileName(CATUnicodeString i_cache_name,
                                                          CATUnicodeString& o_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "extractFileNameFromCacheFileName");
    const HRESULT code = guarded([&] { return readSourceName(frame, i_cache_name, o_file_name); }, E_FAIL);
    if (FAILED(code)) o_file_name = "";
    return code;
}

unsigned char VornCache::cgrFileNameContainsLastModificationDateField(CATUnicodeString name) {
    const JournalFrame frame(_CteCLASS_NAME, "cgrFileNameContainsLastModificationDateField");
    return guarded([&] { return endsWithDate(name); }, false) ? 1 : 0;
}
