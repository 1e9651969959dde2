#ifndef VornToolsVector_H
#define VornToolsVector_H

/**
 * Growing array. Every element is an allocation of its own and every slot of the capacity holds one; the capacity
 * starts at 100 and grows by 100. Indices count from 0. An append that grows moves the values into new elements, so no
 * address of an element outlives it.
 */
template <class T>
class VornToolsVector {
public:
    VornToolsVector() : m_size(0), m_capacity(step), m_slots(makeSlots(step)) {}
    VornToolsVector(const VornToolsVector& other)
        : m_size(other.m_size), m_capacity(other.m_capacity), m_slots(makeSlots(other.m_capacity)) {
        for (unsigned int i = 0; i < m_size; ++i) *m_slots[i] = *other.m_slots[i];
    }
    VornToolsVector& operator=(const VornToolsVector& other) {
        if (this == &other) return *this;
        releaseSlots(m_slots, m_capacity);
        m_size = other.m_size;
        m_capacity = other.m_capacity;
        m_slots = makeSlots(m_capacity);
        for (unsigned int i = 0; i < m_size; ++i) *m_slots[i] = *other.m_slots[i];
        return *this;
    }
    ~VornToolsVector() { releaseSlots(m_slots, m_capacity); }

    /** Adds a copy at the end. The element must not be one of this array. */
    void append(const T& element) {
        if (m_size == m_capacity) grow();
        *m_slots[m_size++] = element;
    }
    unsigned int size() const { return m_size; }
    unsigned int capacity() const { return m_capacity; }
    /** @param index below size() */
    T& operator[](unsigned int index) { return *m_slots[index]; }
    const T& operator[](unsigned int index) const { return *m_slots[index]; }

private:
    static constexpr unsigned int step = 100;

    static T** makeSlots(unsigned int count) {
        T** const slots = new T*[count];
        for (unsigned int i = 0; i < count; ++i) slots[i] = new T();
        return slots;
    }
    static void releaseSlots(T** slots, unsigned int count) {
        for (unsigned int i = 0; i < count; ++i) delete slots[i];
        delete[] slots;
    }
    void grow() {
        T** const kept = makeSlots(m_capacity);
        for (unsigned int i = 0; i < m_size; ++i) *kept[i] = *m_slots[i];
        releaseSlots(m_slots, m_capacity);
        m_slots = makeSlots(m_capacity + step);
        for (unsigned int i = 0; i < m_size; ++i) *m_slots[i] = *kept[i];
        releaseSlots(kept, m_capacity);
        m_capacity += step;
    }

    unsigned int m_size;
    unsigned int m_capacity;
    T** m_slots;
};

#endif
