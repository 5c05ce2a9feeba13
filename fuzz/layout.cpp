// One text layout: any text, every range attribute, inline objects of odd sizes, trimming, wrapping and widths. What it
// answers has to add up, not to change by being asked, and not to depend on widths that it had before.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <oslayer/com_ptr.h>

#include "Input.h"
#include "LayoutAnswers.h"
#include "LayoutRequest.h"

namespace {

using fuzz::Answers;
using fuzz::LayoutRequest;
using oslayer::com_ptr;

void expectThatAllTextIsThere(const Answers& answers, std::size_t length) {
    std::size_t inClusters = 0;
    for (const DWRITE_CLUSTER_METRICS& cluster : answers.clusters) {
        fuzz::require(cluster.length > 0);
        inClusters += cluster.length;
    }
    std::size_t inLines = 0;
    for (const DWRITE_LINE_METRICS& line : answers.lines) {
        fuzz::require(line.newlineLength <= line.length && line.trailingWhitespaceLength <= line.length);
        inLines += line.length;
    }
    fuzz::require(inClusters == length && inLines == length);
    fuzz::require(answers.metrics.lineCount == answers.lines.size());
}

void expectCaretsInTheText(IDWriteTextLayout& layout, std::size_t length) {
    for (std::size_t position = 0; position <= length; ++position) {
        for (const BOOL trailing : {FALSE, TRUE}) {
            FLOAT x = 0.0F;
            FLOAT y = 0.0F;
            DWRITE_HIT_TEST_METRICS hit{};
            fuzz::require(layout.HitTestTextPosition(static_cast<UINT32>(position), trailing, &x, &y, &hit) == S_OK);
            fuzz::require(hit.textPosition <= position && hit.textPosition + hit.length <= length);
            fuzz::require(position == length || position < hit.textPosition + hit.length);
            BOOL isTrailing = FALSE;
            BOOL isInside = FALSE;
            DWRITE_HIT_TEST_METRICS found{};
            fuzz::require(layout.HitTestPoint(x, y, &isTrailing, &isInside, &found) == S_OK);
            fuzz::require(found.textPosition + found.length <= length);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const LayoutRequest request(input);
    const com_ptr<IDWriteTextLayout> layout = request.create(request.width());
    if (!layout) {
        return 0;
    }
    const Answers answers = fuzz::ask(*layout);
    if (!answers.succeeded) {
        return 0;
    }
    expectThatAllTextIsThere(answers, request.text().size());
    expectCaretsInTheText(*layout, request.text().size());
    fuzz::draw(*layout);
    fuzz::require(fuzz::ask(*layout) == answers);

    const com_ptr<IDWriteTextLayout> other = request.create(request.otherWidth());
    fuzz::require(static_cast<bool>(other));
    fuzz::ask(*other);
    fuzz::require(other->SetMaxWidth(request.width()) == S_OK);
    fuzz::require(fuzz::ask(*other) == answers);
    return 0;
}
