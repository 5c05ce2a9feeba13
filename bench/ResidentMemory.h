#pragma once

namespace bench {

/// How much memory this process holds, in MB.
double residentMegabytes();

} // namespace bench
