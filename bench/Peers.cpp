#include "Peers.h"

#include "PangoPeer.h"
#include "QtPeer.h"

namespace bench {

std::vector<Peer> peers() {
    return {pangoPeer(), qtPeer()};
}

} // namespace bench
