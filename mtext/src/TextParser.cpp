#include <mtext/MText.h>

#include "TextReader.h"

namespace mtext {

namespace {

class SingleLineReader final : private TextReader {
public:
    SingleLineReader(std::wstring_view content, const Defaults& defaults) : TextReader(content, defaults) {
        ParagraphState paragraph;
        paragraph.alignment = defaults.alignment;
        m_builder.setParagraph(paragraph);
    }

    Result read() {
        while (!m_cursor.atEnd()) {
            if (!readSpecial()) {
                readPlainText(L"%^\\");
            }
        }
        return finish();
    }

private:
    void onLineBreak() override { append(L" "); }
};

} // namespace

Result parseText(std::wstring_view content, const Defaults& defaults) {
    return SingleLineReader(content, defaults).read();
}

} // namespace mtext
