#pragma once

// A platform under the library's control of the tests: it records every call with
// its arguments, in order, answers from what the test has set, and fails where the
// test wants it to. It is linked in place of the real one.
//
// Calls are recorded as "Object.Operation(arguments)": strings in double quotes,
// enumerations as numbers, ranges as [start, length], null pointers as null, and
// platform objects by kind ("Collection"). Reference counting, queries of anything but
// the factory, and a font's weight, style and stretch are not recorded.

#include <d2d1.h>
#include <dwrite_2.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace fake {

struct FontSpec {
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;
    // One per language; none at all is told as "does not exist".
    std::vector<std::wstring> win32FamilyNames;
    // designUnitsPerEm 2048, ascent 1900, descent 480, lineGap -20, capHeight 1467 unless set.
    DWRITE_FONT_METRICS metrics = defaultMetrics();

    static DWRITE_FONT_METRICS defaultMetrics();
};

struct FamilySpec {
    // One per language.
    std::vector<std::wstring> names;
    std::vector<FontSpec> fonts;
};

// What IDWriteFontFallback::MapCharacters answers. The font is named by its
// family (an index into Platform::families; -1: no font) and its place in it.
struct FallbackAnswer {
    std::uint32_t length = 0;
    int family = 0;
    int font = 0;
};

class LayoutState;
class Objects;

// The one platform of the process. `reset` (which the fixture below calls) puts it
// back to: one family "Sans" with a regular, a bold, an italic and a bold italic
// face of that Win32 name; everything maps to its regular face; nothing fails.
class Platform {
public:
    static Platform& instance();

    void reset();

    // ---- what the platform has; set before the first call of the test ----

    std::vector<FamilySpec> families;
    std::wstring formatLocaleName;
    // Gets the whole text, the position asked for and how much of the text is left.
    std::function<FallbackAnswer(std::wstring_view text, std::uint32_t position, std::uint32_t length)> mapCharacters;
    // Runs inside MapCharacters, on the source given to it.
    std::function<void(IDWriteTextAnalysisSource*)> onAnalysisSource;

    // Metrics of a layout; by default one line of height 10, as wide as it has characters.
    std::function<DWRITE_TEXT_METRICS(const LayoutState&)> layoutMetrics;
    // What a layout draws; by default nothing. Its result is the result of Draw.
    std::function<HRESULT(const LayoutState&, void* context, IDWriteTextRenderer*, FLOAT x, FLOAT y)> draw;

    // The bounds of every path geometry before the transform. Inverted (no outline) by
    // default; `draw` may change it from run to run.
    D2D1_RECT_F pathBounds{};

    // UuidCreate's status, for all calls.
    LONG uuidStatus = 0;

    // A face for glyph runs, whose GetGlyphRunOutline is recorded and draws nothing.
    // It belongs to the platform.
    IDWriteFontFace* fontFace();

    // ---- failures ----

    // Makes calls whose record begins with `call` fail with `result`: the
    // `occurrence`-th of them (1: the first), or every one (0). A failing creator
    // hands out null.
    void fail(std::string call, HRESULT result, int occurrence = 1);

    // ---- what happened ----

    std::vector<std::string> calls;

    // The calls whose record begins with `prefix`, in order.
    [[nodiscard]] std::vector<std::string> callsTo(std::string_view prefix) const;
    [[nodiscard]] std::size_t countOf(std::string_view prefix) const { return callsTo(prefix).size(); }

    // How many references of the families, of their names and of the fonts are held by the
    // library now. These objects belong to the platform, so keeping one leaks nothing.
    [[nodiscard]] std::int64_t familyReferences() const;
    [[nodiscard]] std::int64_t familyNamesReferences() const;
    [[nodiscard]] std::int64_t fontReferences() const;

    // How many objects of any other kind (formats, layouts, strings, geometries,
    // factory, collection and fallback references) the library still holds.
    [[nodiscard]] std::int64_t otherReferences() const;

    // ---- for the fake's own objects ----

    // Records the call and says whether it is to fail.
    HRESULT record(std::string call);
    Objects& objects() { return *m_objects; }

private:
    Platform();
    ~Platform();

    struct Failure {
        std::string call;
        HRESULT result;
        int occurrence;
        int seen = 0;
    };
    std::vector<Failure> m_failures;
    std::unique_ptr<Objects> m_objects;
};

// What a layout was made with and told, for the functions above.
class LayoutState {
public:
    std::wstring text;
    FLOAT maxWidth = 0;
    FLOAT maxHeight = 0;
    DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP;
    DWRITE_TEXT_ALIGNMENT textAlignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    FLOAT incrementalTabStop = 0;
};

inline Platform& platform() {
    return Platform::instance();
}

// What the library logs while it lives: one text per record, with its severity.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    struct Record {
        std::int32_t severity;
        std::string text;
    };
    std::vector<Record> records;

    // The record's expression (what stands between "failed '" and "' -- "), of the only record.
    [[nodiscard]] std::string expression() const;
    // The source path of the only record.
    [[nodiscard]] std::string path() const;
};

// Fixture: a fresh platform, and a log to look into. Engines and services are locals
// of a test, so that they are gone when TearDown counts.
class FakePlatformTest : public ::testing::Test {
protected:
    FakePlatformTest() { platform().reset(); }
    // Nothing that belongs to a caller may be left over, families and fonts aside.
    void TearDown() override { EXPECT_EQ(platform().otherReferences(), 0); }

    LogCapture log;
};

} // namespace fake
