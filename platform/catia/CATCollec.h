#ifndef CATCollec_H
#define CATCollec_H

#include "ExportedByCatia.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_set>
#include <vector>

/** Words of the list operations. */
class CATCollec {
public:
    enum MemoryHandling { KeepAllocation, ReleaseAllocation };
};

/** Base of every list. The in-memory platform counts the living ones and names each position outside a list. Proposed:
 * its members. */
class ExportedByCatia CATCollecRoot {
protected:
    CATCollecRoot();
    CATCollecRoot(const CATCollecRoot&);
    CATCollecRoot& operator=(const CATCollecRoot&) { return *this; }
    ~CATCollecRoot();
    static void BadPosition(int iPosition, int iSize);
};

/** What the lists of values and of pointers share. Positions count from 1; 0 means absent. Proposed: that there is such
 * a class; the methods are those of the lists. */
template <class T>
class CATListOf : public CATCollecRoot {
public:
    void Append(const T& iElement) { m_elements.push_back(iElement); }
    void Append(const CATListOf& iList) {
        const std::vector<T> copy(iList.m_elements);
        m_elements.insert(m_elements.end(), copy.begin(), copy.end());
    }
    int Locate(const T& iElement, int iFrom = 1) const {
        for (std::size_t i = iFrom < 1 ? 0 : static_cast<std::size_t>(iFrom - 1); i < m_elements.size(); ++i)
            if (m_elements[i] == iElement) return static_cast<int>(i) + 1;
        return 0;
    }
    void RemovePosition(int iPosition) {
        if (Checked(iPosition)) m_elements.erase(m_elements.begin() + (iPosition - 1));
    }
    int RemoveValue(const T& iElement) {
        const int found = Locate(iElement);
        if (found) RemovePosition(found);
        return found;
    }
    void RemoveAll(CATCollec::MemoryHandling iMemory = CATCollec::ReleaseAllocation) {
        if (iMemory == CATCollec::KeepAllocation)
            m_elements.clear();
        else
            std::vector<T>().swap(m_elements);
    }
    int Size() const { return static_cast<int>(m_elements.size()); }
    /** Makes the list so long; new elements are empty. */
    void Size(int iSize) { m_elements.resize(iSize < 0 ? 0 : static_cast<std::size_t>(iSize)); }
    const T& operator[](int iPosition) const { return Checked(iPosition) ? m_elements[Index(iPosition)] : Outside(); }
    T& operator[](int iPosition) { return Checked(iPosition) ? m_elements[Index(iPosition)] : Outside(); }
    int operator==(const CATListOf& iList) const { return m_elements == iList.m_elements; }
    int operator!=(const CATListOf& iList) const { return !(m_elements == iList.m_elements); }

protected:
    /** Keeps the first of equal elements. @return the number removed */
    template <class Hash = std::hash<T>>
    int RemoveRepeated() {
        std::unordered_set<T, Hash> seen;
        const auto last = std::remove_if(m_elements.begin(), m_elements.end(),
                                         [&seen](const T& element) { return !seen.insert(element).second; });
        const auto removed = m_elements.end() - last;
        m_elements.erase(last, m_elements.end());
        return static_cast<int>(removed);
    }

private:
    static std::size_t Index(int iPosition) { return static_cast<std::size_t>(iPosition - 1); }
    bool Checked(int iPosition) const {
        if (iPosition >= 1 && iPosition <= Size()) return true;
        BadPosition(iPosition, Size());
        return false;
    }
    /** A fresh element stands for every position outside, so that a wrong index is reported and not a crash. */
    static T& Outside() {
        static T& outside = *new T();
        return outside = T();
    }

    std::vector<T> m_elements;
};

/** Declares the list of pointers to T; it neither deletes nor counts references. Proposed: whole. */
#define CATLISTP_DECLARE(T)                                                                                            \
    class CATListPtr##T : public CATListOf<T*> {}
/** Declares the list of values T; a list of handles holds a reference an element. Proposed: whole. */
#define CATLISTV_DECLARE(T)                                                                                            \
    class CATListVal##T : public CATListOf<T> {}

#define CATLISTP(T) CATListPtr##T

#endif
