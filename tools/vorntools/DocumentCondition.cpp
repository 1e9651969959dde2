#include "tools/vorntools/DocumentCondition.h"

#include "tools/vorntools/Files.h"
#include "tools/vorntools/Text.h"

#include "VornToolsDummyPart.h"

namespace {

const char* textOfCondition(VornToolsDocumentFile::EnumDocumentCondition condition) {
    switch (condition) {
    case VornToolsDocumentFile::DocumentIntact: return "intact";
    case VornToolsDocumentFile::DocumentCutOff: return "cut off";
    case VornToolsDocumentFile::DocumentDamaged: return "damaged";
    case VornToolsDocumentFile::DocumentNoDocument: return "not a CATIA document";
    case VornToolsDocumentFile::DocumentNotOpen: break;
    }
    return "";
}

} // namespace

DocumentCondition conditionOf(VornToolsDocumentFile& file, const std::string& document) {
    if (!isCatiaDocument(document)) return {};
    const unsigned long long size = file.getSize();
    return conditionOf(size == 0 ? VornToolsDocumentFile::DocumentNoDocument : file.getCondition(), size, document);
}

DocumentCondition conditionOf(VornToolsDocumentFile::EnumDocumentCondition condition, unsigned long long size,
                              const std::string& document) {
    if (size == 0) return {"empty", VornToolsDummyPart::getInstance()->isAFileDummyPart(textOf(document)) == 0};
    return {textOfCondition(condition), condition != VornToolsDocumentFile::DocumentIntact};
}
