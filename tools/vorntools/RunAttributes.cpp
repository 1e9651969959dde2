#include "tools/vorntools/RunValues.h"

#include "CATDocument.h"
#include "CATIPrtContainer.h"
#include "CATInit.h"
#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"

#include "embedded/Parameters.h"

#include <sstream>

namespace {

using Service = VornToolsCADDOCProperties;

/** A kind of document whose attributes come as names and values by turns. */
struct PairedKind {
    const char* type;
    HRESULT (*retrieve)(CATDocument*, CATListValCATUnicodeString&);
    HRESULT (*set)(CATDocument*, CATListValCATUnicodeString, CATListValCATUnicodeString, CATListValCATUnicodeString);
};
constexpr PairedKind kPairedKinds[] = {
    {"CATAnalysis", &Service::retrieveAnalysisAttributes, &Service::setAnalysisParameters},
    {"CATProcess", &Service::retrieveProcessAttributes, &Service::setProcessParameters},
    {"CATDrawing", &Service::retrieveDrawingAttributes, &VornToolsCommon::setDrawingParameters}};

const PairedKind* pairedKindOf(const embedded::Document& document) {
    for (const PairedKind& kind : kPairedKinds)
        if (document.type() == kind.type) return &kind;
    return nullptr;
}

/** The part of a part document; null for any other one. */
CATISpecObject_var partOf(CATDocument* document) {
    void* received = nullptr;
    if (FAILED(document->QueryInterface(IID_CATInit, &received)) || !received) return {};
    auto* const init = static_cast<CATInit*>(received);
    auto* const container = static_cast<CATIPrtContainer*>(init->GetRootContainer("CATIPrtContainer"));
    init->Release();
    const CATISpecObject_var part = container ? container->GetPart() : CATISpecObject_var();
    if (container) container->Release();
    return part;
}

/** What carries the attributes of a part or product document; null for any other one. */
CATISpecObject_var featureOf(const embedded::Document& document) {
    if (document.type() == "CATPart") return partOf(document.get());
    if (document.type() != "CATProduct" || !document.root()) return {};
    return CATISpecObject_var(embedded::parametersOf(document.root()).get());
}

void list(const embedded::Document& document, Listing& listing) {
    if (const PairedKind* const kind = pairedKindOf(document)) {
        CATListValCATUnicodeString pairs;
        kind->retrieve(document.get(), pairs);
        for (int i = 1; i < pairs.Size(); i += 2)
            listing.add({document.name(), bytesOf(pairs[i]), bytesOf(pairs[i + 1])});
        return;
    }
    const CATISpecObject_var feature = featureOf(document);
    const ParameterList parameters(static_cast<CATISpecObject*>(feature));
    for (int i = 1; i <= parameters.names.Size(); ++i)
        listing.add({document.name(), bytesOf(parameters.names[i]), bytesOf(parameters.values[i])});
}

HRESULT setOnFeature(const embedded::Document& document, const Assignments& assignments) {
    Service* const service = Service::getInstance();
    const CATISpecObject_var feature = featureOf(document);
    if (!service) return E_FAIL;
    unsigned char needsUpdate = 0;
    const std::size_t logged = embedded::logFile().size();
    HRESULT code =
        document.type() == "CATPart"
            ? service->setMechanicalPartParameters(textOf(document.name()), static_cast<CATISpecObject*>(feature),
                                                   assignments.names, assignments.values, assignments.types,
                                                   needsUpdate)
            : service->setReferenceProductParameters(textOf(document.name()), static_cast<CATISpecObject*>(feature),
                                                     assignments.names, assignments.values, assignments.types);
    service->Release();
    // What the integration would log is all that tells of a value that was refused.
    for (std::size_t i = logged; i < embedded::logFile().size(); ++i) {
        std::istringstream lines(embedded::logFile()[i]);
        std::string line;
        std::getline(lines, line); // the title
        while (std::getline(lines, line)) complain(line);
        code = E_FAIL;
    }
    if (needsUpdate) complain(document.name() + " is not up to date any more");
    return code;
}

HRESULT set(const embedded::Document& document, const Assignments& assignments) {
    const PairedKind* const kind = pairedKindOf(document);
    if (!kind) return setOnFeature(document, assignments);
    return kind->set(document.get(), assignments.names, assignments.values, assignments.types);
}

/** All documents, or those of a name, with or without its folder. */
std::vector<embedded::Document> chooseDocuments(const std::string& name) {
    const embedded::Session& session = embedded::Session::current();
    std::vector<embedded::Document> documents;
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const embedded::Document document = session.documentAt(i);
        if (name.empty() || document.name() == name || fileNameOf(document.name()) == name)
            documents.push_back(document);
    }
    return documents;
}

int runAttributes(bool json, const ValueOptions& options) {
    Assignments assignments;
    if (!parseAssignments(options.assignments, assignments)) return ExitUnusable;
    const std::vector<embedded::Document> documents = chooseDocuments(options.object);
    if (documents.empty() && !options.object.empty()) {
        complain("no document " + options.object);
        return ExitUnusable;
    }
    int code = ExitFine;
    Listing listing(json, {"document", "name", "value"});
    for (const embedded::Document& document : documents) {
        if (assignments.names.Size() > 0 && FAILED(set(document, assignments))) {
            complain("not every attribute of " + document.name() + " can be set");
            code = ExitFindings;
        }
        list(document, listing);
    }
    listing.print();
    return saveSession(options.save, code);
}

} // namespace

void addAttributeTopics(Topics& topics) {
    addValueTopic(topics, "attributes", "Attributes that the PDM gave to the documents", "--document", "DOCUMENT",
                  runAttributes);
}
