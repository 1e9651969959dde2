#ifndef TYPMapCATUnicodeStringPVoid_H
#define TYPMapCATUnicodeStringPVoid_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

#include <cstddef>

/**
 * Text to pointer, each pointer tagged with the name of the class that it points to. The map owns its keys and tags and
 * never what the pointers lead to. Keys compare exactly. Proposed: every method but insert.
 */
class ExportedByCatia TYPMapCATUnicodeStringPVoid {
public:
    TYPMapCATUnicodeStringPVoid();
    ~TYPMapCATUnicodeStringPVoid();
    TYPMapCATUnicodeStringPVoid(const TYPMapCATUnicodeStringPVoid&) = delete;
    TYPMapCATUnicodeStringPVoid& operator=(const TYPMapCATUnicodeStringPVoid&) = delete;

    /** Stores a value under a key. A key that is present gets the new value and class; what it held before is not
     * freed, so its owner takes it out first. */
    void insert(const CATUnicodeString& iKey, void* iValue, const char* iClassName);
    /** The value under a key, or null when the key is absent or holds another class; an empty or null class name
     * accepts any. */
    void* find(const CATUnicodeString& iKey, const char* iClassName) const;
    /** 1 when the key is present, whatever its class. */
    unsigned char contains(const CATUnicodeString& iKey) const;
    /** Takes a key out; what its value leads to is the caller's. 1 when it was there. */
    unsigned char erase(const CATUnicodeString& iKey);
    int size() const;

    /** Entries in order of insertion, counted from 0, for walking the whole map; valid while it does not change.
     * Null / the empty text outside. */
    void* valueAt(int iIndex) const;
    const char* classNameAt(int iIndex) const;
    const CATUnicodeString& keyAt(int iIndex) const;

private:
    struct Table;
    Table* m_table;
};

#endif
