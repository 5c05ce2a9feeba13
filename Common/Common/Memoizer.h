#pragma once

#include "FontEngineExport.h"

#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace common {

namespace detail {

/// The failure of every Memoizer, raised in one place so that it names its source and not a consumer's.
FONTENGINE_API void requireStillAbsent(bool absent);

} // namespace detail

/// Remembers the results of an expensive pure function for the keys used last.
///
/// Arguments are never kept, only the key made from each: equal keys must mean equal results. One mutex is held for the
/// whole of get, computing included, so any number of threads may share a memoizer, and the function must not come
/// back to it.
template <class Arg, class Key, class Value>
class Memoizer {
public:
    /// Keeps at most `capacity` results. (A capacity of 0 keeps one: the reference that get returns needs an entry.)
    Memoizer(std::size_t capacity, std::function<Value(Arg)> compute, std::function<Key(Arg)> keyOf)
        : m_capacity(capacity), m_compute(std::move(compute)), m_keyOf(std::move(keyOf)) {}

    /// The remembered or freshly computed value for `argument`. The reference holds until another call evicts the
    /// entry: copy it at once. Whatever the two functions throw passes through and leaves the entries as they were; an
    /// empty function throws std::bad_function_call. Throws ECheckViolation if the key turns up while its value is
    /// being computed.
    [[nodiscard]] const Value& get(Arg argument) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const Key key = m_keyOf(argument);
        if (const auto known = m_index.find(key); known != m_index.end()) {
            m_entries.splice(m_entries.begin(), m_entries, known->second);
            return known->second->second;
        }
        Value value = m_compute(argument);
        detail::requireStillAbsent(m_index.find(key) == m_index.end());
        return insert(key, std::move(value));
    }

private:
    /// Front: used last. Back: used longest ago, evicted first.
    using Entries = std::list<std::pair<Key, Value>>;

    const Value& insert(const Key& key, Value&& value) {
        Entries fresh;
        fresh.emplace_front(key, std::move(value));
        if (m_entries.size() >= m_capacity && !m_entries.empty()) {
            m_index.erase(m_entries.back().first);
            m_entries.pop_back();
        }
        m_index.emplace(key, fresh.begin());
        m_entries.splice(m_entries.begin(), fresh);
        return m_entries.front().second;
    }

    std::mutex m_mutex;
    std::size_t m_capacity;
    Entries m_entries;
    std::unordered_map<Key, typename Entries::iterator> m_index;
    std::function<Value(Arg)> m_compute;
    std::function<Key(Arg)> m_keyOf;
};

} // namespace common
