#include <geometry/MbRefItem.h>

MbRefItem::~MbRefItem() = default;

std::uint32_t MbRefItem::AddRef() const noexcept {
    return m_references.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::uint32_t MbRefItem::Release() const noexcept {
    // Whatever other threads did to the object before they released it has happened before it is deleted.
    const std::uint32_t left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        delete this;
    }
    return left;
}
