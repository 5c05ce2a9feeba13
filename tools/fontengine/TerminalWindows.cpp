#include "Terminal.h"

#include <cstdio>
#include <io.h>

namespace tool {

bool standardErrorIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

} // namespace tool
