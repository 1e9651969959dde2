#ifndef FOUNDATION_INTERFACE_PTR_H
#define FOUNDATION_INTERFACE_PTR_H

#include "CATBaseUnknown.h"

#include <utility>

namespace vorntools {

/** Identifier of an interface by its type; each interface that is queried has its line in InterfaceIds.h. */
template <class T>
struct InterfaceId;

/**
 * Owns one reference of an interface. Who hands a raw pointer in says what happens to its reference: `adopt` takes it
 * over, `share` adds one, `receive` takes what a call hands out.
 */
template <class T>
class InterfacePtr {
public:
    InterfacePtr() noexcept = default;
    static InterfacePtr adopt(T* ip_owned) noexcept {
        InterfacePtr result;
        result.m_pointer = ip_owned;
        return result;
    }
    static InterfacePtr share(T* ip_borrowed) noexcept {
        if (ip_borrowed) ip_borrowed->AddRef();
        return adopt(ip_borrowed);
    }
    InterfacePtr(const InterfacePtr& i_other) noexcept : InterfacePtr(share(i_other.m_pointer)) {}
    InterfacePtr(InterfacePtr&& i_other) noexcept : m_pointer(i_other.detach()) {}
    InterfacePtr& operator=(InterfacePtr i_other) noexcept {
        std::swap(m_pointer, i_other.m_pointer);
        return *this;
    }
    ~InterfacePtr() { reset(); }

    /** Gives the reference back. The pointer is empty before the object hears of it. */
    void reset() noexcept {
        if (T* const p_old = detach()) p_old->Release();
    }
    /** Hands the reference over to the caller. */
    T* detach() noexcept { return std::exchange(m_pointer, nullptr); }
    T* get() const noexcept { return m_pointer; }
    T* operator->() const noexcept { return m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

    /**
     * Calls `call(T*& out)`, which hands out a reference. Only a successful call is believed: what a failing one leaves
     * in its output carries no reference and is dropped.
     * @return the call's code
     */
    template <class Call>
    HRESULT receive(Call&& i_call) {
        reset();
        T* p_received = nullptr;
        const HRESULT code = std::forward<Call>(i_call)(p_received);
        if (SUCCEEDED(code)) m_pointer = p_received;
        return code;
    }

    /** Another interface of the object; empty when it is not offered. */
    template <class U>
    InterfacePtr<U> query() const {
        InterfacePtr<U> result;
        if (!m_pointer) return result;
        void* p_found = nullptr;
        if (SUCCEEDED(m_pointer->QueryInterface(InterfaceId<U>::value(), &p_found)))
            result = InterfacePtr<U>::adopt(static_cast<U*>(p_found));
        return result;
    }

private:
    T* m_pointer = nullptr;
};

/** Another interface of an object that the caller only borrows. */
template <class U, class T>
InterfacePtr<U> queryInterface(T* ip_object) {
    return InterfacePtr<T>::share(ip_object).template query<U>();
}

} // namespace vorntools

#endif
