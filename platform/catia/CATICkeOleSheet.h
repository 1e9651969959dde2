#ifndef CATICkeOleSheet_H
#define CATICkeOleSheet_H

#include "CATICkeSheet.h"

extern ExportedByCatia IID IID_CATICkeOleSheet;

/** A sheet of a spreadsheet file, which may have several. */
class ExportedByCatia CATICkeOleSheet : public CATICkeSheet {
    CATDeclareInterface;

public:
    /** The chosen sheet of the file, from 1. */
    virtual int GetSheetIndex() = 0;
    /** Chooses a sheet; its cells are there after the next UpdateLocalCopy. */
    virtual void SetSheetIndex(int iIndex) = 0;

protected:
    ~CATICkeOleSheet() override = default;
};

CATDeclareHandler(CATICkeOleSheet, CATICkeSheet);

#endif
