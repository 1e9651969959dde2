#ifndef CATFrmEditor_H
#define CATFrmEditor_H

#include "CATBaseUnknown.h"

class CATCSO;
class CATDocument;

/** What a document is worked on with: one editor a document, however many windows show it. No call adds references. */
class ExportedByCatia CATFrmEditor : public CATBaseUnknown {
public:
    /** The editor that the user works in; null is possible. */
    static CATFrmEditor* GetCurrentEditor();

    /** Null is possible. */
    virtual CATDocument* GetDocument() = 0;
    /** The editor's selection; null is possible. */
    virtual CATCSO* GetCSO() = 0;

protected:
    ~CATFrmEditor() override = default;
};

#endif
