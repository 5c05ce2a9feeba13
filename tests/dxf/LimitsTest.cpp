#include <dxf/Limits.h>
#include <dxf/Placement.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <streambuf>

namespace {

using namespace dxftest;
using dxf::Error;
using dxf::ErrorKind;
using dxf::Limits;

std::string block(const std::string& name, const std::string& content) {
    return groups({{0, "BLOCK"}, {8, "0"}, {2, name}}) + content + groups({{0, "ENDBLK"}});
}

std::string reference(const std::string& name, int columns = 1, int rows = 1) {
    return groups({{0, "INSERT"}, {2, name}, {70, std::to_string(columns)}, {71, std::to_string(rows)}});
}

std::string text(const std::string& content) {
    return groups({{0, "TEXT"}, {1, content}});
}

dxf::Drawing withBlocks(const std::string& blocks, const std::string& entities) {
    return read(section("BLOCKS", blocks) + entitiesOnly(entities));
}

/// Blocks that each place the next ones so many times; the innermost holds `content`.
dxf::Drawing nested(int levels, int times, const std::string& content) {
    std::string blocks = block("B0", content);
    for (int i = 1; i < levels; ++i) {
        std::string references;
        for (int k = 0; k < times; ++k) {
            references += reference("B" + std::to_string(i - 1));
        }
        blocks += block("B" + std::to_string(i), references);
    }
    return withBlocks(blocks, reference("B" + std::to_string(levels - 1)));
}

std::optional<Error> errorOf(const std::function<void()>& run) {
    try {
        run();
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

/// Places the texts; nothing may be given before the error.
std::optional<Error> placing(const dxf::Drawing& drawing, const Limits& limits = {}) {
    std::size_t given = 0;
    const auto error = errorOf([&] {
        dxf::placeTexts(
            drawing, [&](const dxf::PlacedText&) { return ++given > 0; }, limits);
    });
    EXPECT_TRUE(!error || given == 0);
    const auto checked = errorOf([&] { dxf::checkPlacements(drawing, limits); });
    EXPECT_EQ(checked.has_value(), error.has_value());
    return error;
}

bool names(const Error& error, const std::string& part) {
    return std::string(error.what()).find(part) != std::string::npos;
}

TEST(Limits, RowsAndColumnsOfAReferenceCountEach) {
    const dxf::Drawing drawing = withBlocks(block("Grid", text("a")), reference("GRID", 32767, 32767));
    const auto error = placing(drawing);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::PlacementLimit);
    EXPECT_TRUE(names(*error, "limit of 500000 ")) << error->what();
    EXPECT_TRUE(names(*error, "block \"GRID\"")) << error->what();
}

TEST(Limits, NestedReferencesMultiplyAndAreRefusedBeforeTheyAreFollowed) {
    const auto error = placing(nested(10, 10, text("ha")));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::PlacementLimit);
    EXPECT_TRUE(names(*error, "block \"B")) << error->what();
}

TEST(Limits, AProductBeyondEveryNumberIsBeyondTheLimit) {
    std::string blocks = block("B0", text("a"));
    for (int i = 1; i <= 8; ++i) {
        blocks += block("B" + std::to_string(i), reference("B" + std::to_string(i - 1), 32767, 32767));
    }
    EXPECT_TRUE(placing(withBlocks(blocks, reference("B8")), {.placements = Limits::none / 2}));
    EXPECT_TRUE(placing(withBlocks(blocks, reference("B8")), {.placements = Limits::none}));
}

TEST(Limits, BlocksAndTheTextsInThemCountAndTheDrawingsOwnTextsDoNot) {
    const dxf::Drawing drawing = withBlocks(block("INNER", text("a") + text("b")) + block("OUTER", reference("INNER")),
                                            text("own") + text("own") + reference("OUTER", 3, 2));
    // Six times the outer block, the inner one, two texts; less two references and two texts in the file.
    EXPECT_FALSE(placing(drawing, {.placements = 20}));
    EXPECT_TRUE(placing(drawing, {.placements = 19}));
    EXPECT_EQ(dxf::placeTexts(drawing, [](const dxf::PlacedText&) { return true; }, {.placements = 20}), 14U);
}

TEST(Limits, WhatStandsInTheFileIsFree) {
    std::string blocks;
    std::string references;
    for (int i = 0; i < 50; ++i) {
        blocks += block("D" + std::to_string(i), text("12"));
        references += reference("D" + std::to_string(i));
    }
    EXPECT_FALSE(placing(withBlocks(blocks, references), {.placements = 0}));
}

TEST(Limits, BlocksThatShowNoTextDoNotCount) {
    // Attributes are shown by the references to their block; their definitions are not.
    const std::string definition = groups({{0, "ATTDEF"}, {1, "default"}, {2, "TAG"}, {70, "0"}});
    EXPECT_FALSE(placing(nested(40, 10, definition), {.depth = Limits::none}));
    EXPECT_TRUE(nested(40, 10, definition).inserts.empty());
    const std::string constant = groups({{0, "ATTDEF"}, {1, "default"}, {2, "TAG"}, {70, "2"}});
    EXPECT_TRUE(placing(nested(40, 10, constant), {.depth = Limits::none}));
}

TEST(Limits, CharactersOfPlacedTextsCountInEachPlace) {
    const dxf::Drawing drawing =
        withBlocks(block("NOTE", text("12345") + text("678")), text("own") + reference("NOTE", 5));
    EXPECT_FALSE(placing(drawing, {.placedLength = 40}));
    const auto error = placing(drawing, {.placedLength = 39});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::PlacedLengthLimit);
    EXPECT_TRUE(names(*error, "limit of 39 ") && names(*error, "\"NOTE\"")) << error->what();
}

TEST(Limits, ReferencesInsideOneAnotherAreFollowedToTheLimit) {
    EXPECT_FALSE(placing(nested(7, 1, text("a")), {.depth = 7}));
    const auto error = placing(nested(8, 1, text("a")), {.depth = 7});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::DepthLimit);
    EXPECT_TRUE(names(*error, "limit of 7 ") && names(*error, "\"B0\"")) << error->what();
    EXPECT_FALSE(placing(nested(64, 1, text("a"))));
    EXPECT_TRUE(placing(nested(65, 1, text("a"))));
}

TEST(Limits, NoLimitOfDepthIsBeyondTheStacks) {
    EXPECT_FALSE(placing(nested(256, 1, text("a")), {.depth = Limits::none}));
    EXPECT_TRUE(placing(nested(257, 1, text("a")), {.depth = Limits::none}));
}

std::optional<Error> reading(const std::string& bytes, std::size_t textLength) {
    return errorOf([&] {
        std::istringstream input(bytes);
        dxf::readDrawing(input, {}, {.textLength = textLength});
    });
}

TEST(Limits, ALongTextIsRefusedAndNamed) {
    const std::string chunks = groups({{0, "MTEXT"}, {3, "12345"}, {3, "67890"}, {1, "123"}});
    EXPECT_FALSE(reading(entitiesOnly(chunks), 13));
    const auto error = reading(section("BLOCKS", block("NOTES", chunks)) + endMark(), 12);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::TextLengthLimit);
    EXPECT_EQ(error->line(), 11U);
    EXPECT_TRUE(names(*error, "line 11, in block \"NOTES\"") && names(*error, "limit of 12 ")) << error->what();
    // Refused while it is read, too, long before all of it is there.
    EXPECT_TRUE(reading(entitiesOnly(chunks), 4));
    EXPECT_TRUE(reading(entitiesOnly(text("12345")), 4));
    EXPECT_FALSE(reading(entitiesOnly(text("1234")), 4));
}

TEST(Limits, CharactersAreCountedAndNotBytes) {
    const std::string sign = "\xE5\x9B\xBE"; // U+56FE, three bytes
    const std::string text = groups({{0, "MTEXT"}, {1, sign + sign + sign + sign}});
    EXPECT_FALSE(reading(header("AC1027", "ANSI_936") + entitiesOnly(text), 4));
    EXPECT_TRUE(reading(header("AC1027", "ANSI_936") + entitiesOnly(text), 3));
}

/// A drawing whose last value line never ends.
class EndlessLine : public std::streambuf {
public:
    explicit EndlessLine(std::string start) : m_bytes(std::move(start)) {
        setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + m_bytes.size());
    }
    [[nodiscard]] std::size_t given() const { return m_given; }

protected:
    int_type underflow() override {
        m_bytes.assign(std::size_t{1} << 16, 'x');
        m_given += m_bytes.size();
        if (m_given > std::size_t{1} << 24) {
            return traits_type::eof(); // Read to its end after all.
        }
        setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + m_bytes.size());
        return traits_type::to_int_type(m_bytes.front());
    }

private:
    std::string m_bytes;
    std::size_t m_given = 0;
};

TEST(Limits, ALineLongerThanAnyTextIsNotReadToItsEnd) {
    EndlessLine line(groups({{0, "SECTION"}, {2, "ENTITIES"}, {0, "MTEXT"}}) + "  1\n");
    std::istream input(&line);
    const auto error = errorOf([&] { dxf::readDrawing(input, {}, {.textLength = 100'000}); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), ErrorKind::TextLengthLimit);
    EXPECT_EQ(error->line(), 8U);
    EXPECT_LT(line.given(), std::size_t{1} << 20);
}

} // namespace
