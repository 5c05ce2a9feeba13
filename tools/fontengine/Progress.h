#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tool {

// One line on the terminal that says how far long work has come, and nothing at
// all where standard error is no terminal or the work is short.
class Progress {
public:
    explicit Progress(std::string what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // `total` of 0: unknown.
    void update(std::size_t done, std::size_t total);

private:
    using Clock = std::chrono::steady_clock;

    std::string m_what;
    bool m_enabled = false;
    bool m_shown = false;
    Clock::time_point m_next;
};

} // namespace tool
