#ifndef EMBEDDED_KNOWLEDGE_CONTAINERS_H
#define EMBEDDED_KNOWLEDGE_CONTAINERS_H

#include "CATICkeParmFactory.h"
#include "CATICkeRelationFactory.h"
#include "CATIContainer.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Extensions.h"
#include "embedded/object/Implements.h"

#include <string>

namespace embedded {

EMBEDDED_IDENTITY(CATICkeParmFactory);
EMBEDDED_IDENTITY(CATICkeRelationFactory);
EMBEDDED_IDENTITY(CATIContainer);

class DocumentObject;

/** The container of a document. */
class ContainerObject final
    : public Implements<CATBaseUnknown, CATIContainer, CATICkeParmFactory, CATICkeRelationFactory, CATIAlias> {
public:
    explicit ContainerObject(DocumentObject& document);

    std::string objectName() const override;
    const Object* home() const override;
    DocumentObject& document() const { return m_document; }
    CATLONG32 ListMembersHere(const CATIdent iInterfaceID, SEQUENCE(CATBaseUnknown_ptr) & ioMembers) override;
    CATICkeParm_var CreateString(const CATUnicodeString& iName, const CATUnicodeString& iValue) override;
    CATICkeParm_var CreateInteger(const CATUnicodeString& iName, const int iValue) override;
    CATICkeParm_var CreateReal(const CATUnicodeString& iName, const double iValue) override;
    CATICkeParm_var CreateBoolean(const CATUnicodeString& iName, const CATCke::Boolean iValue) override;
    CATIParmPublisher_var CreateParameterSet(const CATUnicodeString iName) override;
    CATUnicodeString GetAlias() override;
    void SetAlias(const CATUnicodeString& iAlias) override;

private:
    Found extended(const IID& iid) override { return extensionFor(*this, iid); }

    DocumentObject& m_document;
    std::string m_alias;
};

/** A container of another kind, without members. It may be used without a reference. */
CATIContainer& strangeContainer();

} // namespace embedded

#endif
