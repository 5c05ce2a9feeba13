#pragma once

#include "FontEngineExport.h"
#include "FractionalIndex.h"
#include "UUID.h"

#include <boost/container/flat_map.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

namespace common {

namespace detail {

/// The failures of every OrderedContainer, raised in one place so that they name its source and not a consumer's.
FONTENGINE_API void requireSameSize(std::size_t items, std::size_t positions);
FONTENGINE_API void requirePosition(bool found);
[[noreturn]] FONTENGINE_API void throwInvalidSubscript();

} // namespace detail

/// Items that each have a lasting identity (UUID) and a place among the others (CFractionalIndex).
///
/// Reading in order goes through a list of the keys sorted by place, made at the first ordered read and kept. Any
/// number of threads may read one container at once; changing one (assigning to it, moving from it) needs it alone.
template <class T>
class OrderedContainer {
public:
    using Items = boost::container::flat_map<UUID, T>;
    using Positions = boost::container::flat_map<UUID, CFractionalIndex>;

    OrderedContainer() = default;

    /// Takes both maps. Throws EPreconditionViolation when they differ in size or an item has no position.
    OrderedContainer(Items items, Positions positions) : m_items(std::move(items)), m_positions(std::move(positions)) {
        detail::requireSameSize(m_items.size(), m_positions.size());
        for (const auto& item : m_items) {
            detail::requirePosition(m_positions.find(item.first) != m_positions.end());
        }
    }

    /// Copies the order as well, if it is known already. `other` may be read by other threads meanwhile.
    OrderedContainer(const OrderedContainer& other) : m_items(other.m_items), m_positions(other.m_positions) {
        const std::lock_guard<std::mutex> lock(other.m_orderMutex);
        m_orderDirty = other.m_orderDirty;
        m_orderedKeys = other.m_orderedKeys;
    }

    /// Leaves `other` without items.
    OrderedContainer(OrderedContainer&& other) noexcept { swap(other); }

    OrderedContainer& operator=(const OrderedContainer& other) {
        OrderedContainer copy(other);
        swap(copy);
        return *this;
    }

    /// Leaves `other` without items.
    OrderedContainer& operator=(OrderedContainer&& other) noexcept {
        OrderedContainer taken(std::move(other));
        swap(taken);
        return *this;
    }

    ~OrderedContainer() = default;

    /// The number of items.
    [[nodiscard]] std::uint64_t size() const noexcept { return m_items.size(); }

    /// The keys in ascending order of position; keys of equal position stand in any order. The list belongs to the
    /// container.
    [[nodiscard]] const std::vector<UUID>& orderedKeys() const {
        const std::lock_guard<std::mutex> lock(m_orderMutex);
        if (m_orderDirty) {
            rebuildOrder();
        }
        return m_orderedKeys;
    }

    /// The item at a place in order; it belongs to the container. Throws std::out_of_range "invalid vector subscript"
    /// for a place that is negative or not less than size().
    [[nodiscard]] const T& at(std::int32_t index) const {
        const std::vector<UUID>& keys = orderedKeys();
        const auto place = static_cast<std::size_t>(index);
        if (place >= keys.size()) [[unlikely]] {
            detail::throwInvalidSubscript();
        }
        return m_items.at(keys[place]);
    }

private:
    void rebuildOrder() const {
        // Sorted as entries rather than as keys: the comparison then needs no search.
        std::vector<const typename Positions::value_type*> entries;
        entries.reserve(m_positions.size());
        for (const auto& entry : m_positions) {
            entries.push_back(&entry);
        }
        std::sort(entries.begin(), entries.end(),
                  [](const auto* left, const auto* right) { return left->second < right->second; });

        m_orderedKeys.clear();
        m_orderedKeys.reserve(entries.size());
        for (const auto* entry : entries) {
            m_orderedKeys.push_back(entry->first);
        }
        m_orderDirty = false;
    }

    void swap(OrderedContainer& other) noexcept {
        m_items.swap(other.m_items);
        m_positions.swap(other.m_positions);
        std::swap(m_orderDirty, other.m_orderDirty);
        m_orderedKeys.swap(other.m_orderedKeys);
    }

    Items m_items;
    Positions m_positions;
    mutable bool m_orderDirty = true;
    mutable std::vector<UUID> m_orderedKeys;
    mutable std::mutex m_orderMutex;
};

} // namespace common
