#include "foundation/OpenFile.h"

#include "foundation/Utf8.h"

#include <cstring>
#include <string>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#endif

namespace vorntools {

namespace {

bool holdsNul(const CATUnicodeString& i_name) {
    return std::strlen(i_name.ConvertToChar()) != static_cast<std::size_t>(i_name.GetLengthInByte());
}

#if defined(_WIN32)

/** Longer names need the form that switches the system's limit off. */
constexpr std::size_t kShortName = 240;

/** Empty for a name that the system cannot have. */
std::wstring wideName(const CATUnicodeString& i_name) {
    const std::string bytes = utf8Of(i_name);
    std::wstring wide(bytes.size(), L'\0');
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, &wide[0], size);
    wide.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    if (wide.size() <= kShortName || wide[1] != L':') return wide;
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    return L"\\\\?\\" + wide;
}

#endif

} // namespace

#if defined(_WIN32)

OpenFile openFile(const CATUnicodeString& i_name, const char* i_mode) {
    if (holdsNul(i_name)) return nullptr;
    const std::wstring mode(i_mode, i_mode + std::strlen(i_mode));
    return OpenFile(_wfopen(wideName(i_name).c_str(), mode.c_str()));
}

bool removeFile(const CATUnicodeString& i_name) { return !holdsNul(i_name) && _wremove(wideName(i_name).c_str()) == 0; }

#else

OpenFile openFile(const CATUnicodeString& i_name, const char* i_mode) {
    return holdsNul(i_name) ? nullptr : OpenFile(std::fopen(utf8Of(i_name).c_str(), i_mode));
}

bool removeFile(const CATUnicodeString& i_name) {
    return !holdsNul(i_name) && std::remove(utf8Of(i_name).c_str()) == 0;
}

#endif

} // namespace vorntools
