#pragma once

// Bases for the platform's objects: identity, reference counts and the border that
// exceptions do not cross.

#include <unknwn.h>

#include <atomic>
#include <new>
#include <utility>

namespace platform {

/// Runs `body`, which returns an HRESULT, and turns what it throws into one: no
/// exception may leave an operation of an interface.
template <typename Body>
HRESULT guarded(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

/// Hands `object` out with a reference of its own, as every getter does.
template <typename Interface, typename Object>
void handOut(Object& object, Interface** out) noexcept {
    object.AddRef();
    *out = &object;
}

/// The same for an object that may be missing: then null is handed out.
template <typename Interface, typename Object>
void handOut(Object* object, Interface** out) noexcept {
    if (object != nullptr) {
        object->AddRef();
    }
    *out = object;
}

/// QueryInterface and a reference count for an object that implements `Interface`,
/// its most derived one, and answers for `Bases` (the interfaces in between) as well.
template <typename Interface, typename... Bases>
class CComObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known =
            riid == __uuidof(IUnknown) || riid == __uuidof(Interface) || ((riid == __uuidof(Bases)) || ...);
        *object = known ? static_cast<Interface*>(this) : nullptr;
        if (!known) {
            return E_NOINTERFACE;
        }
        this->AddRef();
        return S_OK;
    }
    using Interface::QueryInterface;

    CComObject(const CComObject&) = delete;
    CComObject& operator=(const CComObject&) = delete;

protected:
    explicit CComObject(ULONG count) noexcept : m_count(count) {}
    ~CComObject() = default;

    std::atomic<ULONG> m_count;
};

/// An object on the heap that ends with its last reference. It is born with one,
/// which belongs to whoever called `new`.
template <typename Interface, typename... Bases>
class CHeapObject : public CComObject<Interface, Bases...> {
public:
    ULONG STDMETHODCALLTYPE AddRef() final { return this->m_count.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = this->m_count.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    CHeapObject() noexcept : CComObject<Interface, Bases...>(1) {}
    virtual ~CHeapObject() = default;
};

/// An object that exists once and as long as its owner inside the platform does. It
/// only counts: a reference that is never given back costs nothing.
template <typename Interface, typename... Bases>
class CInternedObject : public CComObject<Interface, Bases...> {
public:
    ULONG STDMETHODCALLTYPE AddRef() final { return this->m_count.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG STDMETHODCALLTYPE Release() final { return this->m_count.fetch_sub(1, std::memory_order_relaxed) - 1; }

protected:
    /// The owner's own reference is the first.
    CInternedObject() noexcept : CComObject<Interface, Bases...>(1) {}
    ~CInternedObject() = default;
};

} // namespace platform
