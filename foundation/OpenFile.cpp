#include "foundation/OpenFile.h"

#if defined(_WIN32)
#include "foundation/Guards.h"

#include <string>
#endif

namespace vorntools {

#if defined(_WIN32)

OpenFile openForReading(const CATUnicodeString& i_name) {
    const AutomationText name(i_name);
    std::wstring wide_name;
    for (const auto* p_character = name.get(); p_character && *p_character; ++p_character)
        wide_name.push_back(static_cast<wchar_t>(*p_character));
    return OpenFile(_wfopen(wide_name.c_str(), L"rb"));
}

#else

OpenFile openForReading(const CATUnicodeString& i_name) { return OpenFile(std::fopen(i_name.ConvertToChar(), "rb")); }

#endif

} // namespace vorntools
