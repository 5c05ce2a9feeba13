#include <rpc.h>

#include <array>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using Bytes = std::array<unsigned char, sizeof(UUID)>;

Bytes bytesOf(const UUID& uuid) {
    Bytes bytes{};
    std::memcpy(bytes.data(), &uuid, sizeof uuid);
    return bytes;
}

Bytes create() {
    UUID uuid{};
    EXPECT_EQ(UuidCreate(&uuid), RPC_S_OK);
    EXPECT_EQ(uuid.Data3 >> 12, 4);          // version: random
    EXPECT_EQ(uuid.Data4[0] & 0xC0U, 0x80U); // variant
    return bytesOf(uuid);
}

TEST(UuidCreate, neverRepeatsOverThreads) {
    std::vector<std::vector<Bytes>> made(4);
    std::vector<std::thread> threads;
    for (std::vector<Bytes>& mine : made) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < 2000; ++i) {
                mine.push_back(create());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<Bytes> all;
    for (const std::vector<Bytes>& mine : made) {
        all.insert(mine.begin(), mine.end());
    }
    EXPECT_EQ(all.size(), 8000U);
}

TEST(UuidCreate, usesEveryFreeBit) {
    Bytes ones{};
    Bytes zeros{};
    for (int i = 0; i < 500; ++i) {
        const Bytes bytes = create();
        for (std::size_t b = 0; b < bytes.size(); ++b) {
            ones[b] = static_cast<unsigned char>(ones[b] | bytes[b]);
            zeros[b] = static_cast<unsigned char>(zeros[b] | ~bytes[b]);
        }
    }
    int fixed = 0;
    for (std::size_t b = 0; b < ones.size(); ++b) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            fixed += ((ones[b] & zeros[b]) >> bit & 1U) == 0U ? 1 : 0;
        }
    }
    EXPECT_EQ(fixed, 6); // four bits of version, two of variant
}

TEST(UuidCreate, drawsAnewInAForkedChild) {
    create();
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const Bytes bytes = create();
        const bool written = write(ends[1], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        _exit(written ? 0 : 1);
    }
    Bytes fromChild{};
    ASSERT_EQ(read(ends[0], fromChild.data(), fromChild.size()), static_cast<ssize_t>(fromChild.size()));
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    close(ends[0]);
    close(ends[1]);
    EXPECT_NE(create(), fromChild);
}

} // namespace
