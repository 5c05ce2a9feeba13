#include <Common/Exception.h>

namespace common {

EException::EException(const std::string& message) : std::runtime_error(message) {}
EException::~EException() = default;

} // namespace common
