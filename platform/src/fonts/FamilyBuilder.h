#pragma once

#include "fonts/FaceSource.h"
#include "fonts/FontCollection.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The faces of one family on the way to it, under the folded name they share.
struct FamilyDraft {
    std::wstring foldedName;
    std::vector<FaceSource*> sources;
};

/// Groups faces into families, ordered by name.
std::vector<FamilyDraft> groupFamilies(const std::vector<std::unique_ptr<FaceSource>>& sources);

/// Makes the family with its fonts: the real ones, the most regular first, then the
/// simulated ones.
std::unique_ptr<CFontFamily> buildFamily(CFontCollection& collection, FamilyDraft draft);

} // namespace platform
