#include "../Common/OverlapDetector.h"
#include "../Common/Rendezvous.h"
#include "RecordingSink.h"

#include <oslayer/Logger.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using oslayer::CLogger;
using oslayer::SLogRecord;

TEST(Logger, ARecordIsLoggedWhenItIsDestroyed) {
    RecordingSink sink;
    {
        const SLogRecord record(oslayer::severityFailure, "something failed");
        EXPECT_TRUE(sink.records.empty());
    }
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(sink.records[0].severity, 1);
    EXPECT_EQ(sink.records[0].text, "something failed");
}

TEST(Logger, AnEmptyRecordIsNotLogged) {
    RecordingSink sink;
    { const SLogRecord record(oslayer::severityDeviceLost, ""); }
    EXPECT_TRUE(sink.records.empty());
}

TEST(Logger, WithoutASinkRecordsAreDropped) {
    CLogger::Sink former = CLogger::instance().setSink(nullptr);
    EXPECT_NO_THROW({ const SLogRecord record(1, "nobody hears this"); });
    CLogger::instance().setSink(std::move(former));
}

TEST(Logger, TheLibraryItselfInstallsNoSink) {
    CLogger::Sink former = CLogger::instance().setSink(nullptr);
    EXPECT_FALSE(former);
    CLogger::instance().setSink(std::move(former));
}

TEST(Logger, SettingASinkReturnsTheOneBefore) {
    RecordingSink outer;
    {
        RecordingSink inner;
        { const SLogRecord record(1, "to the inner one"); }
        EXPECT_EQ(inner.records.size(), 1U);
    }
    { const SLogRecord record(1, "to the outer one"); }
    ASSERT_EQ(outer.records.size(), 1U);
    EXPECT_EQ(outer.records[0].text, "to the outer one");
}

TEST(Logger, IsOneForTheProcess) {
    EXPECT_EQ(&CLogger::instance(), &CLogger::instance());
}

TEST(Logger, RecordsOfAllThreadsReachTheSinkOneAtATime) {
    RecordingSink sink; // grows a vector without a lock of its own
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int i = 0; i < 250; ++i) {
                const SLogRecord record(1, "a record long enough to live on the heap");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sink.records.size(), 1000U);
}

TEST(Logger, TheSinkIsNeverEnteredByTwoThreadsAtOnce) {
    OverlapDetector sink;
    CLogger::Sink former = CLogger::instance().setSink([&](std::int32_t, const std::string&) { sink.pass(); });
    Rendezvous start(4);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            start.meet();
            for (int i = 0; i < 10; ++i) {
                const SLogRecord record(1, "text");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    CLogger::instance().setSink(std::move(former));
    EXPECT_FALSE(sink.overlapped());
}

TEST(Logger, ASinkThatIsReplacedHasSeenTheLastOfItsRecords) {
    // A record that came after would find the counter it was given destroyed.
    CLogger::Sink former = CLogger::instance().setSink(nullptr);
    Rendezvous start(3);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 2; ++thread) {
        threads.emplace_back([&] {
            start.meet();
            for (int i = 0; i < 500; ++i) {
                const SLogRecord record(1, "text");
            }
        });
    }
    start.meet();
    for (int i = 0; i < 500; ++i) {
        auto count = std::make_unique<int>(0);
        CLogger::instance().setSink([seen = count.get()](std::int32_t, const std::string&) { ++*seen; });
        CLogger::instance().setSink(nullptr);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    CLogger::instance().setSink(std::move(former));
}

} // namespace
