#include <Common/FractionalIndex.h>

#include <utility>

namespace common {

namespace {

constexpr std::uint8_t middleDigit = 0x80;

} // namespace

// Constant-initialised, so that code which runs before main can order by it. Not marked constinit: the debug runtime
// of Visual C++ allocates for every vector, which only initialisation at load can do.
const CFractionalIndex CFractionalIndex::s_empty{EmptyTag{}};
const CFractionalIndex CFractionalIndex::s_middle;

CFractionalIndex::CFractionalIndex() : m_digitCount(1), m_digits{middleDigit} {}

CFractionalIndex::CFractionalIndex(std::vector<std::uint8_t> digits) noexcept
    : m_digitCount(digits.size()), m_digits(std::move(digits)) {}

CFractionalIndex::CFractionalIndex(CFractionalIndex&& other) noexcept
    : m_digitCount(other.m_digitCount), m_digits(std::exchange(other.m_digits, {})) {}

CFractionalIndex& CFractionalIndex::operator=(CFractionalIndex&& other) noexcept {
    m_digitCount = other.m_digitCount;
    // In two steps, so that assigning to itself keeps the digits.
    std::vector<std::uint8_t> digits = std::exchange(other.m_digits, {});
    m_digits = std::move(digits);
    return *this;
}

CFractionalIndex::~CFractionalIndex() = default;

const CFractionalIndex& CFractionalIndex::empty() noexcept {
    return s_empty;
}

const CFractionalIndex& CFractionalIndex::middle() noexcept {
    return s_middle;
}

} // namespace common
