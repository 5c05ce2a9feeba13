#include <Common/Violations.h>

#include <charconv>
#include <stdexcept>

namespace common {

namespace {

using Message = boost::static_string<maxViolationMessageLength>;

// The test is made here, not left to the string: its own text differs between versions of the library.
void append(Message& message, std::string_view text) {
    if (text.size() > message.max_size() - message.size()) {
        throw std::length_error("count > max_size() - size()");
    }
    message.append(text.data(), text.size());
}

} // namespace

EAssertionViolation::EAssertionViolation(std::string_view sourcePath, std::int32_t line) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof(digits), line).ptr;

    append(message, "Assertion violation: ");
    append(message, sourcePath);
    append(message, "(");
    append(message, std::string_view(digits, static_cast<std::size_t>(end - digits)));
    append(message, ")");
}

EAssertionViolation::~EAssertionViolation() = default;
ECheckViolation::~ECheckViolation() = default;
EPreconditionViolation::~EPreconditionViolation() = default;

void throwCheckViolation(std::string_view sourcePath, std::int32_t line) {
    throw ECheckViolation(sourcePath, line);
}

void throwPreconditionViolation(std::string_view sourcePath, std::int32_t line) {
    throw EPreconditionViolation(sourcePath, line);
}

} // namespace common
