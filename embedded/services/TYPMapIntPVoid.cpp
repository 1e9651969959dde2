#include "TYPMapIntPVoid.h"

#include "embedded/services/ClassNames.h"

#include <unordered_map>

using embedded::acceptsClass;
using embedded::internedClassName;

struct TYPMapIntPVoid::Table {
    struct Value {
        void* pointer;
        const char* className;
    };
    std::unordered_map<int, Value> values;
};

TYPMapIntPVoid::TYPMapIntPVoid() : m_table(new Table) {}

TYPMapIntPVoid::~TYPMapIntPVoid() { delete m_table; }

void TYPMapIntPVoid::insert(int iKey, void* iValue, const char* iClassName) {
    m_table->values[iKey] = {iValue, internedClassName(iClassName)};
}

void* TYPMapIntPVoid::find(int iKey, const char* iClassName) const {
    const auto found = m_table->values.find(iKey);
    if (found == m_table->values.end() || !acceptsClass(found->second.className, iClassName)) return nullptr;
    return found->second.pointer;
}
