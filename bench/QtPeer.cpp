#include "QtPeer.h"

#include <algorithm>
#include <memory>

#include <Common/Utf.h>
#include <QFont>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QString>
#include <QTextLayout>

namespace bench {

namespace {

class Qt {
public:
    Qt() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<QGuiApplication>(m_argumentCount, m_arguments);
        m_font = QFont(QString::fromWCharArray(family));
        m_font.setPixelSize(static_cast<int>(emSize));
        m_font.setHintingPreference(QFont::PreferNoHinting);
    }

    void ask(Question question, const std::u16string& paragraph, double wrapWidth, Sums& sums) const {
        const QString text(reinterpret_cast<const QChar*>(paragraph.data()), static_cast<qsizetype>(paragraph.size()));
        QTextLayout layout(text, m_font);
        QTextOption option;
        option.setWrapMode(wrapWidth > 0.0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
        layout.setTextOption(option);
        const QSizeF size = breakLines(layout, wrapWidth, static_cast<int>(paragraph.size()));
        if (question == Question::Ink) {
            const QRectF ink = inkOf(layout);
            sums.width += ink.width();
            sums.height += ink.height();
            return;
        }
        sums.width += size.width();
        sums.height += size.height();
        if (question == Question::Glyphs) {
            addGlyphs(layout, sums);
        }
    }

private:
    static QSizeF breakLines(QTextLayout& layout, double wrapWidth, int columns) {
        QSizeF size(0.0, 0.0);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            if (wrapWidth > 0.0) {
                line.setLineWidth(wrapWidth);
            } else {
                line.setNumColumns(columns + 1);
            }
            line.setPosition(QPointF(0.0, size.height()));
            size = QSizeF(std::max(size.width(), line.naturalTextWidth()), size.height() + line.height());
        }
        layout.endLayout();
        return size;
    }

    static QRectF inkOf(const QTextLayout& layout) {
        QRectF ink;
        for (const QGlyphRun& run : layout.glyphRuns()) {
            const QRawFont font = run.rawFont();
            const QList<quint32> glyphs = run.glyphIndexes();
            const QList<QPointF> places = run.positions();
            for (qsizetype i = 0; i < glyphs.size(); ++i) {
                ink |= font.boundingRect(glyphs[i]).translated(places[i]);
            }
        }
        return ink;
    }

    static void addGlyphs(const QTextLayout& layout, Sums& sums) {
        for (const QGlyphRun& run : layout.glyphRuns()) {
            const QList<QPointF> places = run.positions();
            for (const QPointF& place : places) {
                sums.positions += place.x();
            }
            sums.glyphs += places.size();
        }
    }

    int m_argumentCount = 1;
    char m_name[6] = "bench";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QGuiApplication> m_application;
    QFont m_font;
};

} // namespace

Peer qtPeer() {
    return {"Qt", [qt = std::make_shared<Qt>()](Question question, const PeerText& paragraph, double wrapWidth,
                                                Sums& sums) { qt->ask(question, paragraph.utf16, wrapWidth, sums); }};
}

} // namespace bench
