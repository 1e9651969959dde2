#ifndef VornToolsVector_H
#define VornToolsVector_H

/**
 * Growing array. Every element is an allocation of its own and every slot of the capacity holds one; the capacity
 * starts at 100 and grows by 100. Indices count from 0. An append that grows moves the values into new elements, so no
 * address of an element outlives it. Where memory gives out, std::bad_alloc is thrown and the array stays as it was.
 * @tparam T copied by assignment; made by default for each slot
 *
 * @par Example
 * @snippet bytes.cpp VornToolsVector
 */
template <class T>
class VornToolsVector {
public:
    /** No elements, and capacity for 100. */
    VornToolsVector() : VornToolsVector(0U) {}
    /**
     * No elements yet, but the capacity that appending so many reaches: appending them then copies each once.
     * @param expected 0 is allowed
     */
    explicit VornToolsVector(unsigned int expected) : VornToolsVector(NoSlots()) {
        makeSlots(expected <= step ? step : (expected - 1) / step * step + step);
    }
    /**
     * Copies the elements and the capacity.
     * @param other it stays as it is
     */
    VornToolsVector(const VornToolsVector& other) : VornToolsVector(NoSlots()) {
        makeSlots(other.m_capacity);
        copyFrom(other);
    }
    /**
     * Takes the elements over.
     * @param other left without elements and, until its next append, without slots
     */
    VornToolsVector(VornToolsVector&& other) noexcept : VornToolsVector(NoSlots()) { swap(other); }
    /**
     * Copies the elements and the capacity.
     * @param other may be this array
     * @return this array
     */
    VornToolsVector& operator=(const VornToolsVector& other) {
        if (this == &other) return *this;
        VornToolsVector copy(other);
        swap(copy);
        return *this;
    }
    /**
     * Takes the elements over.
     * @param other left without elements and slots
     * @return this array
     */
    VornToolsVector& operator=(VornToolsVector&& other) noexcept {
        VornToolsVector taken(static_cast<VornToolsVector&&>(other));
        swap(taken);
        return *this;
    }
    /**
     * An array that needed no memory: what an operation hands out where memory has given out.
     * @return no elements and, until its first append, no slots
     */
    static VornToolsVector withoutSlots() noexcept { return VornToolsVector(NoSlots()); }
    /** Ends every element. */
    ~VornToolsVector() { releaseSlots(); }

    /**
     * Adds a copy at the end.
     * @param element must not be one of this array
     */
    void append(const T& element) {
        if (m_size == m_capacity) grow();
        *m_slots[m_size] = element;
        ++m_size;
    }
    /**
     * Elements in use.
     * @return a count; the last index is one less
     */
    unsigned int size() const { return m_size; }
    /**
     * Slots, each with an element.
     * @return a count, never less than size()
     */
    unsigned int capacity() const { return m_capacity; }
    /**
     * One element.
     * @param index below size(); it is not checked
     * @return valid until an append grows the array
     */
    T& operator[](unsigned int index) { return *m_slots[index]; }
    /**
     * One element, for reading.
     * @param index below size(); it is not checked
     * @return valid until an append grows the array
     */
    const T& operator[](unsigned int index) const { return *m_slots[index]; }

private:
    static constexpr unsigned int step = 100;

    struct NoSlots {};
    /** What the other constructors begin with, so that slots made before a failure are released. */
    explicit VornToolsVector(NoSlots) noexcept : m_size(0), m_capacity(0), m_slots(nullptr) {}

    void makeSlots(unsigned int count) {
        m_slots = new T*[count];
        for (; m_capacity < count; ++m_capacity) m_slots[m_capacity] = new T();
    }
    void releaseSlots() {
        for (unsigned int i = 0; i < m_capacity; ++i) delete m_slots[i];
        delete[] m_slots;
    }
    /** Into slots that are there. */
    void copyFrom(const VornToolsVector& other) {
        for (; m_size < other.m_size; ++m_size) *m_slots[m_size] = *other.m_slots[m_size];
    }
    void swap(VornToolsVector& other) noexcept {
        exchange(m_size, other.m_size);
        exchange(m_capacity, other.m_capacity);
        exchange(m_slots, other.m_slots);
    }
    template <class Value>
    static void exchange(Value& left, Value& right) noexcept {
        const Value kept = left;
        left = right;
        right = kept;
    }
    /** Through a temporary copy, the old slots released before the new ones are made. */
    void grow() {
        *this = VornToolsVector(*this);
        VornToolsVector grown{NoSlots()};
        grown.makeSlots(m_capacity + step);
        grown.copyFrom(*this);
        swap(grown);
    }

    unsigned int m_size;
    unsigned int m_capacity;
    T** m_slots;
};

#endif
