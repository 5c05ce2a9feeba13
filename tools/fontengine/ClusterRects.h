#pragma once

#include <vector>

#include "LaidOutParagraph.h"
#include "Session.h"

namespace tool {

// The glyph clusters of a paragraph that stands in its text already, in the order of the text. A cluster's rectangle is
// that of fonts::IRichTextDocumentLayoutingFactory::createForDxfMTextsByClusters: the box of the cluster alone, one
// unit of the layout wider, its top one cap height above the baseline. A right-to-left cluster's stands where that is
// drawn; the library counts the places of such clusters to the right.
std::vector<LaidOutCluster> clustersOf(Session& session, const render::CRichTextParagraph& paragraph,
                                       const LaidOutParagraph& laidOut);

} // namespace tool
