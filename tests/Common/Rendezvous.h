#pragma once

#include <atomic>
#include <thread>

/// Lets threads go on together, time after time. (The standard barrier and latch of GCC 12 lose wake-ups on Windows.)
class Rendezvous {
public:
    explicit Rendezvous(int threads) : m_threads(threads) {}

    /// Returns once every thread has called as often as this one.
    void meet() {
        const int arrived = m_arrived.fetch_add(1) + 1;
        const int expected = (arrived + m_threads - 1) / m_threads * m_threads;
        while (m_arrived.load() < expected) {
            std::this_thread::yield();
        }
    }

private:
    const int m_threads;
    std::atomic<int> m_arrived = 0;
};
