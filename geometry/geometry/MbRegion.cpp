#include <geometry/MbRegion.h>

#include <utility>

MbRegion::MbRegion(std::vector<Contour> contours) : m_contours(std::move(contours)) {}
MbRegion::~MbRegion() = default;

void MbRegion::Move(const MbVector& displacement, const void* /*tracker*/, const void* /*carrier*/) {
    for (Contour& contour : m_contours) {
        for (MbCartPoint& corner : contour) {
            corner.x += displacement.x;
            corner.y += displacement.y;
        }
    }
}

MbRect MbRegion::boundingRect() const noexcept {
    MbRect rect;
    for (const Contour& contour : m_contours) {
        for (const MbCartPoint& corner : contour) {
            rect.IncludeX(corner.x);
            rect.IncludeY(corner.y);
        }
    }
    return rect;
}
