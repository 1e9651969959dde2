#ifndef FOUNDATION_INTERFACE_IDS_H
#define FOUNDATION_INTERFACE_IDS_H

#include "foundation/InterfacePtr.h"

// The interfaces that the library queries. Their identifiers are declared by their own headers alone, each in the form
// of the platform's release; InterfaceIds.cpp includes these.
#define VORNTOOLS_INTERFACES(Interface)                                                                                \
    Interface(CATIADocument) Interface(CATIAProduct) Interface(CATIDocRoots) Interface(CATILinkableObject)             \
        Interface(CATIPrdProperties) Interface(CATIProduct) Interface(CATISpecObject)                                  \
            Interface(CATIDftDocumentServices) Interface(CATISamAccess) Interface(CATISamAnalysisContainer)            \
                Interface(CATIABase) Interface(CATIACollection) Interface(CATIAScene) Interface(MSKIMaskManager)       \
                    Interface(CATIAApplication) Interface(CATIIniInteractiveSession) Interface(CATIMechanicalFeature)  \
                        Interface(CATInit) Interface(CATIAlias) Interface(CATICkeMagnitude)                            \
                            Interface(CATICkeParameterSet) Interface(CATICkeParm) Interface(CATICkeParmFactory)        \
                                Interface(CATICkeRelationFactory) Interface(CATIParmPublisher)                         \
                                    Interface(CATIRedrawEvent) Interface(CATISpecAttrAccess)                           \
                                        Interface(CATIADesignTable) Interface(CATICkeNaming)                           \
                                            Interface(CATICkeOleSheet) Interface(CATICkeRelation)                      \
                                                Interface(CATIContainer) Interface(CATIDesignTable)

#define VORNTOOLS_INTERFACE_ID(Name)                                                                                   \
    class Name;                                                                                                        \
    namespace vorntools {                                                                                              \
    template <>                                                                                                        \
    struct InterfaceId<Name> {                                                                                         \
        static const IID& value();                                                                                     \
    };                                                                                                                 \
    }

VORNTOOLS_INTERFACES(VORNTOOLS_INTERFACE_ID)

#undef VORNTOOLS_INTERFACE_ID

#endif
