#ifndef CATMetaClass_H
#define CATMetaClass_H

#include "ExportedByCatia.h"

/** Name and ancestry of a class. One object a class, made once and never released. Proposed: whole. */
class ExportedByCatia CATMetaClass {
public:
    CATMetaClass(const char* iName, const CATMetaClass* iBase) : m_name(iName), m_base(iBase) {}
    const char* IsA() const { return m_name; }
    int IsAKindOf(const char* iName) const;

private:
    const char* m_name;
    const CATMetaClass* m_base;
};

#endif
