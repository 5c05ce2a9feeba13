#include <Common/OrderedContainer.h>

#include <Common/Guards.h>

#include <stdexcept>

namespace common::detail {

void requireSameSize(std::size_t items, std::size_t positions) {
    COMMON_PRECONDITION(items == positions);
}

void requirePosition(bool found) {
    COMMON_PRECONDITION(found);
}

void throwInvalidSubscript() {
    throw std::out_of_range("invalid vector subscript");
}

} // namespace common::detail
