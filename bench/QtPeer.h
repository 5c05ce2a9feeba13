#pragma once

#include "Peers.h"

namespace bench {

/// Qt's QTextLayout, drawing nowhere. Its ink boxes are rounded out to pixels.
Peer qtPeer();

} // namespace bench
