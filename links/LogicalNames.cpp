#include "links/LogicalNames.h"

#include "foundation/Texts.h"

#include "CATDLName.h"
#include "UTILFile.h"

#include <cstddef>
#include <memory>

namespace vorntools {

namespace {

using OwnedText = std::unique_ptr<CATUnicodeString>;

bool isSeparatorAt(const CATUnicodeString& i_name, int i_position) {
    const CATUnicodeString character = i_name.SubString(i_position, 1);
    return character == "/" || character == "\\";
}

bool isDrivePath(const CATUnicodeString& i_name) { return i_name.SubString(1, 2) == CATUnicodeString(":\\"); }

bool isNetworkPath(const CATUnicodeString& i_name) { return beginsWith(i_name, "\\\\"); }

bool isLogical(const CATUnicodeString& i_name) { return beginsWith(i_name, "\x01\x02\\"); }

/** The text that a call of the logical-name service hands out; none when it fails. */
template <class Call>
OwnedText receiveText(Call&& i_call) {
    CATUnicodeString* p_text = nullptr;
    return SUCCEEDED(i_call(&p_text)) ? OwnedText(p_text) : OwnedText();
}

OwnedText directoryOf(const CATUnicodeString& i_logical_name) {
    return receiveText([&](CATUnicodeString** o_text) { return CATGetDLName(&i_logical_name, o_text); });
}

/** The logical names that the service knows; none when it fails. It hands them out, and they go with this. */
class LogicalNames {
public:
    LogicalNames() {
        unsigned int count = 0;
        CATUnicodeString** p_received = nullptr;
        if (FAILED(CATGetDLNameList(nullptr, nullptr, &count, &p_received)) || !p_received) return;
        m_names = p_received;
        m_count = count;
    }
    ~LogicalNames() {
        for (const CATUnicodeString* const p_name : *this) delete p_name;
        delete[] m_names;
    }
    LogicalNames(const LogicalNames&) = delete;
    LogicalNames& operator=(const LogicalNames&) = delete;

    CATUnicodeString* const* begin() const { return m_names; }
    CATUnicodeString* const* end() const { return m_names + m_count; }

private:
    CATUnicodeString** m_names = nullptr;
    std::size_t m_count = 0;
};

/** A name cut in two: what the logical name stands for, and the rest. */
struct Division {
    CATUnicodeString logical_name;
    int rest = 0; ///< position of the rest in the name; 0: no logical name fits
};

/** The first part of the name is itself a logical name. */
Division divideByName(const CATUnicodeString& i_name) {
    const int length = i_name.GetLengthInChar();
    int end = 0;
    while (end < length && !isSeparatorAt(i_name, end)) ++end;
    const CATUnicodeString first = i_name.SubString(0, end);
    if (end == 0 || end == length || !directoryOf(first)) return {};
    return {first, end + 1};
}

/** Position of what lies below a directory, behind the separator; 0 when the name does not lie there. */
int restBelow(const CATUnicodeString& i_directory, const CATUnicodeString& i_name) {
    int end = i_directory.GetLengthInChar();
    while (end > 0 && isSeparatorAt(i_directory, end - 1)) --end;
    if (end == 0 || !beginsWith(i_name, i_directory.SubString(0, end))) return 0;
    return isSeparatorAt(i_name, end) ? end + 1 : 0;
}

Division divideByDirectory(const CATUnicodeString& i_name) {
    Division best;
    for (const CATUnicodeString* const p_logical_name : LogicalNames()) {
        const OwnedText sp_directory = p_logical_name ? directoryOf(*p_logical_name) : OwnedText();
        const int rest = sp_directory ? restBelow(*sp_directory, i_name) : 0;
        if (rest > best.rest) best = {*p_logical_name, rest};
    }
    return best;
}

} // namespace

void makeLogical(CATUnicodeString& io_name) {
    if (isDrivePath(io_name) || isNetworkPath(io_name) || isLogical(io_name)) return;
    Division division = divideByName(io_name);
    if (division.rest == 0) division = divideByDirectory(io_name);
    if (division.rest == 0) return;
    const CATUnicodeString rest = behind(io_name, division.rest);
    const OwnedText sp_path = receiveText(
        [&](CATUnicodeString** o_text) { return CATMakeLogicalPath(&division.logical_name, &rest, o_text); });
    if (sp_path && !sp_path->IsNull()) io_name = *sp_path;
}

} // namespace vorntools
