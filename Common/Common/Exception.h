#pragma once

#include "FontEngineExport.h"

#include <stdexcept>
#include <string>

namespace common {

/// The base of all errors that report something that failed outside the program's own rules.
class FONTENGINE_API EException : public std::runtime_error {
public:
    /// `what()` returns `message` unchanged.
    explicit EException(const std::string& message);
    EException(const EException&) = default;
    EException& operator=(const EException&) = default;
    ~EException() override;
};

} // namespace common
