#pragma once

#include <atomic>
#include <chrono>
#include <thread>

/// Notices whether two threads are inside `pass` at once. The first ones wait there a while for company, so that a lock
/// that is missing around it shows at once and not by luck; behind a lock they wait in vain and go on.
class OverlapDetector {
public:
    void pass() {
        if (m_inside.fetch_add(1) > 0) {
            m_overlapped = true;
        }
        if (m_waits.fetch_add(1) < 3) {
            const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(50);
            while (!m_overlapped && std::chrono::steady_clock::now() < until) {
                std::this_thread::yield();
            }
        }
        m_inside.fetch_sub(1);
    }

    [[nodiscard]] bool overlapped() const { return m_overlapped; }

private:
    std::atomic<int> m_inside = 0;
    std::atomic<int> m_waits = 0;
    std::atomic<bool> m_overlapped = false;
};
