#pragma once

#include "MbCartPoint.h"
#include "MbRect.h"
#include "MbRefItem.h"
#include "MbVector.h"
#include <Common/FontEngineExport.h>

#include <vector>

/// A region of the plane, bounded by closed polygons. Made on the heap and held by boost::intrusive_ptr.
class FONTENGINE_API MbRegion : public MbRefItem {
public:
    /// The corners of one closed polygon; the last is joined to the first.
    using Contour = std::vector<MbCartPoint>;

    explicit MbRegion(std::vector<Contour> contours);

    /// Displaces the whole region. The two further arguments are the geometric kernel's: what tracks a copied
    /// region's curves and what carries them. Polygons need neither; both may be null.
    virtual void Move(const MbVector& displacement, const void* tracker = nullptr, const void* carrier = nullptr);

    /// The polygons, for whoever draws the region.
    [[nodiscard]] const std::vector<Contour>& contours() const noexcept { return m_contours; }
    /// The smallest rectangle around all polygons; empty for a region without corners.
    [[nodiscard]] MbRect boundingRect() const noexcept;

protected:
    ~MbRegion() override;

private:
    std::vector<Contour> m_contours;
};
