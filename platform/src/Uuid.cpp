#include <rpc.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <random>

#include <pthread.h>
#include <sys/random.h>

namespace {

/// Counts forks, so that a child never hands out what its parent had drawn before.
std::atomic<unsigned> g_forks = 0;

void countFork() {
    g_forks.fetch_add(1, std::memory_order_relaxed);
}

/// Fills `bytes` from the kernel's generator; where the kernel refuses, from the library's.
void drawRandom(unsigned char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t got = getrandom(bytes, count, 0);
        if (got > 0) {
            bytes += got;
            count -= static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            std::random_device device;
            for (; count > 0; --count) {
                *bytes++ = static_cast<unsigned char>(device());
            }
        }
    }
}

/// Random bytes drawn ahead: identifiers are made by the thousand, and asking the kernel costs more than the rest.
class RandomStore {
public:
    RandomStore() {
        static const int registered = pthread_atfork(nullptr, nullptr, countFork);
        static_cast<void>(registered);
    }

    void take(unsigned char* bytes, std::size_t count) {
        const unsigned forks = g_forks.load(std::memory_order_relaxed);
        if (m_used + count > m_bytes.size() || forks != m_forks) {
            drawRandom(m_bytes.data(), m_bytes.size());
            m_used = 0;
            m_forks = forks;
        }
        std::memcpy(bytes, m_bytes.data() + m_used, count);
        m_used += count;
    }

private:
    std::array<unsigned char, 64 * sizeof(UUID)> m_bytes{};
    std::size_t m_used = m_bytes.size();
    unsigned m_forks = 0;
};

} // namespace

RPC_STATUS UuidCreate(UUID* uuid) {
    thread_local RandomStore store;
    unsigned char bytes[sizeof(UUID)];
    store.take(bytes, sizeof bytes);
    std::memcpy(uuid, bytes, sizeof bytes);
    uuid->Data3 = static_cast<UINT16>((uuid->Data3 & 0x0FFFU) | 0x4000U);
    uuid->Data4[0] = static_cast<UINT8>((uuid->Data4[0] & 0x3FU) | 0x80U);
    return RPC_S_OK;
}
