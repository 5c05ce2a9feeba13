#include "StandardStreams.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include "InputError.h"

namespace tool {

namespace {

class NowhereBuffer final : public std::streambuf {
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

} // namespace

void requirePrinted() {
    // std::cout has no buffer of its own beside that of stdout.
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0 || !std::cout) {
        throw unwritable(standardStreamName, {errno == 0 ? EIO : errno, std::generic_category()});
    }
}

Summary::Summary(Target target) : m_before(std::cout.rdbuf()) {
    if (target == Target::StandardError) {
        std::cout.rdbuf(std::cerr.rdbuf());
    } else if (target == Target::Nowhere) {
        m_nowhere = std::make_unique<NowhereBuffer>();
        std::cout.rdbuf(m_nowhere.get());
    }
}

Summary::~Summary() {
    if (std::cout.rdbuf() != m_before) {
        std::cout.rdbuf(m_before); // and forgets what failed there
    }
}

} // namespace tool
