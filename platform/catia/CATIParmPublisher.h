#ifndef CATIParmPublisher_H
#define CATIParmPublisher_H

#include "CATBaseUnknown.h"
#include "CATIContainer.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIParmPublisher;

/** An object below which parameters and their sets stand. */
class ExportedByCatia CATIParmPublisher : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Puts an object behind the others. One that stands somewhere already stays there. */
    virtual void Append(const CATISpecObject_var& iObject) = 0;
    virtual void RemoveChild(const CATISpecObject_var& iObject) = 0;
    /** Adds the children that answer an interface ("CATICkeParm") to the list. */
    virtual void GetDirectChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) = 0;
    /** The same for everything below. */
    virtual void GetAllChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) = 0;
    virtual CATIContainer_var GetContainer() = 0;

protected:
    ~CATIParmPublisher() override = default;
};

CATDeclareHandler(CATIParmPublisher, CATBaseUnknown);

#endif
