#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Layouter.h"

namespace bench {

/// A paragraph in the encodings that libraries take, so that nobody's time goes into converting.
struct PeerText {
    std::string utf8;
    std::u16string utf16;
};

/// Another library that a host could take, laying out the same paragraphs in the same font without hinting: a new
/// layout for each.
struct Peer {
    std::string name;
    std::function<void(Question question, const PeerText& paragraph, double wrapWidth, Sums& sums)> ask;
};

/// The libraries that this build was configured to compare with (FONTENGINE_BENCH_PEERS).
std::vector<Peer> peers();

} // namespace bench
