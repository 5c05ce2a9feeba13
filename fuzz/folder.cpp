// A folder of font files, damaged ones among them, taken in as AddFontFolder does it. That function has an effect once
// in a process, before fonts are read; its steps are taken here, each time with a configuration of its own.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <fontconfig/fontconfig.h>

#include <unistd.h>

#include "Input.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontFamily.h"
#include "fonts/FontSet.h"

namespace {

/// A folder that is gone when nobody needs it any more.
class Folder {
public:
    Folder() {
        static unsigned count = 0;
        m_path = std::filesystem::temp_directory_path() /
                 ("fuzz_folder-" + std::to_string(getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(m_path / "below");
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    void add(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }

private:
    std::filesystem::path m_path;
};

/// The input cut into files: the last byte says how many, each of the bytes before it where one ends.
void fill(const Folder& folder, const std::string& bytes) {
    static constexpr const char* names[] = {"a.ttf", "below/b.otf", "c.ttc", "d"};
    std::string rest = bytes;
    const auto takeLast = [&rest]() -> std::size_t {
        const std::size_t last = rest.empty() ? 0 : static_cast<unsigned char>(rest.back());
        rest.resize(rest.empty() ? 0 : rest.size() - 1);
        return last;
    };
    std::size_t cuts = takeLast() % std::size(names);
    std::size_t name = 0;
    for (; cuts > 0; --cuts) {
        const std::size_t length = rest.size() * takeLast() / 256;
        folder.add(names[name++], rest.substr(0, length));
        rest.erase(0, length);
    }
    folder.add(names[name], rest);
}

using ConfigPtr = std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)>;

/// A configuration without fonts, which complains where it has no place for its caches.
ConfigPtr emptyConfig(const std::filesystem::path& caches) {
    ConfigPtr config(FcConfigCreate(), &FcConfigDestroy);
    const std::string text = "<fontconfig><cachedir>" + caches.string() + "</cachedir></fontconfig>";
    fuzz::require(FcConfigParseAndLoadFromMemory(config.get(), reinterpret_cast<const FcChar8*>(text.c_str()),
                                                 FcTrue) != FcFalse);
    return config;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Folder folder;
    fill(folder, fuzz::Input(data, size).rest());
    const ConfigPtr config = emptyConfig(folder.path() / "cache");
    fuzz::require(FcConfigAppFontAddDir(config.get(), reinterpret_cast<const FcChar8*>(folder.path().c_str())) !=
                  FcFalse);
    const platform::CFontCollection collection(platform::readFontSet(config.get()));
    for (const auto& family : collection.families()) {
        fuzz::require(!family->names().empty() && !family->fonts().empty());
        for (const auto& font : family->fonts()) {
            fuzz::require(font->face().metrics().capHeight > 0);
            fuzz::require(collection.findFamily(family->names()[0].text) != nullptr);
        }
    }
    return 0;
}
