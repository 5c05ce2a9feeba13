// Takes stock of many installed fonts, as a process does at its first question about any:
//   bench_many_fonts COUNT
// Prints how long that takes and how much memory it leaves behind, beside Fontconfig's reading and listing of the same
// fonts. The figures are medians of processes that start with Fontconfig's cache filled.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <dwrite.h>
#include <fontconfig/fontconfig.h>
#include <oslayer/com_ptr.h>

#include "ResidentMemory.h"
#include "support/NumberedFonts.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Figures {
    double fontconfig = 0.0;
    double collection = 0.0;
    double megabytes = 0.0;
};

void listWithFontconfig() {
    FcPattern* const all = FcPatternCreate();
    FcObjectSet* const wanted = FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX, nullptr);
    FcFontSet* const fonts = FcFontList(nullptr, all, wanted);
    FcFontSetDestroy(fonts);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(all);
}

/// What a process of its own measures and writes.
void measure() {
    Clock::time_point start = Clock::now();
    FcInit();
    listWithFontconfig();
    const double fontconfig = millisecondsSince(start);

    const double before = bench::residentMegabytes();
    start = Clock::now();
    oslayer::com_ptr<IUnknown> unknown;
    DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown);
    oslayer::com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    oslayer::com_ptr<IDWriteFontCollection> fonts;
    factory->GetSystemFontCollection(&fonts);
    const UINT32 families = fonts->GetFontFamilyCount();
    const double collection = millisecondsSince(start);
    std::cout << fontconfig << ' ' << collection << ' ' << bench::residentMegabytes() - before << ' ' << families
              << '\n';
}

Figures run(const std::string& program) {
    const auto close = [](FILE* pipe) { pclose(pipe); };
    const std::unique_ptr<FILE, decltype(close)> pipe(popen((program + " measure").c_str(), "r"), close);
    std::array<char, 256> line{};
    Figures figures;
    std::size_t families = 0;
    if (!pipe || std::fgets(line.data(), line.size(), pipe.get()) == nullptr ||
        !(std::istringstream(line.data()) >> figures.fontconfig >> figures.collection >> figures.megabytes >>
          families) ||
        families == 0) {
        throw std::runtime_error("a measuring process found no fonts");
    }
    return figures;
}

double median(std::array<Figures, 9>& all, double Figures::*figure) {
    std::nth_element(all.begin(), all.begin() + all.size() / 2, all.end(),
                     [figure](const Figures& a, const Figures& b) { return a.*figure < b.*figure; });
    return all[all.size() / 2].*figure;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "measure") {
        measure();
        return 0;
    }
    if (argc != 2) {
        std::cerr << "usage: bench_many_fonts COUNT\n";
        return 2;
    }
    const auto count = static_cast<std::size_t>(std::stoul(argv[1]));
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "bench-many-fonts";
    std::filesystem::remove_all(folder);
    platform::test::makeNumberedFonts(BENCH_FONT_DATA, folder / "fonts", count, false);
    platform::test::configureFolder(folder / "fonts", folder / "fonts.conf");
    setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);

    run(argv[0]);
    std::array<Figures, 9> all;
    std::generate(all.begin(), all.end(), [&] { return run(argv[0]); });
    const double fontconfig = median(all, &Figures::fontconfig);
    const double collection = median(all, &Figures::collection);
    std::printf("%zu fonts: read in %.1f ms (Fontconfig's own reading and listing: %.1f ms; ratio %.2f), %.1f MB\n",
                count, collection, fontconfig, collection / fontconfig, median(all, &Figures::megabytes));
    std::filesystem::remove_all(folder);
    return 0;
}
