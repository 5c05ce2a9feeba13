#include "StandardStreams.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tool {

void occupyStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) {
            // The lowest free number is this one. The wrong way round, so that its use is an error.
            static_cast<void>(open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

} // namespace tool
