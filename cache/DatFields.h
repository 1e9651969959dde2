#ifndef CACHE_DAT_FIELDS_H
#define CACHE_DAT_FIELDS_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "TYPMapCATUnicodeStringPVoid.h"

namespace vorntools {

// Class names under which the cache's maps hold their values.
inline constexpr char kTextClass[] = "CATUnicodeString";
inline constexpr char kListClass[] = "CATValListCATUnicodeString";
inline constexpr char kFieldMapClass[] = "TYPMapCATUnicodeStringPVoid";
inline constexpr char kStatusClass[] = "int";
inline constexpr char kDocumentClass[] = "CATDocument";

/** A map of the cache, made when something is put into it: making the cache itself needs no memory. */
inline TYPMapCATUnicodeStringPVoid& made(TYPMapCATUnicodeStringPVoid*& iop_map) {
    if (!iop_map) iop_map = new TYPMapCATUnicodeStringPVoid;
    return *iop_map;
}

inline bool holds(const TYPMapCATUnicodeStringPVoid* ip_map, const CATUnicodeString& i_key) {
    return ip_map && ip_map->contains(i_key);
}

/** The value of a map under a key, or null. */
template <class Value>
Value* valueIn(const TYPMapCATUnicodeStringPVoid& i_map, const CATUnicodeString& i_key, const char* i_class) {
    return static_cast<Value*>(i_map.find(i_key, i_class));
}
template <class Value>
Value* valueIn(const TYPMapCATUnicodeStringPVoid* ip_map, const CATUnicodeString& i_key, const char* i_class) {
    return ip_map ? valueIn<Value>(*ip_map, i_key, i_class) : nullptr;
}

/** The field map of a document, or null for a document that the cache does not hold. */
inline const TYPMapCATUnicodeStringPVoid* fieldsOf(const TYPMapCATUnicodeStringPVoid* ip_cache,
                                                   const CATUnicodeString& i_name) {
    return valueIn<TYPMapCATUnicodeStringPVoid>(ip_cache, i_name, kFieldMapClass);
}

/** A field of a document's field map: one text, a list of texts, or neither. It points into the map. */
class DatField {
public:
    DatField(const TYPMapCATUnicodeStringPVoid* ip_fields, const CATUnicodeString& i_tag) {
        if (!ip_fields) return;
        m_text = valueIn<CATUnicodeString>(*ip_fields, i_tag, kTextClass);
        if (!m_text) m_list = valueIn<CATListValCATUnicodeString>(*ip_fields, i_tag, kListClass);
    }

    bool exists() const { return m_text || m_list; }
    /** The single value; null for a list. */
    const CATUnicodeString* text() const { return m_text; }
    /** The single value unless it is empty, else the first of the list; null without one. */
    const CATUnicodeString* first() const {
        if (m_text) return m_text->IsNull() ? nullptr : m_text;
        return m_list && m_list->Size() > 0 ? &(*m_list)[1] : nullptr;
    }
    /** Visits the single value unless it is empty, or each of the list. */
    template <class Visit>
    void forEach(Visit&& i_visit) const {
        if (m_text && !m_text->IsNull()) i_visit(*m_text);
        for (int i = 1; m_list && i <= m_list->Size(); ++i) i_visit((*m_list)[i]);
    }
    /** Appends what forEach visits. */
    void appendTo(CATListValCATUnicodeString& io_list) const {
        if (m_text && !m_text->IsNull()) io_list.Append(*m_text);
        if (m_list) io_list.Append(*m_list);
    }

private:
    const CATUnicodeString* m_text = nullptr;
    const CATListValCATUnicodeString* m_list = nullptr;
};

} // namespace vorntools

#endif
