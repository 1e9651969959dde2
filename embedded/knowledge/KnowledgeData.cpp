#include "embedded/knowledge/KnowledgeData.h"

#include "embedded/Session.h"

#include <algorithm>

namespace embedded {

KnowledgeData::KnowledgeData(SessionData& sessionData) : session(sessionData), types(makeTypes()) {}

KnowledgeData& KnowledgeData::get() { return Session::current().data().part<KnowledgeData>(); }

ContainerObject& KnowledgeData::container(DocumentObject& document) {
    auto& container = containers[&document];
    if (!container) container = std::make_unique<ContainerObject>(document);
    return *container;
}

FeatureNode& KnowledgeData::newFeature(DocumentObject& document, const std::string& featureType,
                                       const std::string& name) {
    features.push_back(std::make_unique<FeatureNode>(document, featureType, name));
    members[&document].features.push_back(features.back().get());
    return *features.back();
}

FeatureNode& KnowledgeData::feature(DocumentObject& document, const std::string& featureType, const std::string& name) {
    FeatureNode*& root = roots[{&document, featureType}];
    if (!root) root = &newFeature(document, featureType, name);
    if (root->implied) root->rename(name);
    root->implied = false;
    return *root;
}

FeatureNode& KnowledgeData::impliedFeature(DocumentObject& document, const std::string& featureType,
                                           const std::string& name) {
    FeatureNode*& root = roots[{&document, featureType}];
    if (!root) {
        root = &newFeature(document, featureType, name);
        root->implied = true;
    }
    return *root;
}

ParameterObject& KnowledgeData::newParameter(DocumentObject& document, const std::string& typeName,
                                             const std::string& role) {
    parameters.push_back(std::make_unique<ParameterObject>(document, *type(typeName), role));
    members[&document].parameters.push_back(parameters.back().get());
    return *parameters.back();
}

FeatureNode& KnowledgeData::userProperties(ProductNode& reference) {
    if (!reference.userProperties) {
        reference.userProperties = &newFeature(*reference.document(), FeatureNode::kSet, "Properties");
        reference.userProperties->parent = &reference;
    }
    return *reference.userProperties;
}

void KnowledgeData::addRelation(Node& parent, Node& relation) {
    relation.parent = &parent;
    parent.relations.push_back(&relation);
    members[relation.document()].relations.push_back(&relation);
}

TypeObject* KnowledgeData::type(const std::string& name) const {
    const auto found = std::find_if(types.begin(), types.end(), [&](const auto& one) { return one->name() == name; });
    return found == types.end() ? nullptr : found->get();
}

} // namespace embedded
