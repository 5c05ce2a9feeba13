#include "ResidentMemory.h"

#include <fstream>
#include <limits>
#include <string>

namespace bench {

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string key; status >> key; status.ignore(std::numeric_limits<std::streamsize>::max(), '\n')) {
        if (double kilobytes = 0.0; key == "VmRSS:" && status >> kilobytes) {
            return kilobytes / 1024.0;
        }
    }
    return 0.0;
}

} // namespace bench
