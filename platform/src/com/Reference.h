#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <unknwn.h>

// Found by argument-dependent lookup: the interfaces live in the global namespace.
inline void intrusive_ptr_add_ref(IUnknown* object) {
    object->AddRef();
}
inline void intrusive_ptr_release(IUnknown* object) {
    object->Release();
}

namespace platform {

/// An owning reference to an object of an interface.
template <class Interface>
using Reference = boost::intrusive_ptr<Interface>;

/// Hands out what `held` refers to, with a reference of its own, or null.
template <class Interface>
void handOutOrNull(const Reference<Interface>& held, Interface** out) {
    *out = held.get();
    if (*out != nullptr) {
        (*out)->AddRef();
    }
}

} // namespace platform
