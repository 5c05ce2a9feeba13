#include <geometry/MbRegion.h>
#include <geometry/aecmath.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

namespace {

using RegionPointer = boost::intrusive_ptr<MbRegion>;

/// Says when it is deleted.
class Watched : public MbRegion {
public:
    explicit Watched(bool& isAlive) : MbRegion({}), m_isAlive(isAlive) { m_isAlive = true; }

protected:
    ~Watched() override { m_isAlive = false; }

private:
    bool& m_isAlive;
};

TEST(MbRefItem, StartsWithoutReferencesAndEndsWithItsLast) {
    bool isAlive = false;
    auto* region = new Watched(isAlive);
    EXPECT_EQ(region->AddRef(), 1U);
    EXPECT_EQ(region->AddRef(), 2U);
    EXPECT_EQ(region->Release(), 1U);
    EXPECT_TRUE(isAlive);
    EXPECT_EQ(region->Release(), 0U);
    EXPECT_FALSE(isAlive);
}

TEST(MbRefItem, PointersShareIt) {
    bool isAlive = false;
    {
        RegionPointer first(new Watched(isAlive));
        const std::vector<RegionPointer> shared(3, first);
        first.reset();
        EXPECT_TRUE(isAlive);
    }
    EXPECT_FALSE(isAlive);
}

TEST(MbRefItem, ThreadsMayAddAndReleaseReferences) {
    bool isAlive = false;
    {
        const RegionPointer region(new Watched(isAlive));
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&] {
                for (int i = 0; i < 10000; ++i) {
                    const RegionPointer another(region);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(region->AddRef(), 2U);
        EXPECT_EQ(region->Release(), 1U);
    }
    EXPECT_FALSE(isAlive);
}

TEST(MbRegion, OfARectangleIsItsContourCounterclockwise) {
    const RegionPointer region = aecmath::createRegionByRect(MbRect(1, 2, 5, 4));
    ASSERT_EQ(region->contours().size(), 1U);
    EXPECT_EQ(region->contours()[0], (MbRegion::Contour{{1, 2}, {5, 2}, {5, 4}, {1, 4}}));
    EXPECT_EQ(region->boundingRect(), MbRect(1, 2, 5, 4));
}

TEST(MbRegion, OfAnEmptyRectangleHasNoContour) {
    const RegionPointer region = aecmath::createRegionByRect(MbRect());
    EXPECT_TRUE(region->contours().empty());
    EXPECT_TRUE(region->boundingRect().isEmpty());
}

TEST(MbRegion, OfARectangleWithoutAreaKeepsItsContour) {
    const RegionPointer region = aecmath::createRegionByRect(MbRect(1, 2, 5, 2));
    EXPECT_EQ(region->boundingRect(), MbRect(1, 2, 5, 2));
}

TEST(MbRegion, MovesByAVectorWithTheFurtherArgumentsNull) {
    const RegionPointer region = aecmath::createRegionByRect(MbRect(0, 0, 2, 1));
    region->Move(MbVector{10, -5}, nullptr, nullptr);
    EXPECT_EQ(region->contours()[0], (MbRegion::Contour{{10, -5}, {12, -5}, {12, -4}, {10, -4}}));
    region->Move(MbVector{-10, 5});
    EXPECT_EQ(region->boundingRect(), MbRect(0, 0, 2, 1));
}

TEST(MbRegion, BoundsAllItsContours) {
    const RegionPointer region(new MbRegion({{{0, 0}, {1, 0}, {0, 1}}, {{-3, 7}, {2, 8}, {0, 9}}}));
    EXPECT_EQ(region->boundingRect(), MbRect(-3, 0, 2, 9));
}

} // namespace
