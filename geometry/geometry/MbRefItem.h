#pragma once

#include <Common/FontEngineExport.h>

#include <atomic>
#include <cstdint>

/// An object that counts its references; made with none, it deletes itself when the last one is released. Any thread
/// may add and release references. Held by boost::intrusive_ptr.
class FONTENGINE_API MbRefItem {
public:
    MbRefItem() noexcept = default;
    MbRefItem(const MbRefItem&) = delete;
    MbRefItem& operator=(const MbRefItem&) = delete;

    /// Returns the new number of references.
    std::uint32_t AddRef() const noexcept;
    /// Returns the new number of references; at 0 the object is gone.
    std::uint32_t Release() const noexcept;

protected:
    virtual ~MbRefItem();

private:
    mutable std::atomic<std::uint32_t> m_references{0};
};

inline void intrusive_ptr_add_ref(const MbRefItem* item) noexcept {
    item->AddRef();
}
inline void intrusive_ptr_release(const MbRefItem* item) noexcept {
    item->Release();
}
