#include "Terminal.h"

#include <unistd.h>

namespace tool {

bool standardErrorIsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

} // namespace tool
