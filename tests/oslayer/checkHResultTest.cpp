#include "RecordingSink.h"

#include <oslayer/Errors.h>
#include <oslayer/checkHResult.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <locale>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace {

using oslayer::checkHResult;
using oslayer::EDxDeviceRemoved;
using oslayer::EOsLayerError;

HRESULT status(std::uint32_t code) {
    return static_cast<HRESULT>(code);
}

/// What the error says, which has to be an EOsLayerError itself and none of its kinds.
std::string failureOf(const char* file, std::int32_t line, const char* expression, HRESULT result) {
    try {
        checkHResult(file, line, expression, result);
    } catch (const EDxDeviceRemoved&) {
        return "device removed";
    } catch (const EOsLayerError& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(CheckHResult, Results0And1ReturnWithoutThrowingAndWithoutLogging) {
    RecordingSink sink;
    EXPECT_NO_THROW(checkHResult("a", 1, "call()", 0));
    EXPECT_NO_THROW(checkHResult("a", 1, "call()", 1));
    EXPECT_NO_THROW(checkHResult(nullptr, 1, nullptr, status(0x7FFFFFFF)));
    EXPECT_TRUE(sink.records.empty());
}

TEST(CheckHResult, LossOfTheDeviceThrowsDeviceRemovedAndLogsWithSeverity3) {
    const struct {
        std::uint32_t code;
        const char* name;
    } losses[] = {{0x887A0005, "DXGI_ERROR_DEVICE_REMOVED"},
                  {0x887A0007, "DXGI_ERROR_DEVICE_RESET"},
                  {0x8899000C, "D2DERR_RECREATE_TARGET"}};
    for (const auto& loss : losses) {
        RecordingSink sink;
        try {
            checkHResult("FontEngine/src/TextMetrics", 12, "call()", status(loss.code));
            ADD_FAILURE() << loss.name;
        } catch (const EDxDeviceRemoved& error) {
            EXPECT_STREQ(error.what(), loss.name);
        }
        EXPECT_THROW(checkHResult("a", 1, "call()", status(loss.code)), EOsLayerError);
        EXPECT_THROW(checkHResult("a", 1, "call()", status(loss.code)), common::EException);
        ASSERT_EQ(sink.records.size(), 3U);
        EXPECT_EQ(sink.records[0].severity, 3);
        EXPECT_EQ(sink.records[0].text,
                  std::string("FontEngine/src/TextMetrics(12): DX failed 'call()' -- '") + loss.name + "'");
    }
}

TEST(CheckHResult, AnInvalidArgumentThrowsItsNameAndLogsTheCall) {
    RecordingSink sink;
    EXPECT_EQ(failureOf("FontEngine/src/Font", 7, "pFont->GetFontFamily(&pFamily)", status(0x80070057)),
              "E_INVALIDARG");
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(sink.records[0].severity, 1);
    EXPECT_EQ(sink.records[0].text,
              "FontEngine/src/Font(7): DX failed 'pFont->GetFontFamily(&pFamily)' -- 'E_INVALIDARG'");
}

TEST(CheckHResult, ANegativeCodeAbsentFromTheTableLogsItsDigits) {
    RecordingSink sink;
    EXPECT_EQ(failureOf("a/b", 3, "call()", status(0x88760001)), "COM call failed");
    EXPECT_EQ(failureOf("a/b", 3, "call()", status(0x8898500C)), "COM call failed");
    ASSERT_EQ(sink.records.size(), 2U);
    EXPECT_EQ(sink.records[0].severity, 1);
    EXPECT_EQ(sink.records[0].text, "a/b(3): COM failed 'call()' -- code 0x88760001'");
    EXPECT_EQ(sink.records[1].text, "a/b(3): COM failed 'call()' -- code 0x8898500c'");
}

TEST(CheckHResult, ANullFilePathGivesATextThatBeginsWithTheParenthesis) {
    RecordingSink sink;
    EXPECT_EQ(failureOf(nullptr, -5, "call()", status(0x80004005)), "E_FAIL");
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(sink.records[0].text, "(-5): DX failed 'call()' -- 'E_FAIL'");
}

TEST(CheckHResult, AJoinedNameIsGivenWhole) {
    RecordingSink sink;
    EXPECT_EQ(failureOf("a", 1, "call()", status(0x80040401)), "DIERR_CANCELLED & MS_E_SAMPLEALLOC");
}

TEST(CheckHResult, TheLocaleOfTheHostDoesNotGroupTheDigits) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    RecordingSink sink;
    const std::locale former = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    (void)failureOf("a", 12345, "call()", status(0x88760001));
    std::locale::global(former);
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(sink.records[0].text, "a(12345): COM failed 'call()' -- code 0x88760001'");
}

struct Object {
    HRESULT answer = 0;
    int calls = 0;
    HRESULT Take(int, const wchar_t*, int) {
        ++calls;
        return answer;
    }
};

TEST(CheckHResult, TheMacroCallsOnceAndPassesTheCallsOwnText) {
    RecordingSink sink;
    Object pObject;
    OSLAYER_CHECK(pObject.Take(1, L"", 2));
    EXPECT_EQ(pObject.calls, 1);
    EXPECT_TRUE(sink.records.empty());

    pObject.answer = status(0x80004001);
    const int line = __LINE__ + 1;
    EXPECT_THROW(OSLAYER_CHECK(pObject.Take(static_cast<int>(1), L"", true ? 2 : 3)), EOsLayerError);
    EXPECT_EQ(pObject.calls, 2);
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(sink.records[0].text, "tests/oslayer/checkHResultTest(" + std::to_string(line) +
                                        "): DX failed 'pObject.Take(static_cast<int>(1), L\"\", true ? 2 : 3)' -- "
                                        "'E_NOTIMPL'");
}

TEST(CheckHResult, ALineBreakInsideTheCallIsOneBlank) {
    RecordingSink sink;
    Object pObject;
    pObject.answer = status(0x80004005);
    try {
        // clang-format off
        OSLAYER_CHECK(pObject.Take(
            1,
            L"",
            2));
        // clang-format on
        FAIL();
    } catch (const EOsLayerError&) {
    }
    ASSERT_EQ(sink.records.size(), 1U);
    EXPECT_TRUE(sink.records[0].text.ends_with("): DX failed 'pObject.Take( 1, L\"\", 2)' -- 'E_FAIL'"))
        << sink.records[0].text;
}

TEST(Errors, ReturnTheTextTheyWereMadeFrom) {
    EXPECT_STREQ(common::EException("one").what(), "one");
    EXPECT_STREQ(EOsLayerError("two").what(), "two");
    EXPECT_STREQ(EDxDeviceRemoved("three").what(), "three");
}

TEST(Errors, AreStandardRuntimeErrors) {
    static_assert(std::is_base_of_v<std::runtime_error, common::EException>);
    static_assert(std::is_base_of_v<common::EException, EOsLayerError>);
    static_assert(std::is_base_of_v<EOsLayerError, EDxDeviceRemoved>);
    SUCCEED();
}

} // namespace
