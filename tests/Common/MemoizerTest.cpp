#include "OverlapDetector.h"
#include "Rendezvous.h"

#include <Common/Memoizer.h>
#include <Common/Violations.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using Memoizer = common::Memoizer<const int&, std::size_t, std::string>;

/// A memoizer of numbers' texts that counts its computations; the key is the number.
struct Counted {
    explicit Counted(std::size_t capacity)
        : memoizer(
              capacity,
              [this](const int& number) {
                  ++computed;
                  return std::to_string(number);
              },
              [](const int& number) { return static_cast<std::size_t>(number); }) {}

    int computed = 0;
    Memoizer memoizer;
};

TEST(Memoizer, ComputesOnceAndRemembers) {
    Counted counted(10);
    EXPECT_EQ(counted.memoizer.get(7), "7");
    EXPECT_EQ(counted.memoizer.get(7), "7");
    EXPECT_EQ(counted.computed, 1);
}

TEST(Memoizer, WithCapacity10000After10001KeysTheFirstIsGoneAndIsComputedAgain) {
    Counted counted(10000);
    for (int key = 1; key <= 10001; ++key) {
        (void)counted.memoizer.get(key);
    }
    EXPECT_EQ(counted.computed, 10001);
    (void)counted.memoizer.get(10001);
    (void)counted.memoizer.get(2);
    EXPECT_EQ(counted.computed, 10001);
    EXPECT_EQ(counted.memoizer.get(1), "1");
    EXPECT_EQ(counted.computed, 10002);
}

TEST(Memoizer, AskingForTheFirstKeyAgainBeforeThe10001stEvictsTheSecondInstead) {
    Counted counted(10000);
    for (int key = 1; key <= 10000; ++key) {
        (void)counted.memoizer.get(key);
    }
    (void)counted.memoizer.get(1);
    (void)counted.memoizer.get(10001);
    EXPECT_EQ(counted.computed, 10001);
    (void)counted.memoizer.get(1);
    (void)counted.memoizer.get(3);
    EXPECT_EQ(counted.computed, 10001);
    EXPECT_EQ(counted.memoizer.get(2), "2");
    EXPECT_EQ(counted.computed, 10002);
}

TEST(Memoizer, AnEntryUsedAtEveryCallIsNeverEvicted) {
    Counted counted(3);
    (void)counted.memoizer.get(0);
    for (int key = 1; key <= 100; ++key) {
        (void)counted.memoizer.get(key);
        (void)counted.memoizer.get(0);
    }
    EXPECT_EQ(counted.computed, 101);
}

TEST(Memoizer, ArgumentsWithTheSameKeyShareTheFirstOnesValue) {
    int computed = 0;
    Memoizer memoizer(
        10,
        [&](const int& number) {
            ++computed;
            return std::to_string(number);
        },
        [](const int&) { return std::size_t{5}; });
    EXPECT_EQ(memoizer.get(1), "1");
    EXPECT_EQ(memoizer.get(2), "1");
    EXPECT_EQ(computed, 1);
}

TEST(Memoizer, AComputeFunctionThatThrowsLeavesTheEntriesAndIsAskedAgain) {
    int computed = 0;
    bool fails = false;
    Memoizer memoizer(
        2,
        [&](const int& number) {
            ++computed;
            if (fails) {
                throw std::runtime_error("no value");
            }
            return std::to_string(number);
        },
        [](const int& number) { return static_cast<std::size_t>(number); });
    (void)memoizer.get(1);
    (void)memoizer.get(2);
    fails = true;
    EXPECT_THROW((void)memoizer.get(3), std::runtime_error);
    fails = false;
    EXPECT_EQ(computed, 3);
    (void)memoizer.get(1);
    (void)memoizer.get(2);
    EXPECT_EQ(computed, 3);
    EXPECT_EQ(memoizer.get(3), "3");
    EXPECT_EQ(computed, 4);
}

TEST(Memoizer, AKeyFunctionThatThrowsPassesThrough) {
    Memoizer memoizer(
        2, [](const int& number) { return std::to_string(number); },
        [](const int&) -> std::size_t { throw std::runtime_error("no key"); });
    EXPECT_THROW((void)memoizer.get(1), std::runtime_error);
    EXPECT_THROW((void)memoizer.get(1), std::runtime_error);
}

TEST(Memoizer, AnEmptyFunctionRaisesBadFunctionCall) {
    Memoizer noKey(
        2, [](const int& number) { return std::to_string(number); }, nullptr);
    EXPECT_THROW((void)noKey.get(1), std::bad_function_call);
    Memoizer noValue(2, nullptr, [](const int& number) { return static_cast<std::size_t>(number); });
    EXPECT_THROW((void)noValue.get(1), std::bad_function_call);
}

TEST(Memoizer, ACapacityOfOneKeepsTheLast) {
    Counted counted(1);
    (void)counted.memoizer.get(1);
    (void)counted.memoizer.get(2);
    (void)counted.memoizer.get(2);
    EXPECT_EQ(counted.computed, 2);
    EXPECT_EQ(counted.memoizer.get(1), "1");
    EXPECT_EQ(counted.computed, 3);
}

TEST(Memoizer, ACapacityOfZeroKeepsTheLastToo) {
    Counted counted(0);
    (void)counted.memoizer.get(1);
    EXPECT_EQ(counted.memoizer.get(1), "1");
    EXPECT_EQ(counted.computed, 1);
    (void)counted.memoizer.get(2);
    (void)counted.memoizer.get(1);
    EXPECT_EQ(counted.computed, 3);
}

TEST(Memoizer, ServesSeveralThreadsAndComputesEachKeyOnce) {
    std::atomic<int> computed = 0;
    Memoizer memoizer(
        1000,
        [&](const int& number) {
            ++computed;
            return std::to_string(number);
        },
        [](const int& number) { return static_cast<std::size_t>(number); });
    std::vector<std::thread> threads;
    std::atomic<int> wrong = 0;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int key = 0; key < 500; ++key) {
                // Nothing is evicted here, so that the reference holds.
                wrong += memoizer.get(key) == std::to_string(key) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(computed, 500);
    EXPECT_EQ(wrong, 0);
}

TEST(Memoizer, ComputesOneValueAtATimeWhateverTheThreads) {
    OverlapDetector computing;
    Memoizer memoizer(
        100,
        [&](const int& number) {
            computing.pass();
            return std::to_string(number);
        },
        [](const int& number) { return static_cast<std::size_t>(number); });
    Rendezvous start(4);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            start.meet();
            for (int key = 0; key < 10; ++key) {
                (void)memoizer.get(10 * thread + key);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_FALSE(computing.overlapped());
}

TEST(Memoizer, KnownValuesAreHandedOutWhileOthersAreEvicted) {
    // References hold until the next eviction only, so nothing is read through them.
    Counted counted(4);
    Rendezvous start(4);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            start.meet();
            for (int i = 0; i < 2000; ++i) {
                (void)counted.memoizer.get((i * (thread + 1)) % 7);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(counted.memoizer.get(3), "3");
}

bool allKeysEqual = false;

/// A key that equals every other one as soon as `allKeysEqual` is set: so it can turn up during its own computing.
struct ShiftingKey {
    int value;
    friend bool operator==(const ShiftingKey& left, const ShiftingKey& right) {
        return allKeysEqual || left.value == right.value;
    }
};

} // namespace

template <>
struct std::hash<ShiftingKey> {
    std::size_t operator()(const ShiftingKey&) const noexcept { return 0; }
};

namespace {

TEST(Memoizer, AKeyThatTurnsUpWhileItsValueIsComputedViolatesACheck) {
    common::Memoizer<const int&, ShiftingKey, int> memoizer(
        10,
        [](const int& number) {
            allKeysEqual = number == 2;
            return number;
        },
        [](const int& number) { return ShiftingKey{number}; });
    EXPECT_EQ(memoizer.get(1), 1);
    try {
        (void)memoizer.get(2);
        FAIL();
    } catch (const common::ECheckViolation& violation) {
        const std::string_view message(violation.message.data(), violation.message.size());
        EXPECT_TRUE(message.starts_with("Assertion violation: Common/Common/Memoizer(")) << message;
    }
    allKeysEqual = false;
}

} // namespace
