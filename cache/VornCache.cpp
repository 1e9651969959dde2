#include "VornCache.h"

#include "cache/DatFields.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include <cstring>
#include <memory>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornCache::_CteCLASS_NAME("VornCache::");

namespace {

using Texts = CATListValCATUnicodeString;
using TextMap = TYPMapCATUnicodeStringPVoid;

void deleteFields(TextMap* ip_fields) {
    if (!ip_fields) return;
    for (int i = 0; i < ip_fields->size(); ++i) {
        if (std::strcmp(ip_fields->classNameAt(i), kListClass) == 0)
            delete static_cast<Texts*>(ip_fields->valueAt(i));
        else
            delete static_cast<CATUnicodeString*>(ip_fields->valueAt(i));
    }
    delete ip_fields;
}

struct DeleteFields {
    void operator()(TextMap* ip_fields) const { deleteFields(ip_fields); }
};
using Fields = std::unique_ptr<TextMap, DeleteFields>;

// The parameter is what the map gives back.
// NOLINTNEXTLINE(readability-non-const-parameter)
void deleteStatus(int* ip_status) { delete ip_status; }

/** Frees every value and leaves its key behind without one, so that a second call finds nothing to free. */
template <class Value>
void releaseValues(TextMap* iop_map, const char* i_class, void (*i_delete)(Value*)) {
    if (!iop_map) return;
    TextMap& io_map = *iop_map;
    std::vector<CATUnicodeString> keys;
    keys.reserve(static_cast<std::size_t>(io_map.size()));
    for (int i = 0; i < io_map.size(); ++i) keys.push_back(io_map.keyAt(i));
    for (const CATUnicodeString& key : keys) {
        Value* const p_value = valueIn<Value>(io_map, key, i_class);
        io_map.insert(key, nullptr, i_class);
        i_delete(p_value);
    }
}

/** Frees every value of a map that nobody asks any more, and the map. Needs no memory. */
template <class Value>
void deleteMap(TextMap* ip_map, void (*i_delete)(Value*)) {
    for (int i = 0; ip_map && i < ip_map->size(); ++i) i_delete(static_cast<Value*>(ip_map->valueAt(i)));
    delete ip_map;
}

/** A key that a map is to have soon: everything that takes memory. It goes again unless it is to stay. */
class NewKey {
public:
    NewKey(TextMap* iop_map, const char* i_class, const CATUnicodeString& i_old_key, const CATUnicodeString& i_new_key)
        : m_new_key(i_new_key) {
        if (!holds(iop_map, i_old_key) || iop_map->contains(i_new_key)) return;
        iop_map->insert(i_new_key, nullptr, i_class);
        m_map = iop_map;
    }
    ~NewKey() {
        if (m_map) m_map->erase(m_new_key);
    }
    NewKey(const NewKey&) = delete;
    NewKey& operator=(const NewKey&) = delete;

    void stay() { m_map = nullptr; }

private:
    const CATUnicodeString& m_new_key;
    TextMap* m_map = nullptr; ///< null when the key was there before, or is not needed
};

/** Moves an entry to another key, which the map has by now, where nothing stays of what was there, be there an entry to
 * move or not. */
template <class Value>
void moveEntry(TextMap* iop_map, const char* i_class, const CATUnicodeString& i_old_key,
               const CATUnicodeString& i_new_key, void (*i_delete)(Value*)) {
    if (!iop_map) return;
    TextMap& io_map = *iop_map;
    Value* const p_replaced = valueIn<Value>(io_map, i_new_key, i_class);
    if (io_map.contains(i_old_key)) {
        io_map.insert(i_new_key, valueIn<Value>(io_map, i_old_key, i_class), i_class);
        io_map.erase(i_old_key);
    } else {
        io_map.erase(i_new_key);
    }
    i_delete(p_replaced);
}

} // namespace

VornCache::VornCache() : m_cacheMap(nullptr), m_statusMap(nullptr), m_documentMap(nullptr) {}

VornCache::~VornCache() {
    release(); // which may have had no memory for it
    deleteMap(m_cacheMap, deleteFields);
    deleteMap(m_statusMap, deleteStatus);
    delete m_documentMap;
}

HRESULT VornCache::release() {
    const JournalFrame frame(_CteCLASS_NAME, "release");
    const auto release_all = [&] {
        releaseValues(m_cacheMap, kFieldMapClass, deleteFields);
        releaseValues(m_statusMap, kStatusClass, deleteStatus);
    };
    return guarded(release_all) ? S_OK : E_FAIL;
}

HRESULT VornCache::addDocument(CATUnicodeString name, CATDocument* doc) {
    const JournalFrame frame(_CteCLASS_NAME, "addDocument");
    const auto add = [&] {
        // The place for the document first, so that a failure leaves nothing half known.
        if (doc && !holds(m_documentMap, name)) made(m_documentMap).insert(name, nullptr, kDocumentClass);
        if (!holds(m_cacheMap, name)) {
            Fields sp_fields(new TextMap);
            readDataInDATFile(name, sp_fields.get(), doc);
            made(m_cacheMap).insert(name, sp_fields.get(), kFieldMapClass);
            static_cast<void>(sp_fields.release());
        }
        if (doc) m_documentMap->insert(name, doc, kDocumentClass);
    };
    return guarded(add) ? S_OK : E_FAIL;
}

HRESULT VornCache::fileHasCache(CATUnicodeString name, unsigned char& has) {
    const JournalFrame frame(_CteCLASS_NAME, "fileHasCache");
    has = holds(m_cacheMap, name);
    return S_OK;
}

unsigned char VornCache::isInCache(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isInCache");
    return holds(m_cacheMap, name);
}

HRESULT VornCache::setNewFullFileName(const CATUnicodeString& oldName, const CATUnicodeString& newName) {
    const JournalFrame frame(_CteCLASS_NAME, "setNewFullFileName", 0);
    constexpr int kIdentical = 2;
    if (oldName.Compare(newName) == kIdentical || !holds(m_cacheMap, oldName)) return S_OK;
    const auto rename = [&] {
        NewKey keys[] = {{m_cacheMap, kFieldMapClass, oldName, newName},
                         {m_statusMap, kStatusClass, oldName, newName},
                         {m_documentMap, kDocumentClass, oldName, newName}};
        moveEntry(m_cacheMap, kFieldMapClass, oldName, newName, deleteFields);
        moveEntry(m_statusMap, kStatusClass, oldName, newName, deleteStatus);
        moveEntry<CATDocument>(m_documentMap, kDocumentClass, oldName, newName, [](CATDocument*) {});
        for (NewKey& key : keys) key.stay();
    };
    return guarded(rename) ? S_OK : E_FAIL;
}
