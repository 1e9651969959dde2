#ifndef FOUNDATION_INTERFACE_IDS_H
#define FOUNDATION_INTERFACE_IDS_H

#include "foundation/InterfacePtr.h"

// One line an interface that the library queries.
#define VORNTOOLS_INTERFACE(Name)                                                                                      \
    class Name;                                                                                                        \
    extern ExportedByCatia const IID IID_##Name;                                                                       \
    namespace vorntools {                                                                                              \
    template <>                                                                                                        \
    struct InterfaceId<Name> {                                                                                         \
        static const IID& value() { return IID_##Name; }                                                               \
    };                                                                                                                 \
    }

VORNTOOLS_INTERFACE(CATIADocument)
VORNTOOLS_INTERFACE(CATIAProduct)
VORNTOOLS_INTERFACE(CATIDocRoots)
VORNTOOLS_INTERFACE(CATILinkableObject)
VORNTOOLS_INTERFACE(CATIPrdProperties)
VORNTOOLS_INTERFACE(CATIProduct)
VORNTOOLS_INTERFACE(CATISpecObject)
VORNTOOLS_INTERFACE(CATIDftDocumentServices)
VORNTOOLS_INTERFACE(CATISamAccess)
VORNTOOLS_INTERFACE(CATISamAnalysisContainer)

VORNTOOLS_INTERFACE(CATIABase)
VORNTOOLS_INTERFACE(CATIACollection)
VORNTOOLS_INTERFACE(CATIAScene)
VORNTOOLS_INTERFACE(MSKIMaskManager)
VORNTOOLS_INTERFACE(CATIAApplication)
VORNTOOLS_INTERFACE(CATIIniInteractiveSession)
VORNTOOLS_INTERFACE(CATIMechanicalFeature)
VORNTOOLS_INTERFACE(CATInit)
VORNTOOLS_INTERFACE(CATIAlias)
VORNTOOLS_INTERFACE(CATICkeMagnitude)
VORNTOOLS_INTERFACE(CATICkeParameterSet)
VORNTOOLS_INTERFACE(CATICkeParm)
VORNTOOLS_INTERFACE(CATICkeParmFactory)
VORNTOOLS_INTERFACE(CATICkeRelationFactory)
VORNTOOLS_INTERFACE(CATIParmPublisher)
VORNTOOLS_INTERFACE(CATIRedrawEvent)
VORNTOOLS_INTERFACE(CATISpecAttrAccess)

VORNTOOLS_INTERFACE(CATIADesignTable)
VORNTOOLS_INTERFACE(CATICkeNaming)
VORNTOOLS_INTERFACE(CATICkeOleSheet)
VORNTOOLS_INTERFACE(CATICkeRelation)
VORNTOOLS_INTERFACE(CATIContainer)
VORNTOOLS_INTERFACE(CATIDesignTable)

#undef VORNTOOLS_INTERFACE

#endif
