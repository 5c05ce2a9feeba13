#include <dxf/EntityWriter.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

/// While one lives, this thread's memory is used up.
class NoMemory {
public:
    NoMemory() { s_exhausted = true; }
    ~NoMemory() { s_exhausted = false; }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

    static bool exhausted() { return s_exhausted; }

private:
    static thread_local bool s_exhausted;
};

thread_local bool NoMemory::s_exhausted = false;

} // namespace

void* operator new(std::size_t size) {
    void* memory = NoMemory::exhausted() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

// A function that promises not to throw and allocates ends the process.
TEST(NoMemory, IsNoDangerToQuestionsThatPromiseAnAnswer) {
    const dxf::Drawing drawing = dxftest::read(dxftest::header("AC1027", "ANSI_1252") + dxftest::endMark());
    const dxf::EntityOrigin origin;
    dxf::HandleSource handles(1);
    const dxf::EntityWriter writer(drawing, origin, handles);
    int version = 0;
    bool hasMText = false;
    bool hasHatch = false;
    {
        const NoMemory none;
        version = drawing.header.versionNumber();
        hasMText = writer.hasMText();
        hasHatch = writer.hasHatch();
    }
    EXPECT_EQ(version, 1027);
    EXPECT_TRUE(hasMText);
    EXPECT_TRUE(hasHatch);
}

} // namespace
