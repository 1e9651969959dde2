#ifndef CATIDesignTable_H
#define CATIDesignTable_H

#include "CATBaseUnknown.h"
#include "CATICkeParm.h"
#include "CATICkeSheet.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIDesignTable;

/** A table that sets parameters from the rows of a file. The object is a relation and a specification object, too: the
 * parameters that it sets are the relation's out-parameters. Configuration c is row c + 1 of the sheet. */
class ExportedByCatia CATIDesignTable : public CATBaseUnknown {
    CATDeclareInterface;

public:
    enum DTError {
        NoError,
        ColumnNamesNotUnique,
        BadCellType,
        BadColumnType,
        NotAMagnitude,
        BadConfiguration,
        ParseSheetError,
        ParameterAlreadyAssociated,
        ColumnAlreadyAssociated,
        ColumnDoesntExist,
        MiscellaneousError
    };

    /** Null is possible. */
    virtual const CATICkeSheet_var Sheet() const = 0;
    /** The current configuration, from 1. */
    virtual int ConfigurationRow() const = 0;
    /** Makes a configuration the current one. @return BadConfiguration when the sheet has no such row */
    virtual DTError SetCurrentConfiguration(const int iConfiguration) = 0;
    /** Column that a parameter is associated with, from 1; 0 for none. */
    virtual int ParameterColumn(const CATICkeParm_var& iParameter) = 0;

protected:
    ~CATIDesignTable() override = default;
};

CATDeclareHandler(CATIDesignTable, CATBaseUnknown);

#endif
