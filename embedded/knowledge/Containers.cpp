#include "embedded/knowledge/Containers.h"

#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/object/Stranger.h"

EMBEDDED_INTERFACE(CATIContainer, CATBaseUnknown, 0x310);
EMBEDDED_INTERFACE(CATICkeParmFactory, CATBaseUnknown, 0x31B);
EMBEDDED_INTERFACE(CATICkeRelationFactory, CATBaseUnknown, 0x31C);

namespace embedded {

namespace {

class StrangeContainer final : public Implements<CATBaseUnknown, CATIContainer> {
public:
    StrangeContainer() : Implements("StrangeContainer") { pin(IID_CATIContainer); }

    CATLONG32 ListMembersHere(const CATIdent, SEQUENCE(CATBaseUnknown_ptr) &) override {
        static_cast<void>(failing("CATIContainer::ListMembersHere"));
        return 0;
    }
};

CATICkeParm_var handleOfParameter(ParameterObject& parameter) {
    return handleOf<CATICkeParm_var>(static_cast<CATICkeParm*>(&parameter));
}

} // namespace

CATIContainer& strangeContainer() {
    static StrangeContainer& container = *new StrangeContainer;
    return container;
}

ContainerObject::ContainerObject(DocumentObject& document)
    : Implements("Container"), m_document(document), m_alias(document.type() + "Cont") {}

std::string ContainerObject::objectName() const { return "container of " + m_document.objectName(); }

const Object* ContainerObject::home() const { return &m_document; }

CATLONG32 ContainerObject::ListMembersHere(const CATIdent iInterfaceID, SEQUENCE(CATBaseUnknown_ptr) & ioMembers) {
    const IID* const iid = interfaceNamed(iInterfaceID);
    if (failing("CATIContainer::ListMembersHere") || !iid) return 0;
    const auto members = KnowledgeData::get().members.find(&m_document);
    if (members == KnowledgeData::get().members.end()) return 0;
    CATLONG32 count = 0;
    if (Failures::get().givesOtherKind()) {
        ioMembers[ioMembers.length()] = nullptr;
        ioMembers[ioMembers.length()] = handOut(StrangerObject::get().unknown());
        count = 2;
    }
    const auto add = [&](Node& node) {
        if (!node.responds(*iid)) return;
        ioMembers[ioMembers.length()] = handOut(node.specObject());
        ++count;
    };
    for (Node* const feature : members->second.features) add(*feature);
    for (Node* const parameter : members->second.parameters)
        if (parameter->parent) add(*parameter);
    for (Node* const relation : members->second.relations) add(*relation);
    return count;
}

CATICkeParm_var ContainerObject::CreateString(const CATUnicodeString& iName, const CATUnicodeString& iValue) {
    if (failing("CATICkeParmFactory::CreateString")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "String", toBytes(iName));
    made.setText(toBytes(iValue));
    return handleOfParameter(made);
}

CATICkeParm_var ContainerObject::CreateInteger(const CATUnicodeString& iName, const int iValue) {
    if (failing("CATICkeParmFactory::CreateInteger")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Integer", toBytes(iName));
    made.setInteger(iValue);
    return handleOfParameter(made);
}

CATICkeParm_var ContainerObject::CreateReal(const CATUnicodeString& iName, const double iValue) {
    if (failing("CATICkeParmFactory::CreateReal")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Real", toBytes(iName));
    made.setReal(iValue);
    return handleOfParameter(made);
}

CATICkeParm_var ContainerObject::CreateBoolean(const CATUnicodeString& iName, const CATCke::Boolean iValue) {
    if (failing("CATICkeParmFactory::CreateBoolean")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Boolean", toBytes(iName));
    made.setBoolean(iValue != 0);
    return handleOfParameter(made);
}

CATIParmPublisher_var ContainerObject::CreateParameterSet(const CATUnicodeString iName) {
    if (failing("CATICkeRelationFactory::CreateParameterSet")) return CATIParmPublisher_var();
    FeatureNode& made = KnowledgeData::get().newFeature(m_document, FeatureNode::kSet, toBytes(iName));
    return handleOf<CATIParmPublisher_var>(static_cast<CATIParmPublisher*>(&made));
}

CATUnicodeString ContainerObject::GetAlias() {
    return failing("CATIAlias::GetAlias") ? CATUnicodeString() : toText(m_alias);
}

void ContainerObject::SetAlias(const CATUnicodeString& iAlias) {
    if (!failing("CATIAlias::SetAlias")) m_alias = toBytes(iAlias);
}

} // namespace embedded
