#include <dxf/PairReader.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace dxf {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

/// Without a sign that from_chars does not take.
std::string_view withoutPlus(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    return text;
}

} // namespace

std::string_view Pair::trimmedValue() const noexcept {
    std::string_view text = value;
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool Pair::is(int aCode, std::string_view aValue) const noexcept {
    return code == aCode && trimmedValue() == aValue;
}

double Pair::real() const noexcept {
    const std::string_view text = withoutPlus(trimmedValue());
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && std::isfinite(number) ? number : 0.0;
}

std::int64_t Pair::integer() const noexcept {
    const std::string_view text = withoutPlus(trimmedValue());
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) {
        const bool negative = text.front() == '-';
        return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return error == std::errc{} ? number : 0;
}

std::uint64_t Pair::handle() const noexcept {
    const std::string_view text = trimmedValue();
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    return error == std::errc{} && end == text.data() + text.size() ? number : 0;
}

} // namespace dxf
