#ifndef CATICkeParameterSet_H
#define CATICkeParameterSet_H

#include "CATICkeNaming.h"
#include "CATICkeRelationForwards.h"

extern ExportedByCatia IID IID_CATICkeParameterSet;

/** A set of parameters. The object is a publisher and a specification object of type "ParameterSet", too. */
class ExportedByCatia CATICkeParameterSet : public CATICkeNaming {
    CATDeclareInterface;

public:
    /** The parameters that stand directly in the set; the caller deletes the list. Null is possible. */
    virtual CATCkeListOfParm Parameters() const = 0;

protected:
    ~CATICkeParameterSet() override = default;
};

CATDeclareHandler(CATICkeParameterSet, CATICkeNaming);

#endif
