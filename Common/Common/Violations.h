#pragma once

#include "FontEngineExport.h"

#include <boost/static_string/static_string.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace common {

/// The longest message of a violation, in narrow characters.
inline constexpr std::size_t maxViolationMessageLength = 1024;

/// A broken rule inside the program. Says only where: "Assertion violation: path(line)".
///
/// Deliberately not a standard exception: a handler that answers for failed calls (std::exception) must not swallow a
/// fault of the program itself. The message is held inline, so that raising a violation allocates nothing for it.
class FONTENGINE_API EAssertionViolation {
public:
    /// `sourcePath`: the source file, as COMMON_SOURCE_PATH gives it; `line` in decimal, with a sign if negative.
    /// Throws std::length_error "count > max_size() - size()" when the message would not fit.
    EAssertionViolation(std::string_view sourcePath, std::int32_t line);
    EAssertionViolation(const EAssertionViolation&) = default;
    EAssertionViolation& operator=(const EAssertionViolation&) = default;
    virtual ~EAssertionViolation();

    boost::static_string<maxViolationMessageLength> message;
};

/// A check in the middle of an operation failed. Same message as its base.
class FONTENGINE_API ECheckViolation : public EAssertionViolation {
public:
    using EAssertionViolation::EAssertionViolation;
    ECheckViolation(const ECheckViolation&) = default;
    ECheckViolation& operator=(const ECheckViolation&) = default;
    ~ECheckViolation() override;
};

/// An operation was called with something it does not accept. Same message as its base.
class FONTENGINE_API EPreconditionViolation : public EAssertionViolation {
public:
    using EAssertionViolation::EAssertionViolation;
    EPreconditionViolation(const EPreconditionViolation&) = default;
    EPreconditionViolation& operator=(const EPreconditionViolation&) = default;
    ~EPreconditionViolation() override;
};

/// What the guards below call; kept out of line so that a guard costs its caller a test and nothing else.
[[noreturn]] FONTENGINE_API void throwCheckViolation(std::string_view sourcePath, std::int32_t line);
[[noreturn]] FONTENGINE_API void throwPreconditionViolation(std::string_view sourcePath, std::int32_t line);

} // namespace common
