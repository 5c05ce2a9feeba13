#include "Progress.h"

#include <cstdio>
#include <utility>

#include "Terminal.h"

namespace tool {

namespace {
constexpr std::chrono::milliseconds patience{500};
constexpr std::chrono::milliseconds interval{100};
} // namespace

Progress::Progress(std::string what)
    : m_what(std::move(what)), m_enabled(standardErrorIsTerminal()), m_next(Clock::now() + patience) {}

Progress::~Progress() {
    if (m_shown) {
        std::fprintf(stderr, "\r\033[K");
    }
}

void Progress::update(std::size_t done, std::size_t total) {
    if (!m_enabled || Clock::now() < m_next) {
        return;
    }
    m_next = Clock::now() + interval;
    m_shown = true;
    if (total > 0) {
        std::fprintf(stderr, "\r\033[K%s: %zu of %zu (%zu %%)", m_what.c_str(), done, total, done * 100 / total);
    } else {
        std::fprintf(stderr, "\r\033[K%s: %zu", m_what.c_str(), done);
    }
    std::fflush(stderr);
}

} // namespace tool
