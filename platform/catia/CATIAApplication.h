#ifndef CATIAApplication_H
#define CATIAApplication_H

#include "CATIABase.h"

extern ExportedByCatia IID IID_CATIAApplication;

/** The application as automation shows it. */
class ExportedByCatia CATIAApplication : public CATIABase {
    CATDeclareInterface;

public:
    /** Starts a command. @param iCommandId its title in the user's language, or its alias */
    virtual HRESULT __stdcall StartCommand(const CATBSTR& iCommandId) = 0;

protected:
    ~CATIAApplication() override = default;
};

CATDeclareHandler(CATIAApplication, CATBaseUnknown);

#endif
