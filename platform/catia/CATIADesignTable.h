#ifndef CATIADesignTable_H
#define CATIADesignTable_H

#include "CATIABase.h"

extern ExportedByCatia IID IID_CATIADesignTable;

/** A design table as automation shows it. Proposed: the base, in the place of further automation classes. */
class ExportedByCatia CATIADesignTable : public CATIABase {
    CATDeclareInterface;

public:
    /** Full name of the table's file. */
    virtual HRESULT __stdcall get_FilePath(CATBSTR& oPath) = 0;

protected:
    ~CATIADesignTable() override = default;
};

CATDeclareHandler(CATIADesignTable, CATBaseUnknown);

#endif
