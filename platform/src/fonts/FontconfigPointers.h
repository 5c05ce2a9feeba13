#pragma once

#include <memory>

#include <fontconfig/fontconfig.h>

namespace platform {

struct FontconfigDelete {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};

using ConfigPtr = std::unique_ptr<FcConfig, FontconfigDelete>;
using FontSetPtr = std::unique_ptr<FcFontSet, FontconfigDelete>;
using PatternPtr = std::unique_ptr<FcPattern, FontconfigDelete>;

} // namespace platform
