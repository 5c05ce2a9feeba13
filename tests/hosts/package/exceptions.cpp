#include <cmath>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include <Common/Violations.h>
#include <FontEngine/FontEngine.h>
#include <dxf/Drawing.h>
#include <oslayer/Errors.h>

namespace {

int failures = 0;

// Whether `act` throws what a handler for `Expected` catches.
template <class Expected, class Act>
void expectThrown(const char* what, const Act& act) {
    try {
        act();
        std::cerr << what << ": nothing was thrown\n";
    } catch (const Expected&) {
        return;
    } catch (const std::exception& error) {
        std::cerr << what << ": another exception, " << error.what() << '\n';
    } catch (...) {
        std::cerr << what << ": an exception of an unknown type\n";
    }
    ++failures;
}

} // namespace

int main() {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const auto measure = [&](float capSize) { (void)metrics->getTextRect(L"a", L"DejaVu Sans", capSize, {}); };

    expectThrown<oslayer::EOsLayerError>("a size of 0", [&] { measure(0.0F); });
    expectThrown<common::EException>("a size of 0, by its base", [&] { measure(0.0F); });
    expectThrown<std::runtime_error>("a size of 0, by the standard's", [&] { measure(0.0F); });
    expectThrown<common::ECheckViolation>("a size that is no number", [&] { measure(std::nanf("")); });
    expectThrown<common::EAssertionViolation>("a size that is no number, by its base", [&] { measure(std::nanf("")); });
    expectThrown<std::out_of_range>("a paragraph without tokens", [&] {
        std::vector<boost::intrusive_ptr<MbRegion>> bars;
        (void)metrics->getGlyphRuns({}, 0.0, 0.0, {}, bars);
    });
    expectThrown<dxf::Error>("an empty drawing", [] {
        std::istringstream nothing;
        (void)dxf::readDrawing(nothing);
    });
    expectThrown<common::EException>("an empty drawing, by its base", [] {
        std::istringstream nothing;
        (void)dxf::readDrawing(nothing);
    });
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
