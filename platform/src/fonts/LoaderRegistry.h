#pragma once

#include "com/Reference.h"

#include <dwrite_file.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace platform {

/// The loaders that a factory knows. Any number of threads may ask.
template <typename Loader>
class LoaderRegistry {
public:
    bool knows(const Loader* loader) {
        const std::lock_guard lock(m_guard);
        return find(loader) != m_loaders.end();
    }

    HRESULT add(Loader* loader) {
        if (loader == nullptr) {
            return E_INVALIDARG;
        }
        const std::lock_guard lock(m_guard);
        if (find(loader) != m_loaders.end()) {
            return DWRITE_E_ALREADYREGISTERED;
        }
        m_loaders.emplace_back(loader);
        return S_OK;
    }

    HRESULT remove(const Loader* loader) {
        Reference<Loader> removed; // Its end is the host's code and no business of the lock.
        const std::lock_guard lock(m_guard);
        const auto found = find(loader);
        if (found == m_loaders.end()) {
            return E_INVALIDARG;
        }
        removed = *found;
        m_loaders.erase(found);
        return S_OK;
    }

private:
    auto find(const Loader* loader) {
        return std::find_if(m_loaders.begin(), m_loaders.end(),
                            [loader](const Reference<Loader>& known) { return known.get() == loader; });
    }

    std::mutex m_guard;
    std::vector<Reference<Loader>> m_loaders;
};

} // namespace platform
