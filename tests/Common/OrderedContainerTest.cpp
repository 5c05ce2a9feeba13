#include "Rendezvous.h"

#include <Common/OrderedContainer.h>
#include <Common/Violations.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {

using common::CFractionalIndex;
using common::UUID;
using Container = common::OrderedContainer<std::string>;

UUID key(std::uint8_t last) {
    UUID uuid;
    uuid.data4[7] = last;
    return uuid;
}

CFractionalIndex at(std::uint8_t digit) {
    return CFractionalIndex({digit});
}

Container container(std::vector<std::pair<UUID, std::string>> items,
                    std::vector<std::pair<UUID, CFractionalIndex>> positions) {
    return Container(Container::Items(items.begin(), items.end()),
                     Container::Positions(positions.begin(), positions.end()));
}

std::string_view messageOf(const common::EAssertionViolation& violation) {
    return {violation.message.data(), violation.message.size()};
}

template <class Call>
std::string outOfRangeTextOf(Call call) {
    try {
        call();
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(OrderedContainer, OneItemWithAnEmptyPositionIsReturnedForPlaceZero) {
    const Container one = container({{UUID(), "only"}}, {{UUID(), CFractionalIndex::empty()}});
    EXPECT_EQ(one.at(0), "only");
    EXPECT_EQ(one.size(), 1U);
}

TEST(OrderedContainer, PlacesOutsideRaiseInvalidVectorSubscript) {
    const Container two = container({{key(1), "a"}, {key(2), "b"}}, {{key(1), at(1)}, {key(2), at(2)}});
    EXPECT_EQ(outOfRangeTextOf([&] { (void)two.at(2); }), "invalid vector subscript");
    EXPECT_EQ(outOfRangeTextOf([&] { (void)two.at(-1); }), "invalid vector subscript");
    EXPECT_EQ(outOfRangeTextOf([&] { (void)two.at(-2147483647 - 1); }), "invalid vector subscript");
    EXPECT_EQ(outOfRangeTextOf([] { (void)Container().at(0); }), "invalid vector subscript");
}

TEST(OrderedContainer, Positions0x80And0x40AreReadInTheOrder0x40Then0x80WhateverTheirKeys) {
    for (const bool swapped : {false, true}) {
        const UUID first = key(swapped ? 2 : 1);
        const UUID second = key(swapped ? 1 : 2);
        const Container two = container({{first, "at 80"}, {second, "at 40"}}, {{first, at(0x80)}, {second, at(0x40)}});
        EXPECT_EQ(two.at(0), "at 40");
        EXPECT_EQ(two.at(1), "at 80");
        EXPECT_EQ(two.orderedKeys(), (std::vector<UUID>{second, first}));
    }
}

TEST(OrderedContainer, ReadsManyItemsInTheOrderOfTheirPositions) {
    constexpr int count = 1000;
    std::vector<int> places(count);
    for (int i = 0; i < count; ++i) {
        places[static_cast<std::size_t>(i)] = i;
    }
    std::mt19937 random(7);
    std::shuffle(places.begin(), places.end(), random);

    Container::Items items;
    Container::Positions positions;
    for (int i = 0; i < count; ++i) {
        UUID id;
        id.data1 = static_cast<std::uint32_t>(random());
        id.data2 = static_cast<std::uint16_t>(i);
        const int place = places[static_cast<std::size_t>(i)];
        items.emplace(id, std::to_string(place));
        positions.emplace(
            id, CFractionalIndex({static_cast<std::uint8_t>(place >> 8), static_cast<std::uint8_t>(place & 0xFF)}));
    }
    const Container many(std::move(items), std::move(positions));
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(many.at(i), std::to_string(i));
    }
}

TEST(OrderedContainer, ItemsOfEqualPositionAreAllThere) {
    Container::Items items;
    Container::Positions positions;
    for (std::uint8_t i = 0; i < 100; ++i) {
        items.emplace(key(i), std::to_string(i));
        positions.emplace(key(i), CFractionalIndex::middle());
    }
    const Container equal(std::move(items), std::move(positions));
    std::vector<UUID> keys = equal.orderedKeys();
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end());
    EXPECT_EQ(keys.size(), 100U);
}

TEST(OrderedContainer, MapsOfDifferentSizesViolateAPrecondition) {
    try {
        container({{key(1), "a"}}, {});
        FAIL();
    } catch (const common::EPreconditionViolation& violation) {
        EXPECT_TRUE(messageOf(violation).starts_with("Assertion violation: Common/Common/OrderedContainer("))
            << messageOf(violation);
    }
    EXPECT_THROW(container({}, {{key(1), at(1)}}), common::EPreconditionViolation);
}

TEST(OrderedContainer, AnItemWithoutPositionViolatesASecondPrecondition) {
    std::string sizes;
    std::string keys;
    try {
        container({{key(1), "a"}}, {});
    } catch (const common::EPreconditionViolation& violation) {
        sizes = messageOf(violation);
    }
    try {
        container({{key(1), "a"}, {key(2), "b"}}, {{key(1), at(1)}, {key(3), at(3)}});
        FAIL();
    } catch (const common::EPreconditionViolation& violation) {
        keys = messageOf(violation);
    }
    EXPECT_TRUE(keys.starts_with("Assertion violation: Common/Common/OrderedContainer(")) << keys;
    EXPECT_NE(keys, sizes);
}

TEST(OrderedContainer, ACopyIsReadInOrderWhileItsSourceIsReadOnAnotherThread) {
    Container::Items items;
    Container::Positions positions;
    for (std::uint8_t i = 0; i < 200; ++i) {
        items.emplace(key(i), std::to_string(199 - i));
        positions.emplace(key(i), at(static_cast<std::uint8_t>(199 - i)));
    }
    const Container source(std::move(items), std::move(positions));

    Rendezvous start(3);
    int wrong[3] = {};
    const auto readAll = [](const Container& read, int& failures) {
        for (std::int32_t i = 0; i < 200; ++i) {
            failures += read.at(i) == std::to_string(i) ? 0 : 1;
        }
    };
    std::thread first([&] {
        start.meet();
        readAll(source, wrong[0]);
    });
    std::thread second([&] {
        start.meet();
        readAll(source, wrong[1]);
    });
    start.meet();
    const Container copy(source);
    readAll(copy, wrong[2]);
    first.join();
    second.join();
    EXPECT_EQ(wrong[0] + wrong[1] + wrong[2], 0);
}

/// Containers of 200 items, the last key first, that nobody has read yet.
std::vector<Container> unreadContainers(std::size_t count) {
    Container::Items items;
    Container::Positions positions;
    for (std::uint8_t i = 0; i < 200; ++i) {
        items.emplace(key(i), std::to_string(i));
        positions.emplace(key(i), at(static_cast<std::uint8_t>(199 - i)));
    }
    std::vector<Container> containers;
    for (std::size_t i = 0; i < count; ++i) {
        containers.emplace_back(items, positions);
    }
    return containers;
}

bool isInOrder(const std::vector<UUID>& keys) {
    return keys.size() == 200 && keys.front() == key(199) &&
           std::is_sorted(keys.rbegin(), keys.rend(), [](const UUID& left, const UUID& right) { return left < right; });
}

TEST(OrderedContainer, ThreadsThatAreTheFirstToReadAllFindItsOrder) {
    const std::vector<Container> containers = unreadContainers(200);
    constexpr int threadCount = 3;
    Rendezvous round(threadCount);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (const Container& unread : containers) {
                round.meet();
                wrong += isInOrder(unread.orderedKeys()) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

TEST(OrderedContainer, CopiesTakenWhileItIsReadForTheFirstTimeAreInOrder) {
    const std::vector<Container> containers = unreadContainers(200);
    Rendezvous round(2);
    int wrong = 0;
    std::thread reader([&] {
        for (const Container& unread : containers) {
            round.meet();
            (void)unread.orderedKeys();
        }
    });
    for (const Container& unread : containers) {
        round.meet();
        const Container copy(unread);
        wrong += isInOrder(copy.orderedKeys()) ? 0 : 1;
    }
    reader.join();
    EXPECT_EQ(wrong, 0);
}

/// Turns the kept order around, which shows later where it is served again and where it has been made anew.
void markOrder(Container& read) {
    auto& keys = const_cast<std::vector<UUID>&>(read.orderedKeys());
    std::reverse(keys.begin(), keys.end());
}

TEST(OrderedContainer, ItsOrderIsComputedAtTheFirstReadAndNotAgain) {
    std::vector<Container> containers = unreadContainers(1);
    Container& container = containers.front();
    EXPECT_TRUE(isInOrder(container.orderedKeys()));
    markOrder(container);
    EXPECT_EQ(container.orderedKeys().front(), key(0));
    EXPECT_EQ(container.at(0), "0");
}

TEST(OrderedContainer, ACopyHasTheOrderThatWasComputedForItsSource) {
    std::vector<Container> containers = unreadContainers(2);
    const Container unread(containers[1]);
    EXPECT_TRUE(isInOrder(unread.orderedKeys()));

    markOrder(containers[0]);
    const Container copy(containers[0]);
    EXPECT_EQ(copy.orderedKeys().front(), key(0));
    Container assigned;
    assigned = containers[0];
    EXPECT_EQ(assigned.orderedKeys().front(), key(0));
    const Container taken(std::move(containers[0]));
    EXPECT_EQ(taken.orderedKeys().front(), key(0));
}

TEST(OrderedContainer, ACopyOutlivesItsSource) {
    auto source =
        std::make_unique<Container>(container({{key(1), "a"}, {key(2), "b"}}, {{key(1), at(2)}, {key(2), at(1)}}));
    EXPECT_EQ(source->at(0), "b"); // the copy takes over an order that is known
    const Container copy(*source);
    source.reset();
    EXPECT_EQ(copy.at(0), "b");
    EXPECT_EQ(copy.at(1), "a");
}

TEST(OrderedContainer, AssigningReplacesItemsAndOrder) {
    Container target = container({{key(9), "old"}}, {{key(9), at(1)}});
    EXPECT_EQ(target.at(0), "old");
    const Container source = container({{key(1), "a"}, {key(2), "b"}}, {{key(1), at(2)}, {key(2), at(1)}});
    target = source;
    EXPECT_EQ(target.size(), 2U);
    EXPECT_EQ(target.at(0), "b");
    EXPECT_EQ(source.at(1), "a");
}

TEST(OrderedContainer, MovingLeavesTheSourceWithoutItems) {
    Container source = container({{key(1), "a"}}, {{key(1), at(2)}});
    EXPECT_EQ(source.at(0), "a");
    Container taken(std::move(source));
    EXPECT_EQ(taken.at(0), "a");
    EXPECT_EQ(source.size(), 0U); // NOLINT(bugprone-use-after-move): what is left is what this is about
    EXPECT_THROW((void)source.at(0), std::out_of_range);

    Container assigned;
    assigned = std::move(taken);
    EXPECT_EQ(assigned.at(0), "a");
    EXPECT_EQ(taken.size(), 0U); // NOLINT(bugprone-use-after-move)
}

} // namespace
