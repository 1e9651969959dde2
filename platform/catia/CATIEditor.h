#ifndef CATIEditor_H
#define CATIEditor_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIEditor;

class CATFrmEditor;

/** The editor of an opened document as an interface. */
class ExportedByCatia CATIEditor : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** No reference is added (Proposed: that); null is possible. */
    virtual CATFrmEditor* GetEditor() = 0;

protected:
    ~CATIEditor() override = default;
};

CATDeclareHandler(CATIEditor, CATBaseUnknown);

#endif
