// Scores drawn by the hundred thousand: each distinct score is shaped into
// glyphs once, and the scores of a page's table in one font and one colour go
// to the page as a single run of glyphs. A PDF of a large class is written in
// about half the time this way, and is smaller, than with one text per number.
#pragma once

#include <QFont>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

#include <unordered_map>

class QPaintDevice;
class QPainter;

class ScoreGlyphs {
public:
    // Scores in font on device.
    ScoreGlyphs(const QFont &font, QPaintDevice &device);

    // The score's text as it is shown.
    static QString text(int score) { return QString::number(score); }
    // Its width in device pixels.
    double width(int score);

    // Collects scores and draws them together.
    class Line {
    public:
        explicit Line(ScoreGlyphs &glyphs) : m_glyphs(glyphs) {}
        // The score with its baseline starting at origin (device pixels).
        void add(int score, QPointF origin);
        // Draws what was added with the painter's pen, and starts again.
        void draw(QPainter &painter);

    private:
        ScoreGlyphs &m_glyphs;
        QList<quint32> m_indexes;
        QList<QPointF> m_positions;
        QList<QPair<int, QPointF>> m_unshaped; // scores drawn as text instead
    };

private:
    struct Shaped {
        QList<quint32> indexes;
        QList<QPointF> positions; // from the left end of the baseline
        double width = 0;
        bool usable = false; // false when the text needs more than the one font
    };
    const Shaped &shaped(int score);

    QFont m_font;
    QPaintDevice &m_device;
    QRawFont m_rawFont;
    std::unordered_map<int, Shaped> m_known;
};
