#pragma once

#include "Peers.h"

namespace bench {

/// Pango over cairo. Its ink boxes are those of its own, in whole units of 1/1024 pixel.
Peer pangoPeer();

} // namespace bench
