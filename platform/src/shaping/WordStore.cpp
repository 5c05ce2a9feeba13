#include "shaping/WordStore.h"

#include "fonts/FontFace.h"

namespace platform {

const ShapedWord& WordStore::Words::find(std::u16string_view word, WordEdges edges) {
    if (const auto known = m_words.find(KeyView{word, edges}); known != m_words.end()) {
        return known->second;
    }
    const auto [added, isNew] = m_words.emplace(Key{std::u16string(word), edges}, m_plan.shape(word, edges));
    // The entry with what the containers keep beside it.
    m_bytes += sizeof(*added) + 4 * sizeof(void*) + word.size() * sizeof(char16_t) +
               added->second.glyphs.capacity() * sizeof(ShapedGlyph);
    return added->second;
}

WordStore::Key WordStore::keyOf(const ShapeRequest& request) {
    return {request.face->id(), request.script, request.language,
            (request.isRightToLeft ? 1U : 0U) | (request.isKerned ? 2U : 0U)};
}

WordStore::Words& WordStore::wordsOf(const ShapeRequest& request) {
    const Key key = keyOf(request);
    if (m_bytes > m_capacity) {
        m_words.clear();
        m_last = nullptr;
        m_bytes = 0;
    }
    if (m_last == nullptr || key != m_lastKey) {
        auto found = m_words.find(key);
        if (found == m_words.end()) {
            found = m_words.try_emplace(key, request, m_bytes).first;
            m_bytes += sizeof(*found);
        }
        m_lastKey = key;
        m_last = &found->second;
    }
    return *m_last;
}

WordStore& WordStore::threads() {
    thread_local WordStore store;
    return store;
}

} // namespace platform
