#include <mtext/MText.h>

#include <utility>

#include <mtext/TextReader.h>

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
        Result result = m_builder.finish(m_state.style);
        result.diagnostics = std::move(m_diagnostics);
        return result;
    }

private:
    void onLineBreak() override { m_builder.append(L" ", m_state.style); }
};

} // namespace

Result parseText(std::wstring_view content, const Defaults& defaults) {
    return SingleLineReader(content, defaults).read();
}

} // namespace mtext
