#pragma once

#include <ios>
#include <memory>
#include <streambuf>

namespace tool {

// Opens what the caller has closed of standard input, output and error, so that
// no file of ours gets their numbers. Reading and writing them still fails.
void occupyStandardStreams();

// Throws InputError (UnwritableOutput) unless everything printed has reached
// standard output.
void requirePrinted();

// Where a command says what it did, while an object of this class lives: what is
// printed with std::cout.
class Summary {
public:
    enum class Target { StandardOutput, StandardError, Nowhere };

    explicit Summary(Target target);
    ~Summary();
    Summary(const Summary&) = delete;
    Summary& operator=(const Summary&) = delete;

private:
    std::unique_ptr<std::streambuf> m_nowhere;
    std::streambuf* m_before;
};

} // namespace tool
