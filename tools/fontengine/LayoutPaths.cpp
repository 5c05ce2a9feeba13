#include "LayoutPaths.h"

#include "CallPaths.h"
#include "PicturePaths.h"

namespace tool {

namespace {

void addPictures(std::vector<CallPath>& paths, const std::string& option, const std::optional<std::string>& asked,
                 const std::vector<std::string>& drawings) {
    if (!asked) {
        return;
    }
    const bool several = drawings.size() > 1;
    for (const std::string& drawing : drawings) {
        paths.push_back(
            {option, picturePath(*asked, drawing, several), CallPath::Use::Written, several ? drawing : std::string()});
    }
}

} // namespace

void checkPaths(const LayoutOptions& options) {
    std::vector<CallPath> paths;
    for (const std::string& drawing : options.drawings) {
        paths.push_back({"DRAWING", drawing, CallPath::Use::Read, {}});
    }
    if (options.fontMap) {
        paths.push_back({"--font-map", *options.fontMap, CallPath::Use::Read, {}});
    }
    if (options.json) {
        paths.push_back({"--json", *options.json, CallPath::Use::Written, {}});
    }
    addPictures(paths, "--png", options.png, options.drawings);
    addPictures(paths, "--svg", options.svg, options.drawings);
    checkPaths(paths);
    if (options.png) {
        requireEnding("--png", *options.png, ".png");
    }
    if (options.svg) {
        requireEnding("--svg", *options.svg, ".svg");
    }
}

} // namespace tool
