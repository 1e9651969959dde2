#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"

#include <cstring>
#include <string>

using namespace vorntools;

namespace {

struct ExtensionType {
    const char* extension;
    VornToolsCommon::EnumDocumentType type;
};

constexpr ExtensionType kExtensionTypes[] = {
    {"CATPRODUCT", VornToolsCommon::DocumentTypeProduct},
    {"CATPART", VornToolsCommon::DocumentTypePart},
    {"CATDRAWING", VornToolsCommon::DocumentTypeDrawing},
    {"CATANALYSIS", VornToolsCommon::DocumentTypeAnalysis},
    {"CATPROCESS", VornToolsCommon::DocumentTypeProcess},
    {"CATALOG", VornToolsCommon::DocumentTypeCatalog},
    {"DESIGNTABLE", VornToolsCommon::DocumentTypeDesignTable},
    {"XLS", VornToolsCommon::DocumentTypeXls},
    {"TXT", VornToolsCommon::DocumentTypeText},
    {"XLSX", VornToolsCommon::DocumentTypeXlsx},
    {"XLSM", VornToolsCommon::DocumentTypeXlsm},
};

/** Shortest suffix that the search for the dot finds. Kept because callers know it: behind a dot with less, the name
 * counts up to the dot before, or as a whole. */
constexpr int kShortestExtension = 3;

} // namespace

VornToolsCommon::EnumDocumentType VornToolsCommon::getDocumentTypeFromExtension(char* i_extension) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentTypeFromExtension");
    if (!i_extension) return DocumentTypeUnknown;
    for (const ExtensionType& known : kExtensionTypes)
        if (std::strcmp(known.extension, i_extension) == 0) return known.type;
    return DocumentTypeUnknown;
}

int VornToolsCommon::returnDocumentType(CATUnicodeString i_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "returnDocumentType");
    const auto work = [&] {
        const int dot = i_file_name.SearchSubString(".", kShortestExtension, CATUnicodeString::CATSearchModeBackward);
        CATUnicodeString extension = behind(i_file_name, dot + 1);
        extension.ToUpper();
        std::string text = extension.ConvertToChar();
        return getDocumentTypeFromExtension(text.data());
    };
    return guarded(work, DocumentTypeUnknown);
}
