#!/usr/bin/env python3
"""Makes from platform/ a seat to compile against: the same declarations in the form in which they are published.

    seat_headers.py FOLDER CXX    writes FOLDER/catia and FOLDER/companion, each header below its framework, with identity
                                  cards and with import libraries that lead to FOLDER/libVornSeat.so and
                                  FOLDER/libVornPlatform.so

What is published nowhere is not in it: identifiers carry the macro of their own module, lists have no common base and
no more methods than their pages name, headers include what their declarations cannot do without and nothing of the
standard library, classes show no inline bodies, and overloads that the in-memory platform lacks are declared, so that a
call that they make ambiguous does not compile. Types keep size and calls keep their names: FOLDER/lists.cpp and
FOLDER/bodies.cpp hold what our own headers have inline, and a library that was built against the seat runs on the
in-memory platform. CXX tells the sizes.
"""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Overloads and conversions of the pages that the in-memory platform has no use for: class -> lines.
PUBLISHED = {
    "CATUnicodeString": """
    CATUnicodeString(const CATUnicodeChar& iCharacter, size_t iCount = 1);
    CATUnicodeString(const CATUnicodeString& iText, size_t iRepeatCount);
    void ReplaceSubString(int iPosition, int iCount, const CATUnicodeString& iReplacement);
    void ToLower();
    int BuildFromNum(long iValue, const char* iFormat = "%d");
    int BuildFromNum(unsigned int iValue, const char* iFormat = "%u");
    int BuildFromNum(unsigned long iValue, const char* iFormat = "%u");
    int BuildFromNum(long double iValue, const char* iFormat = "%Lg");
    int ConvertToNum(long* oValue, const char* iFormat = "%d") const;
    int ConvertToNum(unsigned int* oValue, const char* iFormat = "%u") const;
    int ConvertToNum(unsigned long* oValue, const char* iFormat = "%u") const;
    int ConvertToNum(long double* oValue, const char* iFormat = "%le") const;
    CATUnicodeString& operator+=(const CATUnicodeChar& iCharacter);
    operator const CATUC2Bytes*() const;
""",
    "CATICkeParm": "    void Valuate(const CATICkeInst_var& iValue);\n",
    "CATISpecObject": """
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrInOut iInOut = sp_NEUTRAL);
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, const CATUnicodeString& iSharp,
                                    CATAttrInOut iInOut = sp_NEUTRAL);
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    const CATUnicodeString& iSharp, CATAttrInOut iInOut = sp_NEUTRAL);
""",
    "CATPathElement": """
    CATBaseUnknown* FindElement(const IID& iIID);
    int FindElement(const CATBaseUnknown* iObject);
""",
}

# Free functions beside those of our headers: header -> lines.
PUBLISHED_FUNCTIONS = {
    "CATAutoConversions": '#include "CATBoolean.h"\n' + "class CATUnicodeString;\n" + "".join(
        f"extern MACRO HRESULT ConvertVariant(const CATVariant& iVariant, {kind}& oValue);\n"
        f"extern MACRO CATSafeArrayVariant* BuildSafeArrayVariant(const {kind}* iValues, long iSize);\n"
        f"extern MACRO long ConvertSafeArrayVariant(const CATSafeArrayVariant* iArray, {kind}* oValues, long iSize = 0);\n"
        for kind in ("short", "long", "float", "CATBoolean", "char*", "CATUnicodeString")
    )
    + "extern MACRO HRESULT ConvertVariant(const CATVariant& iVariant, double& oValue);\n",
}

# Lists: class -> header, element, published methods. "all" are those of METHODS.
METHODS = {
    "Append": ("void Append(%s iElement)", "elements(this).push_back(iElement);"),
    "AppendList": (
        "void Append(const %L& iList)",
        "const auto copy = elements(&iList); elements(this).insert(elements(this).end(), copy.begin(), copy.end());",
    ),
    "Locate": (
        "int Locate(%s iElement, int iFrom = 1) const",
        "for (int i = iFrom < 1 ? 1 : iFrom; i <= count(this); ++i) if ((*this)[i] == iElement) return i; return 0;",
    ),
    "RemovePosition": (
        "void RemovePosition(int iPosition)",
        "if (inside(this, iPosition)) elements(this).erase(elements(this).begin() + (iPosition - 1));",
    ),
    "RemoveValue": (
        "int RemoveValue(%s iElement)",
        "for (int i = 1; i <= count(this); ++i) if ((*this)[i] == iElement)"
        " { elements(this).erase(elements(this).begin() + (i - 1)); return i; } return 0;",
    ),
    "RemoveAll": ("void RemoveAll(CATCollec::MemoryHandling iMemory = CATCollec::ReleaseAllocation)",
                  "elements(this).clear(); (void)iMemory;"),
    "RemoveDuplicates": (
        "int RemoveDuplicates()",
        "auto& all = elements(this); const auto size = all.size();"
        " for (std::size_t i = 0; i < all.size(); ++i) for (std::size_t k = all.size() - 1; k > i; --k)"
        " if (all[k] == all[i]) all.erase(all.begin() + static_cast<std::ptrdiff_t>(k));"
        " return static_cast<int>(size - all.size());",
    ),
    "Size": ("int Size() const", "return count(this);"),
    "RawSize": ("int Size()", "return count(this);"),
    "ReSize": ("void Size(int iSize)", "elements(this).resize(static_cast<std::size_t>(iSize < 0 ? 0 : iSize));"),
    "Get": ("%s operator[](int iPosition) const",
            "return elements(this)[static_cast<std::size_t>(at(this, iPosition))];"),
    "Set": ("%S operator[](int iPosition)", "return elements(this)[static_cast<std::size_t>(at(this, iPosition))];"),
    "Equal": ("int operator==(const %L& iList) const", "return elements(this) == elements(&iList);"),
    "Unequal": ("int operator!=(const %L& iList) const", "return !(elements(this) == elements(&iList));"),
}
SIZED = ["Size", "Get", "Set"]
LISTS = {
    "CATListPtrCATDocument": ("CATDocumentsInSession", "CATDocument*",
                              ["ReSize", "Append", "Locate", "RemovePosition", "RemoveAll", "RemoveValue"]),
    "CATListPtrCATFrmWindow": ("CATListOfCATFrmWindow", "CATFrmWindow*", "all"),
    "CATListPtrCATBaseUnknown": ("CATListOfCATBaseUnknown", "CATBaseUnknown*",
                                 ["Append", "Locate", "RemoveAll", "RemovePosition", "RemoveValue"]),
    "CATListPtrCATIProduct": ("CATListPtrCATIProduct", "CATIProduct*",
                              ["Append", "AppendList", "Locate", "RemovePosition", "RemoveAll", "RemoveDuplicates"]),
    "CATListPtrCATMathTransformation": ("CATLISTP_CATMathTransformation", "CATMathTransformation*",
                                        ["Append", "RemoveAll", "RemoveValue", "RemovePosition"]),
    "CATListValCATBaseUnknown_var": ("CATLISTV_CATBaseUnknown", "CATBaseUnknown_var", "all"),
    "CATListValCATISpecObject_var": ("CATLISTV_CATISpecObject", "CATISpecObject_var", "all"),
    "CATListValCATUnicodeString": ("CATListOfCATUnicodeString", "CATUnicodeString", "all"),
    "CATRawCollint": ("CATListOfInt", "int", "raw"),
    "CATRawColldouble": ("CATListOfDouble", "double", "raw"),
}
ALIASES = {"CATListValCATUnicodeString": "CATListOfCATUnicodeString", "CATRawCollint": "CATListOfInt",
           "CATRawColldouble": "CATListOfDouble"}
# Classes that keep a container of the standard library: their bodies are hidden.
OPAQUE = ["CATString", "CATUnicodeString", "TYPVectorCATUnicodeString", "_SEQUENCE_CATBaseUnknown_ptr"]

# On Windows these are the system's own.
WINDOWS = {
    "CATErrorDef": "#include <windows.h>\n",
    "IUnknown": "#include <unknwn.h>\n",
    "IDispatch": "#include <oaidl.h>\n",
    "IEnumVARIANT": "#include <oaidl.h>\n",
    "CATBSTR": "#include <wtypes.h>\ntypedef BSTR CATBSTR;\nextern MACRO void CATFreeString(CATBSTR iText);\n",
    "CATVariant": "#include <oaidl.h>\ntypedef VARIANT_BOOL CAT_VARIANT_BOOL;\ntypedef VARIANT CATVariant;\n"
                  "extern MACRO HRESULT CATVariantClear(CATVariant* ioVariant);\n",
    "CATSafeArray": "#include <oaidl.h>\ntypedef SAFEARRAY CATSafeArray;\ntypedef CATSafeArray CATSafeArrayVariant;\n"
                    "extern MACRO HRESULT FreeVariantSafeArray(CATSafeArrayVariant* iArray);\n",
}
AUTOMATION_METHODS = """
#if defined(_WIN32)
    HRESULT __stdcall GetTypeInfoCount(UINT* oCount) override;
    HRESULT __stdcall GetTypeInfo(UINT iInfo, LCID iLocale, ITypeInfo** oInfo) override;
    HRESULT __stdcall GetIDsOfNames(REFIID iIID, LPOLESTR* iNames, UINT iCount, LCID iLocale, DISPID* oIds) override;
    HRESULT __stdcall Invoke(DISPID iMember, REFIID iIID, LCID iLocale, WORD iFlags, DISPPARAMS* iParameters,
                             VARIANT* oResult, EXCEPINFO* oException, UINT* oArgument) override;
#endif"""

ERROR_MACROS = """
// The words of the language are the platform's own where it does not use the language's exceptions.
#if defined(NATIVE_EXCEPTION) || defined(CAT_ENABLE_NATIVE_EXCEPTION)
#define CATTry try
#define CATCatch(ErrorClass, pError) catch (ErrorClass * pError)
#define CATCatchOthers catch (...)
#define CATThrow(pError) throw(pError)
#define CATRethrow throw
#else
extern MACRO int CATBeginOfGuard();
extern MACRO void* CATCaughtBy(const char* iErrorClass);
extern MACRO void CATRaise(void* iError);
#define CATTry if (CATBeginOfGuard())
#define CATCatch(ErrorClass, pError) else if (ErrorClass* pError = static_cast<ErrorClass*>(CATCaughtBy(#ErrorClass)))
#define CATCatchOthers else
#define CATThrow(pError) CATRaise(pError)
#define CATRethrow CATRaise(0)
#define try the_word_is_forbidden_use_CATTry
#define catch the_word_is_forbidden_use_CATCatch
#define throw the_word_is_forbidden_use_CATThrow
#endif
#define CATEndTry
"""


# Headers that the in-memory platform fills with more than the pages show: header -> (pattern, what stands there instead).
EDITS = {
    "CATBaseUnknown": [
        (r'#include "CATBaseUnknown_var\.h"\n', '#define IID_CATBaseUnknown (IID_CATBaseUnknown)\n\n#include "CATBaseUnknown_var.h"\n'),
        # Whoever includes the root of all classes has the platform's words.
        (r'#include "CATBoolean\.h"\n', '#include "CATBoolean.h"\n#include "CATErrorMacros.h"\n'),
        (r"(ULONG __stdcall Release\(\) override;)", r"\1" + AUTOMATION_METHODS),
    ],
    "CATBaseUnknown_var": [
        (r"\n[^\n]*std::nullptr_t[^\n]*", ""),
        (r"\n    int operator[!=]=\(const CATBaseUnknown_var& [^\n]*", ""),
        (r"\[\[noreturn\]\] ", ""),
    ],
    "CATCke": [(r"(operator int\(\) const \{[^}]*\})",
                r"\1\n        int operator==(const Boolean& iOther) const;\n        int operator!=(const Boolean& iOther) const;")],
    "CATCollec": [
        (r"template <class T>\nclass CATListOf.*#define CATLISTP\(T\)", "#define CATLISTV(T) CATListVal##T\n#define CATLISTP(T)"),
    ],
    "CATErrorDef": [(r"static_cast<HRESULT>\((\w+)\)", r"(HRESULT)(\1)")],
    "CATErrorMacros": [(r"#define CATTry.*\n(?=#endif)", ERROR_MACROS)],
    # Answers that the in-memory platform gives for every class are nobody's elsewhere.
    "CATIABase": [(r"(oObject\));", r"\1 = 0;")],
    "CATISpecObject": [(r"(virtual [^;=]*?(?:= sp_NEUTRAL)?\)(?: const)?);", r"\1 = 0;")],
    "CATISpecAttrAccess": [
        (r"(iObject,\s*int iPosition = 0)", r"\1, CATBoolean iCheck = FALSE, int iMode = 0"),
    ],
    "CATISpecDeclarations": [(r"enum CATAttrKind {", "#define CATAttrKind CATAttrKindOfSpecs\nenum CATAttrKindOfSpecs {")],
    "CATMacForIUnknown": [(r"; *\\\n *static_assert\([^\n]*", ""), (r"} *\\\n *static_assert\([^\n]*", "}")],
    "CATPrsWorkModeServices": [("enum WorkMode : int", "enum WorkMode")],
    "CATString": [(" = nullptr", "")],
    "CATUnicodeString": [
        (r"namespace embedded \{.*?\n\}\n", ""),
        (r"(class CATUnicodeChar {\npublic:\n).*?\n};",
         r"\1    CATUnicodeChar();\n    CATUnicodeChar(char iCharacter);\n\nprivate:\n    unsigned int m_hidden;\n};"),
    ],
    "CATUuid": [("explicit CATUuid", "CATUuid")],
    "IUnknown": [("std::uint32_t", "unsigned int"), ("std::uint16_t", "unsigned short")],
    "sequence_CATBaseUnknown_ptr": [(r"\n[^\n]*CATLONG32 length\(\) const[^\n]*", "")],
}
# In every header.
EVERYWHERE = [
    (r"\n *static_assert\([^;]*;", ""),
    (r"\nprotected:\n +~\w+\(\) (?:override )?= default;", ""),
    (r"std::size_t", "size_t"),
]
# Headers that nobody does without who includes them: what they have cannot be declared ahead.
COMPLETE = {
    "CATBSTR", "CATBaseUnknown", "CATBaseUnknown_var", "CATBoolean", "CATCke", "CATCollec", "CATDataType", "CATErrorDef",
    "CATErrorMacros", "CATICkeRelationForwards", "CATISpecDeclarations", "CATLib", "CATMacForIUnknown", "CATSafeArray",
    "CATSysDataType", "CATVariant", "CatSceneType", "IDispatch", "IUnknown", "sequence_CATBaseUnknown_ptr",
}


def frameworks():
    """header -> (framework, library, how it is known)"""
    rows = {}
    for line in (ROOT / "platform/frameworks.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            header, framework, library, known = line.split()
            rows[header.removesuffix(".h")] = (framework, library, known)
    return rows


def without_comments(text):
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    text = re.sub(r"//[^\n]*", "", text)
    return re.sub(r"\n[ \t]*(?=\n)", "", text)


def end_of_block(text, opening):
    depth = 0
    for at in range(opening, len(text)):
        depth += {"{": 1, "}": -1}.get(text[at], 0)
        if depth == 0:
            return at
    raise ValueError("a brace is not closed")


def class_body(text, name):
    """Positions of the braces of a class."""
    found = re.search(r"class (?:\w+ )?%s\b[^;{]*\{" % name, text)
    return (found.end() - 1, end_of_block(text, found.end() - 1)) if found else None


def declared_only(body):
    """The public part of a class without inline bodies."""
    body = body.split("private:")[0]
    result = ""
    at = 0
    while at < len(body):
        if body[at] == "{" and re.search(r"\b(enum|struct|class|union)\b[^;{}()]*$", result):
            end = end_of_block(body, at)
            result += body[at : end + 1]
            at = end
        elif body[at] == "{":
            head = result.rstrip()
            # Of a constructor, the members' initialisation goes as well.
            start = max(head.rfind(mark) for mark in (";", "public:", "\n\n")) + 1
            colon = re.search(r"\)\s*:\s*(?!:)", head[start:])
            result = (head[: start + colon.start() + 1] if colon else head) + ";"
            at = end_of_block(body, at)
        else:
            result += body[at]
        at += 1
    return re.sub(r"\) = default;", ");", re.sub(r";;+", ";", result))


def list_signature(name, element, method):
    """A method with the list's name for %L, the element as an input or an answer for %s, as a place for %S."""
    simple = element.endswith("*") or element in ("int", "double")
    passed = element if simple else f"const {element}&"
    return method.replace("%s", passed).replace("%L", name).replace("%S", f"{element}&")


def methods_of(name):
    published = LISTS[name][2]
    if published in ("all", "raw"):
        # The pages of numbers' lists show a Size that is not const.
        return [method for method in METHODS if method != ("Size" if published == "raw" else "RawSize")]
    return SIZED + published


class Seat:
    def __init__(self, folder, compiler):
        self.folder = folder
        self.rows = frameworks()
        self.sources = {path.stem: path for path in (ROOT / "platform").glob("*/*.h")}
        self.sizes = self.ask_sizes(compiler)

    def ask_sizes(self, compiler):
        names = OPAQUE + list(LISTS)
        probe = self.folder / "sizes.cpp"
        probe.parent.mkdir(parents=True, exist_ok=True)
        headers = [name for name in self.sources if name != "ExportedByCatia"]
        probe.write_text(
            "".join(f'#include "{name}.h"\n' for name in sorted(headers))
            + "#include <cstdio>\nint main() {\n"
            + "".join(f'    std::printf("{name} %zu\\n", sizeof({name}));\n' for name in names)
            + "}\n")
        program = self.folder / "sizes"
        subprocess.run([*compiler.split(), "-std=c++17", f"-I{ROOT}/platform/catia",
                        f"-I{ROOT}/platform/companion", "-fvisibility=hidden", "-Wl,--unresolved-symbols=ignore-all",
                        str(probe), "-o", str(program)], check=True)
        answer = subprocess.run([str(program)], check=True, capture_output=True, text=True).stdout
        return {line.split()[0]: int(line.split()[1]) for line in answer.splitlines()}

    def opaque_members(self, name):
        return f"private:\n    void* m_hidden[{self.sizes[name] // 8}];\n"

    def hide(self, text, name):
        found = class_body(text, name)
        if not found:
            return text
        start, end = found
        body = declared_only(text[start + 1 : end])
        copies = ""
        for line in (f"{name}()", f"{name}(const {name}&)", f"~{name}()", f"{name}& operator=(const {name}&)"):
            pattern = re.escape(line).replace(re.escape(f"const {name}&"), rf"const {name}& ?\w*")
            if not re.search(pattern + r"\s*;", body):
                copies += f"    {line};\n"
        return text[: start + 1] + body.rstrip() + "\n" + copies + self.opaque_members(name) + text[end:]

    def list_class(self, name):
        _, element, _ = LISTS[name]
        lines = [f"class MACRO {name} : public CATCollecRoot {{", "public:", f"    {name}(int iAllocation = 0);",
                 f"    {name}(const {name}& iList);", f"    ~{name}();", f"    {name}& operator=(const {name}& iList);"]
        lines += [f"    {list_signature(name, element, METHODS[method][0])};" for method in methods_of(name)]
        lines += ["", self.opaque_members(name) + "};"]
        if name in ALIASES:
            lines.append(f"typedef {name} {ALIASES[name]};")
        return "\n".join(lines) + "\n"

    def list_bodies(self):
        """Definitions of the lists' methods on the memory of the in-memory platform's own lists."""
        headers = sorted({header for header, _, _ in LISTS.values()} | {"CATIProduct", "CATMathTransformation"})
        text = "#include <cstddef>\n#include <new>\n#include <vector>\n\n"
        text += "".join(f'#include "{header}.h"\n' for header in headers)
        for name, (_, element, _) in LISTS.items():
            vector = f"std::vector<{element}>"
            text += f"""
namespace {{
{vector}& elements({name}* iList) {{ return *reinterpret_cast<{vector}*>(iList); }}
const {vector}& elements(const {name}* iList) {{ return *reinterpret_cast<const {vector}*>(iList); }}
int count(const {name}* iList) {{ return static_cast<int>(elements(iList).size()); }}
bool inside(const {name}* iList, int iPosition) {{ return iPosition >= 1 && iPosition <= count(iList); }}
int at(const {name}* iList, int iPosition) {{ if (!inside(iList, iPosition)) __builtin_trap(); return iPosition - 1; }}
}}
static_assert(sizeof({name}) == sizeof({vector}), "a list is its elements");
{name}::{name}(int) {{ new (m_hidden) {vector}(); }}
{name}::{name}(const {name}& iList) : CATCollecRoot(iList) {{ new (m_hidden) {vector}(elements(&iList)); }}
{name}::~{name}() {{ using Elements = {vector}; elements(this).~Elements(); }}
{name}& {name}::operator=(const {name}& iList) {{ elements(this) = elements(&iList); return *this; }}
"""
            for method in methods_of(name):
                signature, body = METHODS[method]
                declared = list_signature(name, element, signature)
                declared = re.sub(r" = [^,)]+", "", declared)
                place = re.search(r"(operator\S+?|\w+)\(", declared).start()
                text += f"{declared[:place]}{name}::{declared[place:]} {{ {body} }}\n"
        return text

    def bodies(self):
        """Makes the compiler keep what our headers have inline, for -fkeep-inline-functions."""
        headers = sorted(name for name in self.sources if name != "ExportedByCatia")
        uses = "".join(f"template void keep<{name}>();\n" for name in OPAQUE)
        return ("".join(f'#include "{name}.h"\n' for name in headers) + "\ntemplate <class T>\nvoid keep() {\n"
                "    T first;\n    T second(first);\n    second = first;\n}\n" + uses)

    @staticmethod
    def needs(name, text, header):
        """Whether a header cannot do without another one: by what of it the declarations use."""
        if header in COMPLETE or (header, name) == ("CATMetaClass", "CATMacForIUnknown"):
            return True
        base = r"class (?:\w+ )?\w+ : public %s\b" % header
        default = r"= %s\(|%s_var&? \w+ = NULL_var" % (header, header)
        # The elements of lists of values are values.
        of_values = name.startswith(("CATLISTV", "CATListOfCATU"))
        return of_values or bool(re.search(f"{base}|{default}", text))

    def includes(self, name, text):
        """The include lines that stay, and declarations ahead for the others."""
        named = [header for header in re.findall(r'#include "(\w+)\.h"', text) if header != "ExportedByCatia"]
        kept = [header for header in named if self.needs(name, text, header)]
        rest = re.sub(r"#include [^\n]*\n", "", text)
        words = set(re.findall(r"\w+", rest)) | {f"CATListPtr{word}" for word in re.findall(r"CATLISTP\((\w+)\)", rest)}
        classes = set(named) - set(kept) | set(re.findall(r"class (\w+);", rest))
        classes |= {f"{each}_var" for each in classes} | {each for each in LISTS if LISTS[each][0] not in kept}
        here = set(re.findall(r"class (?:\w+ )?(\w+)\b(?: :| *\{|;)", rest))
        here |= {f"{each}_var" for each in re.findall(r"CATDeclareHandler\((\w+),", rest)}
        return kept, sorted((classes & words) - here - {name})

    def header(self, name):
        _, library, _ = self.rows[name]
        macro = f"ExportedBy{library}"
        text = without_comments(self.sources[name].read_text())
        for pattern, instead in EDITS.get(name, []) + EVERYWHERE:
            text = re.sub(pattern, instead, text, flags=re.S)
        for each in OPAQUE:
            text = self.hide(text, each)
        for each, more in PUBLISHED.items():
            text = re.sub(r"(class \w+ %s\b[^;{]*\{.*?public:)" % each, lambda found: f"{found[1]}\n{more.strip(chr(10))}", text,
                          count=1, flags=re.S)
        for each in LISTS:
            if LISTS[each][0] == name:
                text = self.with_list(text, each)
        text = re.sub(r"#endif\s*$", PUBLISHED_FUNCTIONS.get(name, "") + "#endif\n", text)
        text = re.sub(r"#include <[^\n]*\n", "", text)
        kept, ahead = self.includes(name, text)
        guard, body = re.match(r"\s*#ifndef (\w+)\n#define \w+\n(.*)#endif\s*$", text, flags=re.S).groups()
        # The handles come behind what they hold.
        kept = [header for header in kept if header != "CATBaseUnknown_var"]
        body = re.sub(r'#include "(?!CATBaseUnknown_var)[^\n]*\n', "", body)
        if name in WINDOWS:
            body = f"#if defined(_WIN32)\n{WINDOWS[name]}#else\n{body}#endif\n"
        lines = [f"#ifndef {guard}", f"#define {guard}", "", f'#include "ExportedBy{library}.h"']
        lines += [f'#include "{each}.h"' for each in kept]
        lines += ["#include <stddef.h>"] if re.search(r"\bsize_t\b", body) else []
        lines += ["", *(f"class {each};" for each in ahead), "", body, "#endif", ""]
        text = "\n".join(lines).replace("ExportedByCatia", macro).replace("MACRO", macro)
        return re.sub(r"\n{3,}", "\n\n", text)

    def with_list(self, text, name):
        """The header with the list's published class in the place of ours."""
        text = re.sub(r"CATLIST[PV]_DECLARE\([^\n]*\n|typedef %s [^\n]*\n" % name, "", text)
        found = class_body(text, name)
        if found:
            text = text[: text.rindex("class ", 0, found[0])] + text[found[1] + 2 :]
        return re.sub(r"#endif\s*$", "\n" + self.list_class(name) + "\n#endif\n", text)

    def module_header(self, library):
        return f"""#ifndef ExportedBy{library}_H
#define ExportedBy{library}_H

#if defined(_WINDOWS_SOURCE) || defined(_WIN32)
#if defined(__{library})
#define ExportedBy{library} __declspec(dllexport)
#else
#define ExportedBy{library} __declspec(dllimport)
#endif
#else
#define ExportedBy{library} __attribute__((visibility("default")))
#if !defined(__stdcall)
#define __stdcall
#endif
#endif

#endif
"""

    def write(self):
        for name in sorted(self.sources):
            if name == "ExportedByCatia":
                continue
            framework, library, known = self.rows[name]
            part = "companion" if known == "companion" else "catia"
            place = self.folder / part / framework / "PublicInterfaces"
            place.mkdir(parents=True, exist_ok=True)
            (place / f"{name}.h").write_text(self.header(name))
            (place / f"ExportedBy{library}.h").write_text(self.module_header(library))
            library_file = self.folder / part / "win_b64/code/lib" / f"{library}.lib"
            library_file.parent.mkdir(parents=True, exist_ok=True)
            # For the GNU linker a text names the files in its place.
            library_file.write_text(f"INPUT({self.folder}/libVornSeat.so {self.folder}/libVornPlatform.so)\n")
        self.write_identity_cards()
        (self.folder / "lists.cpp").write_text(self.list_bodies())
        (self.folder / "bodies.cpp").write_text(self.bodies())

    def write_identity_cards(self):
        for framework in self.folder.glob("*/*/PublicInterfaces"):
            needed = set()
            for header in framework.glob("*.h"):
                for included in re.findall(r'#include "(\w+)\.h"', header.read_text()):
                    needed.add(self.rows[included][0] if included in self.rows else framework.parent.name)
            card = framework.parent / "IdentityCard" / "IdentityCard.h"
            card.parent.mkdir(exist_ok=True)
            needed = sorted(needed - {framework.parent.name})
            card.write_text("".join(f'AddPrereqComponent("{each}",Public);\n' for each in needed))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    Seat(Path(sys.argv[1]).resolve(), sys.argv[2]).write()
