#include <functional>
#include <limits>
#include <stdexcept>
#include <string>

#include "../RealFonts.h"

namespace {

using fonts::SParagraphLayoutOptions;

// A paragraph of one token, "Hello".
struct BadOption {
    const char* message;
    std::function<void(SParagraphLayoutOptions&)> set;
};

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

SParagraphLayoutOptions withBox(render::TextRange range, double width = 1.0) {
    SParagraphLayoutOptions options;
    fonts::SInlineBox box;
    box.range = range;
    box.width = width;
    options.inlineBoxes = {box};
    return options;
}

class ParagraphLayoutOptions : public RealFontsTest, public testing::WithParamInterface<BadOption> {};

TEST_P(ParagraphLayoutOptions, AreRefusedWithWhatTheyMayBe) {
    SParagraphLayoutOptions options;
    GetParam().set(options);
    try {
        static_cast<void>(fonts::CParagraphLayout::make(testdocuments::makeParagraph(L"Hello"), *engine, options));
        FAIL() << "taken";
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(std::string("CParagraphLayout: ") + GetParam().message, error.what());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, ParagraphLayoutOptions,
    testing::Values(
        BadOption{"maxWidth is out of its range: give a width, or 0 for none",
                  [](auto& o) { o.maxWidth = notANumber; }},
        BadOption{"maxHeight is out of its range: give a height, or 0 for none",
                  [](auto& o) { o.maxHeight = infinite; }},
        BadOption{"tabStopWidth is out of its range: give more than 0", [](auto& o) { o.tabStopWidth = 0.0; }},
        BadOption{"lineSpacing.pitch is out of its range: give 0 or more", [](auto& o) { o.lineSpacing.pitch = -1.0; }},
        BadOption{"baselineGrid is out of its range: give 0 or more", [](auto& o) { o.baselineGrid = notANumber; }},
        BadOption{"runFormats is out of its range: give one for each token, or none",
                  [](auto& o) { o.runFormats.resize(2); }},
        BadOption{"runFormats[0].widthFactor is out of its range: give more than 0",
                  [](auto& o) {
                      o.runFormats.resize(1);
                      o.runFormats[0].widthFactor = 0.0;
                  }},
        BadOption{"runFormats[0].obliqueAngle is out of its range: give -85 to 85 degrees",
                  [](auto& o) {
                      o.runFormats.resize(1);
                      o.runFormats[0].obliqueAngle = 90.0;
                  }},
        BadOption{"runFormats[0].tracking is out of its range: give a number",
                  [](auto& o) {
                      o.runFormats.resize(1);
                      o.runFormats[0].tracking = infinite;
                  }},
        BadOption{"runFormats[0].baselineShift is out of its range: give a number",
                  [](auto& o) {
                      o.runFormats.resize(1);
                      o.runFormats[0].baselineShift = notANumber;
                  }},
        BadOption{"runFormats[0].features: tag \"lig\" is out of its range: give four ASCII characters",
                  [](auto& o) {
                      o.runFormats.resize(1);
                      o.runFormats[0].features = {{"lig", 1}};
                  }},
        BadOption{"inlineBoxes[0].range is out of its range: give text of the paragraph, behind the box before",
                  [](auto& o) {
                      o = withBox({4, 2});
                  }},
        BadOption{"inlineBoxes[0].range is out of its range: give text of the paragraph, behind the box before",
                  [](auto& o) {
                      o = withBox({4, 0});
                  }},
        BadOption{"inlineBoxes[1].range is out of its range: give text of the paragraph, behind the box before",
                  [](auto& o) {
                      o = withBox({0, 2});
                      o.inlineBoxes.push_back(o.inlineBoxes[0]);
                  }},
        BadOption{"inlineBoxes[0].width is out of its range: give 0 or more",
                  [](auto& o) {
                      o = withBox({0, 1}, -1.0);
                  }},
        BadOption{"inlineBoxes[0].ascent is out of its range: give a number",
                  [](auto& o) {
                      o = withBox({0, 1});
                      o.inlineBoxes[0].ascent = infinite;
                  }},
        BadOption{"inlineBoxes[0].descent is out of its range: give a number", [](auto& o) {
                      o = withBox({0, 1});
                      o.inlineBoxes[0].descent = notANumber;
                  }}));

} // namespace
