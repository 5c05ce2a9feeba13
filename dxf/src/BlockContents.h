#pragma once

#include <dxf/Drawing.h>

#include <string>
#include <unordered_map>

namespace dxf {

/// False for the definition of an attribute, which in a block is shown by the attributes of its references.
inline bool isShownInBlocks(const TextEntity& text) {
    return text.kind != TextKind::AttDef || text.constant;
}

/// Which blocks show texts, through references too. Drawings hold hundreds of thousands of references to symbols
/// without a letter; keeping them would make memory grow with the file.
class BlockContents {
public:
    /// To be called at the end of the blocks: drops their references to blocks that show no text.
    void collect(Drawing& drawing);

    /// To be called after an entity was read: drops the last reference if its block is known and shows no text.
    void dropUselessInsert(Drawing& drawing) const;

private:
    [[nodiscard]] bool isUseless(const Insert& insert) const;

    /// By name, ASCII letters folded: names are not decoded yet. A name that is not found here is kept for later.
    std::unordered_map<std::wstring, bool> m_showsText;
};

} // namespace dxf
