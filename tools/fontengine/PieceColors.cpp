#include "PieceColors.h"

#include <algorithm>

#include <mtext/MText.h>

namespace tool {

namespace {

constexpr int versionR2004 = 1018;
constexpr int lastNumber = 255;

int distance(std::uint32_t a, std::uint32_t b) {
    int sum = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int difference = static_cast<int>((a >> shift) & 0xFFU) - static_cast<int>((b >> shift) & 0xFFU);
        sum += difference * difference;
    }
    return sum;
}

} // namespace

PieceColors::PieceColors(const dxf::Drawing& drawing) : m_hasTrueColor(drawing.header.versionNumber() >= versionR2004) {
    for (int number = 1; number <= lastNumber; ++number) {
        m_numbers.emplace(mtext::argbFromColorIndex(number, foreground, ofText), number);
    }
}

dxf::PieceColor PieceColors::of(std::uint32_t argb) const {
    dxf::PieceColor color;
    if (argb == ofText) {
        return color;
    }
    if (const auto known = m_numbers.find(argb); known != m_numbers.end()) {
        color.color = known->second;
    } else if (m_hasTrueColor) {
        color.trueColor = argb & 0xFFFFFFU;
    } else {
        color.color = std::min_element(m_numbers.begin(), m_numbers.end(), [argb](const auto& a, const auto& b) {
                          return distance(a.first, argb) < distance(b.first, argb);
                      })->second;
    }
    return color;
}

} // namespace tool
