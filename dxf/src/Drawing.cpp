#include <dxf/CodePage.h>
#include <dxf/Drawing.h>

#include <string_view>

namespace dxf {
namespace {

template <typename Record>
const Record* find(const std::vector<Record>& records, const std::unordered_map<std::wstring, std::size_t>& index,
                   const std::wstring& name) {
    const auto found = index.find(foldName(name));
    return found == index.end() ? nullptr : &records[found->second];
}

} // namespace

int Header::versionNumber() const noexcept {
    constexpr int oldest = 1009;
    constexpr std::wstring_view prefix = L"AC";
    constexpr std::size_t digits = 4;
    std::wstring_view name = version; // A part of the string itself would be a copy, which memory may not hold.
    if (!name.starts_with(prefix) || name.size() != prefix.size() + digits) {
        return oldest;
    }
    name.remove_prefix(prefix.size());
    int number = 0;
    for (const wchar_t c : name) {
        if (c < L'0' || c > L'9') {
            return oldest;
        }
        number = number * 10 + (c - L'0');
    }
    return number;
}

bool Drawing::truncated() const noexcept {
    return !problems.empty();
}

const TextStyle* Drawing::findStyle(const std::wstring& name) const {
    return find(styles, styleIndex, name);
}

const TextStyle& Drawing::styleOf(const TextEntity& text) const {
    const TextStyle* style = findStyle(text.style);
    return style != nullptr ? *style : missingStyle;
}

const Layer* Drawing::findLayer(const std::wstring& name) const {
    return find(layers, layerIndex, name);
}

const Block* Drawing::findBlock(const std::wstring& name) const {
    return find(blocks, blockIndex, name);
}

} // namespace dxf
