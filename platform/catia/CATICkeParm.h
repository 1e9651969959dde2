#ifndef CATICkeParm_H
#define CATICkeParm_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATICkeInst.h"
#include "CATICkeType.h"
#include "CATIParmPublisher.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeParm;

/** A parameter. It is a specification object, too. */
class ExportedByCatia CATICkeParm : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Access of users. */
    enum UserAccessMode { NotSeen = 0, ReadOnly = 1, WriteOnly = 2, ReadWrite = 3, User = 4 };

    /** The name that a user gave, else the path. */
    virtual CATUnicodeString Name() const = 0;
    /** The name at creation. */
    virtual CATUnicodeString InternalRole() const = 0;
    /** As Name, but a path begins below the root. */
    virtual CATUnicodeString RelativeName(const CATIParmPublisher_var& iRoot = NULL_var) const = 0;
    /** Names from the top of the document, or from below the root, to the parameter, joined by backslashes. */
    virtual CATUnicodeString Pathname(const CATIParmPublisher_var& iRoot = NULL_var) const = 0;
    /** Whether a user gave a name. */
    virtual CATCke::Boolean IsNamed() const = 0;
    /** Gives a user's name; an empty one takes it away. */
    virtual void Rename(const CATUnicodeString& iName) = 0;

    /** The value as text, a dimension with its current unit; "true" or "false" for a truth value. */
    virtual CATUnicodeString Show() const = 0;
    virtual CATICkeInst_var Value() const = 0;
    virtual CATICkeType_var Type() const = 0;
    virtual CATCke::Boolean IsSet() const = 0;
    /** Set the value. A value that the parameter's type cannot take changes nothing. */
    virtual void Valuate(const int iValue) = 0;
    /** @param iValue in the MKS unit for a dimension */
    virtual void Valuate(const double iValue) = 0;
    virtual void Valuate(const CATCke::Boolean iValue) = 0;
    /** For parameters of texts. */
    virtual void Valuate(const CATUnicodeString& iValue) = 0;
    /** For dimensions: a number with its unit, such as "3cm"; without one it is of the current unit. */
    virtual void ValuateReal(const CATUnicodeString& iValue) = 0;

    virtual UserAccessMode UserAccess() const = 0;
    virtual void SetUserAccess(const UserAccessMode iMode) = 0;
    /** Whether users cannot change the value, for whatever reason. */
    virtual CATCke::Boolean IsReadOnly() const = 0;

protected:
    ~CATICkeParm() override = default;
};

CATDeclareHandler(CATICkeParm, CATBaseUnknown);

#endif
