#include <dxf/PairReader.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

using dxf::Error;
using dxf::ErrorKind;
using dxf::Pair;
using dxf::PairReader;

struct Copy {
    int code;
    std::string value;
    std::uint64_t line;
    std::uint64_t offset;
    bool complete;
};

std::vector<Copy> readAll(const std::string& bytes, std::string* copied = nullptr) {
    std::istringstream input(bytes);
    PairReader reader(input);
    std::vector<Copy> result;
    while (const auto pair = reader.next()) {
        result.push_back({pair->code, std::string(pair->value), pair->line, pair->offset, pair->complete});
        if (copied != nullptr) {
            *copied += pair->bytes;
        }
        if (pair->is(0, "EOF")) {
            break;
        }
    }
    if (copied != nullptr) {
        copied->insert(0, reader.prefix());
        for (auto block = reader.readRaw(); !block.empty(); block = reader.readRaw()) {
            *copied += block;
        }
    }
    return result;
}

Pair pairOf(std::string_view value) {
    Pair pair;
    pair.value = value;
    return pair;
}

ErrorKind kindOf(const std::string& bytes) {
    try {
        readAll(bytes);
    } catch (const Error& error) {
        return error.kind();
    }
    ADD_FAILURE() << "no error";
    return ErrorKind::BadRequest;
}

std::string messageOf(const std::string& bytes) {
    try {
        readAll(bytes);
    } catch (const Error& error) {
        return error.what();
    }
    return "no error";
}

TEST(PairReader, GivesCodesValuesLinesAndOffsets) {
    const auto pairs = readAll("  0\nSECTION\n  2\nENTITIES\n");
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs[0].code, 0);
    EXPECT_EQ(pairs[0].value, "SECTION");
    EXPECT_EQ(pairs[0].line, 1U);
    EXPECT_EQ(pairs[0].offset, 0U);
    EXPECT_EQ(pairs[1].code, 2);
    EXPECT_EQ(pairs[1].line, 3U);
    EXPECT_EQ(pairs[1].offset, 12U);
    EXPECT_TRUE(pairs[1].complete);
}

TEST(PairReader, TakesEveryLineEnding) {
    for (const std::string ending : {"\n", "\r\n", "\r\r\n"}) {
        const auto pairs = readAll(dxftest::groups({{0, "SECTION"}, {1, " text "}}, ending));
        ASSERT_EQ(pairs.size(), 2U) << ending.size();
        EXPECT_EQ(pairs[1].value, " text ");
    }
    const auto mixed = readAll("0\r\nSECTION\n1\na\r\n\t1 \nb\n");
    ASSERT_EQ(mixed.size(), 3U);
    EXPECT_EQ(mixed[1].value, "a");
    EXPECT_EQ(mixed[2].value, "b");
}

TEST(PairReader, KeepsEveryByteOfTheFile) {
    for (const std::string& bytes : {
             std::string("  0\r\nSECTION\n  1\n \t text  \r\n999\n\n  0\nEOF\n\n\x1a"),
             std::string("\xEF\xBB\xBF"
                         "0\nSECTION\n0\nEOF"),
             std::string("0\nSECTION\n 5"),
         }) {
        std::string copied;
        readAll(bytes, &copied);
        EXPECT_EQ(copied, bytes);
    }
}

TEST(PairReader, ReadsLinesOfAnyLength) {
    const std::string text(3'000'000, 'x');
    const auto pairs = readAll("0\nSECTION\n1\n" + text + "\n3\nshort\n");
    ASSERT_EQ(pairs.size(), 3U);
    EXPECT_EQ(pairs[1].value, text);
    EXPECT_EQ(pairs[2].value, "short");
}

TEST(PairReader, SaysWhenTheFileEndsInsideAValue) {
    const auto pairs = readAll("0\nSECTION\n1\nhal");
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs[1].value, "hal");
    EXPECT_FALSE(pairs[1].complete);
}

TEST(PairReader, EndsQuietlyBetweenCodeAndValue) {
    EXPECT_EQ(readAll("0\nSECTION\n1\n").size(), 1U);
    EXPECT_EQ(readAll("0\nSECTION\n1").size(), 1U);
}

TEST(PairReader, TakesCommentsInFrontOfTheFirstSection) {
    EXPECT_EQ(readAll("999\nmade by hand\n0\nSECTION\n").size(), 2U);
}

TEST(PairReader, TellsWhatIsNoDrawing) {
    EXPECT_EQ(kindOf(""), ErrorKind::Empty);
    EXPECT_EQ(kindOf("Dear reader,\nthis is a letter.\n"), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf("12\nMonkeys\n"), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf("0\nHELLO\n"), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf("999\ncomment\nnonsense\n"), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf("AC1027\x01\x02"), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf(std::string("\xFF\xFE"
                                 "0\0\n\0",
                                 6)),
              ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf(std::string(100'000, '\0')), ErrorKind::NotADrawing);
    EXPECT_EQ(kindOf(std::string(100'000, ' ')), ErrorKind::NotADrawing);
}

TEST(PairReader, NamesTheBinaryForm) {
    std::string bytes("Abcdefg Binary DXF\r\n\x1a\0", 22);
    bytes += std::string("\0SECTION\0", 9);
    EXPECT_EQ(kindOf(bytes), ErrorKind::Binary);
    EXPECT_EQ(messageOf(bytes), "This is a binary DXF drawing. Save it as ASCII DXF and try again.");
}

TEST(PairReader, NamesTheLineThatIsNoGroupCode) {
    const std::string bytes = "0\nSECTION\n1\nfirst line\nsecond line\n0\nEOF\n";
    EXPECT_EQ(kindOf(bytes), ErrorKind::BadGroupCode);
    EXPECT_EQ(messageOf(bytes), "Line 5 should hold a group code (a whole number) and holds \"second line\". The file "
                                "is damaged there, or a text contains a line break. Export it again.");
    for (const std::string code : {"", "1.5", "0x10", "99999", "1 2", "--1"}) {
        EXPECT_EQ(kindOf("0\nSECTION\n" + code + "\nvalue\n"), ErrorKind::BadGroupCode) << code;
    }
}

TEST(PairReader, GivesUpOnACodeLineWithoutEndBeforeReadingItAll) {
    std::istringstream input("0\nSECTION\n" + std::string(10'000'000, '7'));
    PairReader reader(input);
    reader.next();
    EXPECT_THROW(reader.next(), Error);
    EXPECT_LT(input.tellg(), 1'000'000);
}

TEST(PairReader, ReportsAStreamThatCannotBeRead) {
    std::istringstream input("0\nSECTION\n");
    input.setstate(std::ios::failbit);
    PairReader reader(input);
    try {
        reader.next();
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Unreadable);
    }
}

/// Fails in the middle, as a network drive does.
class FailingBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

protected:
    int_type underflow() override { throw std::runtime_error("gone"); }
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        if (m_calls++ > 0) {
            throw std::runtime_error("gone");
        }
        return std::stringbuf::xsgetn(to, count);
    }

private:
    int m_calls = 0;
};

TEST(PairReader, ReportsAStreamThatFailsOnTheWay) {
    FailingBuffer buffer("0\nSECTION\n1\n" + std::string(1'000'000, 'x') + "\n");
    std::istream input(&buffer);
    PairReader reader(input);
    try {
        while (reader.next()) {
        }
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Unreadable);
    }
}

TEST(Pair, ReadsNumbersAsFilesWriteThem) {
    const auto real = [](std::string_view value) { return pairOf(value).real(); };
    EXPECT_EQ(real("2.5"), 2.5);
    EXPECT_EQ(real("  -1.25E2 "), -125.0);
    EXPECT_EQ(real("+.5"), 0.5);
    EXPECT_EQ(real("7"), 7.0);
    EXPECT_EQ(real("nan"), 0.0);
    EXPECT_EQ(real("inf"), 0.0);
    EXPECT_EQ(real("1e999"), 0.0);
    EXPECT_EQ(real(""), 0.0);
    EXPECT_EQ(real("abc"), 0.0);

    const auto integer = [](std::string_view value) { return pairOf(value).integer(); };
    EXPECT_EQ(integer("     5"), 5);
    EXPECT_EQ(integer("-1"), -1);
    EXPECT_EQ(integer("3.9"), 3);
    EXPECT_EQ(integer("99999999999999999999"), INT64_MAX);
    EXPECT_EQ(integer("-99999999999999999999"), INT64_MIN);
    EXPECT_EQ(integer(""), 0);

    const auto handle = [](std::string_view value) { return pairOf(value).handle(); };
    EXPECT_EQ(handle("1aF"), 0x1AFU);
    EXPECT_EQ(handle(" FFFFFFFFFFFFFFFF "), UINT64_MAX);
    EXPECT_EQ(handle("1FFFFFFFFFFFFFFFF"), 0U);
    EXPECT_EQ(handle("12G"), 0U);
    EXPECT_EQ(handle(""), 0U);
}

TEST(Error, EveryKindHasAName) {
    std::vector<std::string_view> names;
    for (int kind = 0; kind <= static_cast<int>(ErrorKind::BadRequest); ++kind) {
        const std::string_view name = dxf::errorKindName(static_cast<ErrorKind>(kind));
        EXPECT_NE(name, "unknown");
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 0) << name;
        names.push_back(name);
    }
}

} // namespace
