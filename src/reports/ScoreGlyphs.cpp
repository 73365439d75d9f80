#include "reports/ScoreGlyphs.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>

ScoreGlyphs::ScoreGlyphs(const QFont &font, QPaintDevice &device) : m_font(font), m_device(device)
{
}

const ScoreGlyphs::Shaped &ScoreGlyphs::shaped(int score)
{
    const auto found = m_known.find(score);
    if (found != m_known.end())
        return found->second;

    Shaped result;
    QTextLayout layout(text(score), m_font, &m_device);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    result.width = line.naturalTextWidth();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    if (runs.size() == 1) {
        if (!m_rawFont.isValid())
            m_rawFont = runs.front().rawFont();
        result.usable = runs.front().rawFont() == m_rawFont;
        result.indexes = runs.front().glyphIndexes();
        for (const QPointF &position : runs.front().positions())
            result.positions.append(position - QPointF(0, line.ascent()));
    }
    return m_known.emplace(score, std::move(result)).first->second;
}

double ScoreGlyphs::width(int score)
{
    return shaped(score).width;
}

void ScoreGlyphs::Line::add(int score, QPointF origin)
{
    const Shaped &glyphs = m_glyphs.shaped(score);
    if (!glyphs.usable) {
        m_unshaped.append({score, origin});
        return;
    }
    m_indexes.append(glyphs.indexes);
    for (const QPointF &position : glyphs.positions)
        m_positions.append(origin + position);
}

void ScoreGlyphs::Line::draw(QPainter &painter)
{
    if (!m_indexes.isEmpty()) {
        QGlyphRun run;
        run.setRawFont(m_glyphs.m_rawFont);
        run.setGlyphIndexes(m_indexes);
        run.setPositions(m_positions);
        painter.drawGlyphRun(QPointF(0, 0), run);
    }
    if (!m_unshaped.isEmpty()) {
        painter.setFont(m_glyphs.m_font);
        for (const auto &[score, origin] : m_unshaped)
            painter.drawText(origin, m_glyphs.text(score));
    }
    m_indexes.clear();
    m_positions.clear();
    m_unshaped.clear();
}
