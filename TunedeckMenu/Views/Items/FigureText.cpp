#include "TunedeckMenu/Views/Items/FigureText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

FigureText::FigureText(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &FigureText::changed, this, &FigureText::measure);
}

void FigureText::layOut(QTextLayout& layout) const {
    const QFontMetricsF metrics(m_font);
    qreal widest = 0;
    for (const QChar digit : u"0123456789"_s) {
        widest = std::max(widest, metrics.horizontalAdvance(digit));
    }
    QList<QTextLayout::FormatRange> ranges;
    for (int i = 0; i < m_text.size(); ++i) {
        if (m_text[i] >= u'0' && m_text[i] <= u'9') {
            QTextCharFormat format;
            format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
            format.setFontLetterSpacing(widest - metrics.horizontalAdvance(m_text[i]));
            ranges.append({.start = i, .length = 1, .format = format});
        }
    }
    layout.setFormats(ranges);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
}

void FigureText::measure() {
    QTextLayout layout(m_text, m_font);
    layOut(layout);
    setImplicitSize(std::ceil(layout.lineAt(0).naturalTextWidth()), std::ceil(layout.boundingRect().height()));
    setBaselineOffset(layout.lineAt(0).ascent());
    update();
}

void FigureText::paint(QPainter* painter) {
    QTextLayout layout(m_text, m_font);
    layOut(layout);
    painter->setPen(m_color);
    layout.draw(painter, {});
}

} // namespace tunedeck
