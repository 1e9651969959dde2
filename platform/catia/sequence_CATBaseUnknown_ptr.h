#ifndef sequence_CATBaseUnknown_ptr_H
#define sequence_CATBaseUnknown_ptr_H

#include "CATBaseUnknown.h"

#include <vector>

/** Objects by position, from 0. A position behind the end makes the sequence longer; no reference is counted. */
class _SEQUENCE_CATBaseUnknown_ptr {
public:
    _SEQUENCE_CATBaseUnknown_ptr() = default;
    explicit _SEQUENCE_CATBaseUnknown_ptr(CATLONG32 iSize) : m_elements(iSize < 0 ? 0U : static_cast<size_t>(iSize)) {}
    CATBaseUnknown_ptr& operator[](CATLONG32 iPosition) {
        const size_t position = iPosition < 0 ? 0U : static_cast<size_t>(iPosition);
        if (position >= m_elements.size()) m_elements.resize(position + 1);
        return m_elements[position];
    }
    /** Proposed: whole. */
    CATLONG32 length() const { return static_cast<CATLONG32>(m_elements.size()); }

private:
    std::vector<CATBaseUnknown_ptr> m_elements;
};

#define SEQUENCE(Type) _SEQUENCE_##Type

#endif
