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

} // namespace platform
