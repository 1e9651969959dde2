#ifndef CATICkeSheet_H
#define CATICkeSheet_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeSheet;

/** The cells that a design table took from its file. Rows and columns count from 1; the first row has the titles. */
class ExportedByCatia CATICkeSheet : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Text of a cell; empty outside. The text stays the sheet's own until the sheet is read again. */
    virtual const CATUnicodeString& Cell(const int iRow, const int iColumn) const = 0;

    /** Reads the file again. @return false when it cannot be read: the cells stay as they were */
    virtual CATCke::Boolean UpdateLocalCopy(const int iForcedWidth = 0, const int iForcedHeight = 0) = 0;
    /** Compares the file's date with the one that the cells are of. @return 1 when they differ */
    virtual int IsFileModified(CATUnicodeString& oOldDate, CATUnicodeString& oNewDate) = 0;

protected:
    ~CATICkeSheet() override = default;
};

CATDeclareHandler(CATICkeSheet, CATBaseUnknown);

#endif
