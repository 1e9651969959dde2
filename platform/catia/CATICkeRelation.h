#ifndef CATICkeRelation_H
#define CATICkeRelation_H

#include "CATICkeNaming.h"
#include "CATICkeRelationForwards.h"

extern ExportedByCatia IID IID_CATICkeRelation;

/** A relation between parameters: a formula, a design table. It is a specification object, too. */
class ExportedByCatia CATICkeRelation : public CATICkeNaming {
    CATDeclareInterface;

public:
    /** The parameters that the relation sets. The list stays the relation's own. Null is possible. */
    virtual CATCkeListOfParm OutParameters() const = 0;

protected:
    ~CATICkeRelation() override = default;
};

CATDeclareHandler(CATICkeRelation, CATICkeNaming);

#endif
