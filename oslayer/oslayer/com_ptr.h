#pragma once

#include <unknwn.h>

#include <cstddef>
#include <exception>
#include <type_traits>
#include <utility>

namespace oslayer {

/// An owning reference to a reference-counted platform object: copying adds a reference, destruction releases it.
/// Using an empty one through its arrow ends the process (std::terminate): it is a fault of the program, and no caller
/// could go on.
template <class T>
class com_ptr {
public:
    /// __uuidof(pointer) means this interface.
    using value_type = T;

    com_ptr() noexcept = default;
    com_ptr(std::nullptr_t) noexcept {}
    /// Shares `object`: adds a reference of its own.
    com_ptr(T* object) noexcept : m_object(object) { addReference(); }
    com_ptr(const com_ptr& other) noexcept : com_ptr(other.m_object) {}
    com_ptr(com_ptr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~com_ptr() { release(); }

    com_ptr& operator=(const com_ptr& other) noexcept {
        com_ptr(other).swap(*this);
        return *this;
    }
    com_ptr& operator=(com_ptr&& other) noexcept {
        com_ptr(std::move(other)).swap(*this);
        return *this;
    }
    /// Shares `object`: adds a reference of its own.
    com_ptr& operator=(T* object) noexcept {
        com_ptr(object).swap(*this);
        return *this;
    }
    com_ptr& operator=(std::nullptr_t) noexcept {
        release();
        return *this;
    }

    /// Takes over the caller's reference to `object` instead of adding one.
    [[nodiscard]] static com_ptr adopt(T* object) noexcept {
        com_ptr owner;
        owner.m_object = object;
        return owner;
    }

    /// Hands the reference over to the caller, who now has to release it.
    [[nodiscard]] T* detach() noexcept { return std::exchange(m_object, nullptr); }

    /// Becomes `object` seen as T. Does nothing when both name the same object already (or both name none); a query
    /// that fails, and a null `object`, leave this one empty.
    void queryFrom(IUnknown* object) noexcept {
        if (static_cast<IUnknown*>(m_object) == object) {
            return;
        }
        T* queried = nullptr;
        if (object != nullptr && object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(&queried)) < 0) {
            queried = nullptr;
        }
        adopt(queried).swap(*this);
    }

    void swap(com_ptr& other) noexcept { std::swap(m_object, other.m_object); }

    /// For out-parameters: releases what is held and gives the place where a callee stores a new reference.
    [[nodiscard]] T** operator&() noexcept {
        release();
        return &m_object;
    }

    [[nodiscard]] T* get() const noexcept { return m_object; }
    operator T*() const noexcept { return m_object; }

    T* operator->() const noexcept {
        if (m_object == nullptr) [[unlikely]] {
            std::terminate();
        }
        return m_object;
    }

private:
    void addReference() const noexcept {
        if (m_object != nullptr) {
            m_object->AddRef();
        }
    }
    // Forgets the object before releasing it, so that a destructor that comes back here finds nothing.
    void release() noexcept {
        if (T* object = std::exchange(m_object, nullptr); object != nullptr) {
            object->Release();
        }
    }

    T* m_object = nullptr;
};

} // namespace oslayer

#if defined(__MINGW32__)
/// MinGW's __uuidof looks interfaces up by type and knows plain pointers to them; for compilers that have __uuidof
/// built in, the interface a template is made for counts too. This gives smart pointers the same meaning here.
template <class Pointer>
requires std::is_same_v<std::remove_cv_t<Pointer>, oslayer::com_ptr<typename Pointer::value_type>>
constexpr const GUID& __mingw_uuidof() {
    return __mingw_uuidof<typename Pointer::value_type>();
}
#endif
