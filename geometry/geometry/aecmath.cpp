#include <geometry/aecmath.h>

#include <utility>
#include <vector>

namespace aecmath {

boost::intrusive_ptr<MbRegion> createRegionByRect(const MbRect& rect) {
    std::vector<MbRegion::Contour> contours;
    if (!rect.isEmpty()) {
        contours.push_back(
            {{rect.xmin, rect.ymin}, {rect.xmax, rect.ymin}, {rect.xmax, rect.ymax}, {rect.xmin, rect.ymax}});
    }
    return new MbRegion(std::move(contours));
}

} // namespace aecmath
