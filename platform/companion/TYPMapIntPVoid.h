#ifndef TYPMapIntPVoid_H
#define TYPMapIntPVoid_H

#include "ExportedByCatia.h"

/** Integer to pointer, each pointer tagged with its class name; as TYPMapCATUnicodeStringPVoid. Proposed: the methods.
 */
class ExportedByCatia TYPMapIntPVoid {
public:
    TYPMapIntPVoid();
    ~TYPMapIntPVoid();
    TYPMapIntPVoid(const TYPMapIntPVoid&) = delete;
    TYPMapIntPVoid& operator=(const TYPMapIntPVoid&) = delete;

    void insert(int iKey, void* iValue, const char* iClassName);
    void* find(int iKey, const char* iClassName) const;

private:
    struct Table;
    Table* m_table;
};

#endif
