#include "tools/vorntools/archive/Orphans.h"

#include "tools/vorntools/Text.h"

#include "VornToolsCommon.h"

#include <algorithm>
#include <utility>

std::string kindOfDocument(const std::string& name) {
    switch (VornToolsCommon::returnDocumentType(textOf(name))) {
    case VornToolsCommon::DocumentTypePart: return "part";
    case VornToolsCommon::DocumentTypeProduct: return "product";
    case VornToolsCommon::DocumentTypeDrawing: return "drawing";
    case VornToolsCommon::DocumentTypeProcess: return "process";
    case VornToolsCommon::DocumentTypeAnalysis: return "analysis";
    case VornToolsCommon::DocumentTypeCatalog: return "catalog";
    default: return {};
    }
}

std::vector<Orphan> findOrphans(const Archive& archive) {
    std::vector<Orphan> orphans;
    for (Index i = 0; i < archive.documents().size(); ++i) {
        const ArchiveDocument& document = archive.document(i);
        if (document.role != ArchiveDocument::Walked || !document.exists) continue;
        const Rows<Index> users = archive.linksTo(i);
        const bool isUsed =
            std::any_of(users.begin(), users.end(), [&](Index link) { return archive.links()[link].from != i; });
        std::string kind = isUsed ? std::string() : kindOfDocument(archive.nameOf(i));
        if (!kind.empty()) orphans.push_back({i, std::move(kind)});
    }
    std::stable_partition(orphans.begin(), orphans.end(), [](const Orphan& orphan) { return !orphan.isTop(); });
    return orphans;
}
