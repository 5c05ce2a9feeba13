#pragma once

// The values that fonts and text layouts speak in.

#include <dcommon.h>

#define DWRITE_E_NOFONT platformStatus(0x88985002u)

enum DWRITE_FACTORY_TYPE : INT32 { DWRITE_FACTORY_TYPE_SHARED = 0, DWRITE_FACTORY_TYPE_ISOLATED = 1 };

// ---- fonts ----

/// Weight on the scale of OS/2's usWeightClass; values between the names are allowed.
enum DWRITE_FONT_WEIGHT : INT32 {
    DWRITE_FONT_WEIGHT_THIN = 100,
    DWRITE_FONT_WEIGHT_EXTRA_LIGHT = 200,
    DWRITE_FONT_WEIGHT_ULTRA_LIGHT = 200,
    DWRITE_FONT_WEIGHT_LIGHT = 300,
    DWRITE_FONT_WEIGHT_SEMI_LIGHT = 350,
    DWRITE_FONT_WEIGHT_NORMAL = 400,
    DWRITE_FONT_WEIGHT_REGULAR = 400,
    DWRITE_FONT_WEIGHT_MEDIUM = 500,
    DWRITE_FONT_WEIGHT_DEMI_BOLD = 600,
    DWRITE_FONT_WEIGHT_SEMI_BOLD = 600,
    DWRITE_FONT_WEIGHT_BOLD = 700,
    DWRITE_FONT_WEIGHT_EXTRA_BOLD = 800,
    DWRITE_FONT_WEIGHT_ULTRA_BOLD = 800,
    DWRITE_FONT_WEIGHT_BLACK = 900,
    DWRITE_FONT_WEIGHT_HEAVY = 900,
    DWRITE_FONT_WEIGHT_EXTRA_BLACK = 950,
    DWRITE_FONT_WEIGHT_ULTRA_BLACK = 950
};

/// Width class on the scale of OS/2's usWidthClass.
enum DWRITE_FONT_STRETCH : INT32 {
    DWRITE_FONT_STRETCH_UNDEFINED = 0,
    DWRITE_FONT_STRETCH_ULTRA_CONDENSED = 1,
    DWRITE_FONT_STRETCH_EXTRA_CONDENSED = 2,
    DWRITE_FONT_STRETCH_CONDENSED = 3,
    DWRITE_FONT_STRETCH_SEMI_CONDENSED = 4,
    DWRITE_FONT_STRETCH_NORMAL = 5,
    DWRITE_FONT_STRETCH_MEDIUM = 5,
    DWRITE_FONT_STRETCH_SEMI_EXPANDED = 6,
    DWRITE_FONT_STRETCH_EXPANDED = 7,
    DWRITE_FONT_STRETCH_EXTRA_EXPANDED = 8,
    DWRITE_FONT_STRETCH_ULTRA_EXPANDED = 9
};

enum DWRITE_FONT_STYLE : INT32 {
    DWRITE_FONT_STYLE_NORMAL = 0,
    DWRITE_FONT_STYLE_OBLIQUE = 1,
    DWRITE_FONT_STYLE_ITALIC = 2
};

/// What is done to a face's outlines to stand in for a face that does not exist.
enum DWRITE_FONT_SIMULATIONS : INT32 {
    DWRITE_FONT_SIMULATIONS_NONE = 0,
    DWRITE_FONT_SIMULATIONS_BOLD = 1,
    DWRITE_FONT_SIMULATIONS_OBLIQUE = 2
};

inline constexpr DWRITE_FONT_SIMULATIONS operator|(DWRITE_FONT_SIMULATIONS a, DWRITE_FONT_SIMULATIONS b) {
    return static_cast<DWRITE_FONT_SIMULATIONS>(static_cast<int>(a) | static_cast<int>(b));
}

/// Strings of a font file, by what they say (not by name ID).
enum DWRITE_INFORMATIONAL_STRING_ID : INT32 {
    DWRITE_INFORMATIONAL_STRING_NONE = 0,
    DWRITE_INFORMATIONAL_STRING_COPYRIGHT_NOTICE = 1,
    DWRITE_INFORMATIONAL_STRING_VERSION_STRINGS = 2,
    DWRITE_INFORMATIONAL_STRING_TRADEMARK = 3,
    DWRITE_INFORMATIONAL_STRING_MANUFACTURER = 4,
    DWRITE_INFORMATIONAL_STRING_DESIGNER = 5,
    DWRITE_INFORMATIONAL_STRING_DESIGNER_URL = 6,
    DWRITE_INFORMATIONAL_STRING_DESCRIPTION = 7,
    DWRITE_INFORMATIONAL_STRING_FONT_VENDOR_URL = 8,
    DWRITE_INFORMATIONAL_STRING_LICENSE_DESCRIPTION = 9,
    DWRITE_INFORMATIONAL_STRING_LICENSE_INFO_URL = 10,
    DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES = 11,
    DWRITE_INFORMATIONAL_STRING_WIN32_SUBFAMILY_NAMES = 12,
    DWRITE_INFORMATIONAL_STRING_PREFERRED_FAMILY_NAMES = 13,
    DWRITE_INFORMATIONAL_STRING_PREFERRED_SUBFAMILY_NAMES = 14,
    DWRITE_INFORMATIONAL_STRING_SAMPLE_TEXT = 15,
    DWRITE_INFORMATIONAL_STRING_FULL_NAME = 16,
    DWRITE_INFORMATIONAL_STRING_POSTSCRIPT_NAME = 17,
    DWRITE_INFORMATIONAL_STRING_POSTSCRIPT_CID_NAME = 18,
    DWRITE_INFORMATIONAL_STRING_WWS_FAMILY_NAME = 19
};

/// A font's measures in design units, y up from the baseline.
struct DWRITE_FONT_METRICS {
    UINT16 designUnitsPerEm;
    UINT16 ascent;
    /// Below the baseline, positive.
    UINT16 descent;
    INT16 lineGap;
    UINT16 capHeight;
    UINT16 xHeight;
    /// Negative below the baseline.
    INT16 underlinePosition;
    UINT16 underlineThickness;
    INT16 strikethroughPosition;
    UINT16 strikethroughThickness;
};

/// A glyph's measures in design units; bearings are the distances from the
/// advance box to the ink box, negative where ink stands out.
struct DWRITE_GLYPH_METRICS {
    INT32 leftSideBearing;
    UINT32 advanceWidth;
    INT32 rightSideBearing;
    INT32 topSideBearing;
    UINT32 advanceHeight;
    INT32 bottomSideBearing;
    /// Height of the vertical origin above the baseline.
    INT32 verticalOriginY;
};

/// A shift of one glyph: along the run's direction and upwards.
struct DWRITE_GLYPH_OFFSET {
    FLOAT advanceOffset;
    FLOAT ascenderOffset;
};

// ---- layout ----

enum DWRITE_TEXT_ALIGNMENT : INT32 {
    DWRITE_TEXT_ALIGNMENT_LEADING = 0,
    DWRITE_TEXT_ALIGNMENT_TRAILING = 1,
    DWRITE_TEXT_ALIGNMENT_CENTER = 2,
    DWRITE_TEXT_ALIGNMENT_JUSTIFIED = 3
};

enum DWRITE_PARAGRAPH_ALIGNMENT : INT32 {
    DWRITE_PARAGRAPH_ALIGNMENT_NEAR = 0,
    DWRITE_PARAGRAPH_ALIGNMENT_FAR = 1,
    DWRITE_PARAGRAPH_ALIGNMENT_CENTER = 2
};

enum DWRITE_WORD_WRAPPING : INT32 {
    DWRITE_WORD_WRAPPING_WRAP = 0,
    DWRITE_WORD_WRAPPING_NO_WRAP = 1,
    DWRITE_WORD_WRAPPING_EMERGENCY_BREAK = 2,
    DWRITE_WORD_WRAPPING_WHOLE_WORD = 3,
    DWRITE_WORD_WRAPPING_CHARACTER = 4
};

enum DWRITE_READING_DIRECTION : INT32 {
    DWRITE_READING_DIRECTION_LEFT_TO_RIGHT = 0,
    DWRITE_READING_DIRECTION_RIGHT_TO_LEFT = 1,
    DWRITE_READING_DIRECTION_TOP_TO_BOTTOM = 2,
    DWRITE_READING_DIRECTION_BOTTOM_TO_TOP = 3
};

enum DWRITE_FLOW_DIRECTION : INT32 {
    DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM = 0,
    DWRITE_FLOW_DIRECTION_BOTTOM_TO_TOP = 1,
    DWRITE_FLOW_DIRECTION_LEFT_TO_RIGHT = 2,
    DWRITE_FLOW_DIRECTION_RIGHT_TO_LEFT = 3
};

enum DWRITE_LINE_SPACING_METHOD : INT32 {
    DWRITE_LINE_SPACING_METHOD_DEFAULT = 0,
    DWRITE_LINE_SPACING_METHOD_UNIFORM = 1,
    DWRITE_LINE_SPACING_METHOD_PROPORTIONAL = 2
};

enum DWRITE_TRIMMING_GRANULARITY : INT32 {
    DWRITE_TRIMMING_GRANULARITY_NONE = 0,
    DWRITE_TRIMMING_GRANULARITY_CHARACTER = 1,
    DWRITE_TRIMMING_GRANULARITY_WORD = 2
};

enum DWRITE_BREAK_CONDITION : INT32 {
    DWRITE_BREAK_CONDITION_NEUTRAL = 0,
    DWRITE_BREAK_CONDITION_CAN_BREAK = 1,
    DWRITE_BREAK_CONDITION_MAY_NOT_BREAK = 2,
    DWRITE_BREAK_CONDITION_MUST_BREAK = 3
};

/// A font feature's OpenType tag: its four letters, the first in the lowest byte.
enum DWRITE_FONT_FEATURE_TAG : UINT32 {
    DWRITE_FONT_FEATURE_TAG_CONTEXTUAL_ALTERNATES = 0x746c6163,
    DWRITE_FONT_FEATURE_TAG_CONTEXTUAL_LIGATURES = 0x67696c63,
    DWRITE_FONT_FEATURE_TAG_DISCRETIONARY_LIGATURES = 0x67696c64,
    DWRITE_FONT_FEATURE_TAG_FRACTIONS = 0x63617266,
    DWRITE_FONT_FEATURE_TAG_KERNING = 0x6e72656b,
    DWRITE_FONT_FEATURE_TAG_LINING_FIGURES = 0x6d756e6c,
    DWRITE_FONT_FEATURE_TAG_OLD_STYLE_FIGURES = 0x6d756e6f,
    DWRITE_FONT_FEATURE_TAG_PROPORTIONAL_FIGURES = 0x6d756e70,
    DWRITE_FONT_FEATURE_TAG_REQUIRED_LIGATURES = 0x67696c72,
    DWRITE_FONT_FEATURE_TAG_SLASHED_ZERO = 0x6f72657a,
    DWRITE_FONT_FEATURE_TAG_SMALL_CAPITALS = 0x70636d73,
    DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES = 0x6167696c,
    DWRITE_FONT_FEATURE_TAG_STYLISTIC_SET_1 = 0x31307373,
    DWRITE_FONT_FEATURE_TAG_SUBSCRIPT = 0x73627573,
    DWRITE_FONT_FEATURE_TAG_SUPERSCRIPT = 0x73707573,
    DWRITE_FONT_FEATURE_TAG_TABULAR_FIGURES = 0x6d756e74
};

/// A feature and its value: 0 off, 1 on, more where the feature has alternatives.
struct DWRITE_FONT_FEATURE {
    DWRITE_FONT_FEATURE_TAG nameTag;
    UINT32 parameter;
};

/// A stretch of text positions, in UTF-16 units.
struct DWRITE_TEXT_RANGE {
    UINT32 startPosition;
    UINT32 length;
};

struct DWRITE_TRIMMING {
    DWRITE_TRIMMING_GRANULARITY granularity;
    /// A character from whose `delimiterCount`-th occurrence from the end the text is kept; 0: none.
    UINT32 delimiter;
    UINT32 delimiterCount;
};

/// An affine transform, as D2D_MATRIX_3X2_F.
struct DWRITE_MATRIX {
    FLOAT m11;
    FLOAT m12;
    FLOAT m21;
    FLOAT m22;
    FLOAT dx;
    FLOAT dy;
};

/// One line. Lengths in text positions, the first includes the other two.
struct DWRITE_LINE_METRICS {
    UINT32 length;
    /// Includes the newline.
    UINT32 trailingWhitespaceLength;
    UINT32 newlineLength;
    FLOAT height;
    /// From the line's top down to its baseline.
    FLOAT baseline;
    BOOL isTrimmed;
};

/// The text that does not come apart: a base with its marks, a ligature, a newline.
struct DWRITE_CLUSTER_METRICS {
    FLOAT width;
    /// Text positions.
    UINT16 length;
    UINT16 canWrapLineAfter : 1;
    UINT16 isWhitespace : 1;
    UINT16 isNewline : 1;
    UINT16 isSoftHyphen : 1;
    UINT16 isRightToLeft : 1;
    UINT16 padding : 11;
};

/// A layout's box of advances and line heights, relative to its origin, y down.
struct DWRITE_TEXT_METRICS {
    FLOAT left;
    FLOAT top;
    /// Of the widest line without its trailing whitespace.
    FLOAT width;
    FLOAT widthIncludingTrailingWhitespace;
    FLOAT height;
    FLOAT layoutWidth;
    FLOAT layoutHeight;
    UINT32 maxBidiReorderingDepth;
    UINT32 lineCount;
};

/// How far ink stands out of the layout's box on each side; negative inside it.
struct DWRITE_OVERHANG_METRICS {
    FLOAT left;
    FLOAT top;
    FLOAT right;
    FLOAT bottom;
};

struct DWRITE_INLINE_OBJECT_METRICS {
    FLOAT width;
    FLOAT height;
    /// From the object's top down to the baseline it sits on.
    FLOAT baseline;
    BOOL supportsSideways;
};

/// Where a hit or a stretch of text lies, relative to the layout's origin, y down.
struct DWRITE_HIT_TEST_METRICS {
    UINT32 textPosition;
    UINT32 length;
    FLOAT left;
    FLOAT top;
    FLOAT width;
    FLOAT height;
    UINT32 bidiLevel;
    BOOL isText;
    BOOL isTrimmed;
};

/// A bar under a stretch of text, relative to its baseline's left end, y down.
struct DWRITE_UNDERLINE {
    FLOAT width;
    FLOAT thickness;
    /// From the baseline down to the bar's top.
    FLOAT offset;
    /// The tallest cap height among the runs it covers.
    FLOAT runHeight;
    DWRITE_READING_DIRECTION readingDirection;
    DWRITE_FLOW_DIRECTION flowDirection;
    const WCHAR* localeName;
    DWRITE_MEASURING_MODE measuringMode;
};

struct DWRITE_STRIKETHROUGH {
    FLOAT width;
    FLOAT thickness;
    /// From the baseline down to the bar's top; negative above the baseline.
    FLOAT offset;
    DWRITE_READING_DIRECTION readingDirection;
    DWRITE_FLOW_DIRECTION flowDirection;
    const WCHAR* localeName;
    DWRITE_MEASURING_MODE measuringMode;
};

struct IDWriteFontFace;

/// Glyphs of one face and size on one baseline. Arrays are in logical order, have
/// `glyphCount` elements and belong to the giver.
struct DWRITE_GLYPH_RUN {
    IDWriteFontFace* fontFace;
    FLOAT fontEmSize;
    UINT32 glyphCount;
    const UINT16* glyphIndices;
    const FLOAT* glyphAdvances;
    /// May be null: no offsets.
    const DWRITE_GLYPH_OFFSET* glyphOffsets;
    BOOL isSideways;
    /// Odd: right to left, and the origin is the run's right end.
    UINT32 bidiLevel;
};

/// The text that a glyph run draws.
struct DWRITE_GLYPH_RUN_DESCRIPTION {
    const WCHAR* localeName;
    const WCHAR* string;
    UINT32 stringLength;
    /// For each text position of the run the first glyph of its cluster.
    const UINT16* clusterMap;
    UINT32 textPosition;
};
