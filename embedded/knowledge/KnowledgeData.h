#ifndef EMBEDDED_KNOWLEDGE_KNOWLEDGE_DATA_H
#define EMBEDDED_KNOWLEDGE_KNOWLEDGE_DATA_H

#include "embedded/documents/SessionData.h"
#include "embedded/knowledge/Containers.h"
#include "embedded/knowledge/Features.h"
#include "embedded/knowledge/LentParameters.h"
#include "embedded/knowledge/Magnitudes.h"
#include "embedded/knowledge/ParameterObjects.h"
#include "embedded/knowledge/ProductNodes.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace embedded {

/** What is stored in a document, so that the size of the session does not count. */
struct DocumentMembers {
    std::vector<Node*> features;
    std::vector<Node*> parameters; ///< those that stand nowhere, too
    std::vector<Node*> relations;
};

/** Everything of this topic that the session owns. */
class KnowledgeData final : public SessionPart {
public:
    static constexpr const char* kName = "parameters";
    explicit KnowledgeData(SessionData& session);
    static KnowledgeData& get();

    void addToDigest(std::string& text) const override;

    ContainerObject& container(DocumentObject& document);
    /** The feature of a kind in a document, made on first use; none but the given name's first maker names it. */
    FeatureNode& feature(DocumentObject& document, const std::string& type, const std::string& name);
    /** The same for a feature that every document of the kind has. */
    FeatureNode& impliedFeature(DocumentObject& document, const std::string& type, const std::string& name);
    FeatureNode& newFeature(DocumentObject& document, const std::string& type, const std::string& name);
    ParameterObject& newParameter(DocumentObject& document, const std::string& type, const std::string& role);
    FeatureNode& userProperties(ProductNode& reference);
    TypeObject* type(const std::string& name) const;
    /** Puts a relation that somebody else keeps as long as the session lives below an object. */
    void addRelation(Node& parent, Node& relation);

    SessionData& session;
    std::vector<std::unique_ptr<TypeObject>> types;
    std::vector<std::unique_ptr<FeatureNode>> features;
    std::vector<std::unique_ptr<ParameterObject>> parameters;
    std::vector<std::unique_ptr<LentParameters>> lent; ///< gone before the parameters
    std::map<DocumentObject*, std::unique_ptr<ContainerObject>> containers;
    std::unordered_map<const DocumentObject*, DocumentMembers> members;
    std::map<std::pair<DocumentObject*, std::string>, FeatureNode*> roots; ///< by document and type
};

} // namespace embedded

#endif
