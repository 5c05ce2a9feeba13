#include "StandardStreams.h"

namespace tool {

// The C runtime gives no numbers of closed standard streams to other files.
void occupyStandardStreams() {}

} // namespace tool
