#include "MTextCommand.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include <Common/Utf.h>
#include <mtext/MText.h>

#include "Session.h"

namespace tool {

ExitCode runMText(const MTextOptions& options) {
    Session session;
    mtext::Defaults defaults;
    defaults.fontFamily = common::wideFromUtf8(options.font);
    defaults.capSize = static_cast<float>(options.capSize);
    defaults.noWrap = options.width <= 0.0;
    const mtext::Result text = mtext::parse(common::wideFromUtf8(options.content), defaults);

    const std::vector<MbRect> rects = session.metrics().getParagraphRects(text.document, options.width, 0.0);
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const render::CRichTextParagraph& paragraph = text.document.paragraphs.at(static_cast<std::int32_t>(i));
        std::string shown;
        for (const render::SRichTextToken& token : paragraph.tokens) {
            shown += common::utf8FromWide(token.text);
        }
        std::printf("x %.4f to %.4f, y %.4f to %.4f  %s\n", rects[i].xmin, rects[i].xmax, rects[i].ymin, rects[i].ymax,
                    shown.c_str());
    }
    return ExitCode::Success;
}

} // namespace tool
