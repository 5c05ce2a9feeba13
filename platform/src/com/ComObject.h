#pragma once

// Bases for the platform's objects: identity, reference counts and the border that
// exceptions do not cross.

#include <unknwn.h>

#include <atomic>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace platform {

/// A failure that has a status of its own, for example what a host's code answered.
class StatusError : public std::runtime_error {
public:
    StatusError(HRESULT status, const std::string& what) : std::runtime_error(what), m_status(status) {}

    HRESULT status() const noexcept { return m_status; }

private:
    HRESULT m_status;
};

/// Runs `body`, which returns an HRESULT, and turns what it throws into one: no
/// exception may leave an operation of an interface.
template <typename Body>
HRESULT guarded(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const StatusError& error) {
        return error.status();
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

/// Keeps interned objects that belong together and are not the process's: all of them end with the last reference to
/// any. It is born with one reference, its maker's.
class CommonLife {
public:
    CommonLife(const CommonLife&) = delete;
    CommonLife& operator=(const CommonLife&) = delete;

    void addRef() noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

protected:
    CommonLife() = default;
    virtual ~CommonLife() = default;

private:
    std::atomic<std::uint64_t> m_count = 1;
};

/// An object that exists once and as long as its owner inside the platform does. It
/// only counts: where the owner is the process, a reference that is never given back
/// costs nothing.
template <typename Interface, typename... Bases>
class CInternedObject : public CComObject<Interface, Bases...> {
public:
    ULONG STDMETHODCALLTYPE AddRef() final {
        if (m_life != nullptr) {
            m_life->addRef();
        }
        return this->m_count.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = this->m_count.fetch_sub(1, std::memory_order_relaxed) - 1;
        if (m_life != nullptr) {
            m_life->release(); // This object may be gone now.
        }
        return left;
    }

    /// What the object lives with; null if that is the process.
    CommonLife* life() const noexcept { return m_life; }

protected:
    /// The owner's own reference is the first.
    explicit CInternedObject(CommonLife* life = nullptr) noexcept : CComObject<Interface, Bases...>(1), m_life(life) {}
    ~CInternedObject() = default;

private:
    CommonLife* const m_life;
};

} // namespace platform
