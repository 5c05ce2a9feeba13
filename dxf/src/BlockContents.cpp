#include "BlockContents.h"

#include <algorithm>
#include <vector>

namespace dxf {
namespace {

std::wstring asciiFolded(std::wstring name) {
    for (wchar_t& c : name) {
        if (c >= L'a' && c <= L'z') {
            c = static_cast<wchar_t>(c - L'a' + L'A');
        }
    }
    return name;
}

} // namespace

void BlockContents::collect(Drawing& drawing) {
    for (const Block& block : drawing.blocks) {
        m_showsText.try_emplace(asciiFolded(block.name), false);
    }
    std::vector<std::wstring> pending;
    const auto mark = [&](const std::wstring& name) {
        bool& shows = m_showsText[name];
        if (!shows) {
            shows = true;
            pending.push_back(name);
        }
    };
    for (const TextEntity& text : drawing.texts) {
        if (!text.block.empty() && isShownInBlocks(text)) {
            mark(asciiFolded(text.block));
        }
    }
    // From the blocks with texts outwards to those that refer to them.
    std::unordered_multimap<std::wstring, std::wstring> users;
    for (const Insert& insert : drawing.inserts) {
        users.emplace(asciiFolded(insert.blockName), asciiFolded(insert.block));
    }
    while (!pending.empty()) {
        const std::wstring name = std::move(pending.back());
        pending.pop_back();
        const auto [first, last] = users.equal_range(name);
        std::for_each(first, last, [&](const auto& user) { mark(user.second); });
    }
    std::erase_if(drawing.inserts, [this](const Insert& insert) { return isUseless(insert); });
}

void BlockContents::dropUselessInsert(Drawing& drawing) const {
    if (!drawing.inserts.empty() && isUseless(drawing.inserts.back())) {
        drawing.inserts.pop_back();
    }
}

bool BlockContents::isUseless(const Insert& insert) const {
    const auto found = m_showsText.find(asciiFolded(insert.blockName));
    return found != m_showsText.end() && !found->second;
}

} // namespace dxf
