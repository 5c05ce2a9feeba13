#include "TextLength.h"
#include <dxf/Error.h>

#include <Common/Utf.h>

namespace dxf {

void failAtTextLength(std::uint64_t line, const std::wstring& block, std::size_t limit) {
    const std::string place = block.empty() ? "" : ", in block \"" + common::utf8FromWide(block) + '"';
    throw Error(ErrorKind::TextLengthLimit, line,
                "The text at line " + std::to_string(line) + place + " is longer than the limit of " +
                    std::to_string(limit) + " characters for one text allows.");
}

} // namespace dxf
