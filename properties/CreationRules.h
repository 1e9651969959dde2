#ifndef PROPERTIES_CREATION_RULES_H
#define PROPERTIES_CREATION_RULES_H

#include "foundation/Environment.h"
#include "foundation/JournalFrame.h"
#include "foundation/TextKeys.h"

#include "CATListOfCATUnicodeString.h"

namespace vorntools {

/** Whether attributes and properties that lack are made. */
inline bool createsWhatLacks() { return environmentSays(&ENVManager::createPropsForMapping); }

/** The same, with the names of those that are made read-only. */
struct CreationRules {
    bool creates = false;
    TextSet read_only_names;

    /** E_FAIL, reported, when it is not to be had which are read-only: nobody would make them so later. */
    HRESULT read(const JournalFrame& i_frame) {
        creates = createsWhatLacks();
        if (!creates) return S_OK;
        ENVManager* const p_environment = ENVManager::getInstance();
        CATListValCATUnicodeString names;
        if (!p_environment || FAILED(p_environment->getReadOnlyPropertiesOnCreate(names)))
            return i_frame.callFailed("getReadOnlyPropertiesOnCreate");
        for (int i = 1; i <= names.Size(); ++i) read_only_names.insert(names[i]);
        return S_OK;
    }
    bool makesReadOnly(const CATUnicodeString& i_name) const { return read_only_names.count(i_name) != 0; }
};

} // namespace vorntools

#endif
