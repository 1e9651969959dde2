#ifndef PROPERTIES_ATTRIBUTE_PAIRS_H
#define PROPERTIES_ATTRIBUTE_PAIRS_H

#include "foundation/TextKeys.h"

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"

namespace vorntools {

/** Fills a list with names and values by turns; each name once, with the value it was given first. */
class AttributePairs {
public:
    /** @param o_list is empty; outlives this object */
    explicit AttributePairs(CATListValCATUnicodeString& o_list) : m_list(o_list) {}

    /** Whether a name is in the list; a value that reads the same does not count. */
    bool has(const CATUnicodeString& i_name) const { return m_names.count(i_name) != 0; }

    void add(const CATUnicodeString& i_name, const CATUnicodeString& i_value) {
        if (!m_names.insert(i_name).second) return;
        m_list.Append(i_name);
        m_list.Append(i_value);
    }

    /** Adds an attribute, and the value a second time under the name that mappings know it by. */
    void addWithAlias(const CATUnicodeString& i_name, const CATUnicodeString& i_value) {
        static constexpr const char* kAliases[][2] = {
            {"ItemID", "Definition"}, {"ItemRevID", "Revision"}, {"ItemRev_Name", "EBS_ItemRevName"}};
        add(i_name, i_value);
        for (const auto& alias : kAliases)
            if (i_name == alias[0]) add(alias[1], i_value);
    }

    /** Adds the names that every reader expects, without a value, where they are missing. */
    void addGuaranteed() {
        for (const char* const name :
             {"Definition", "Revision", "EBS_ItemRevName", "EBS_DatasetUid", "EBS_DatasetLastVersion"})
            add(name, CATUnicodeString());
    }

private:
    CATListValCATUnicodeString& m_list;
    TextSet m_names;
};

} // namespace vorntools

#endif
