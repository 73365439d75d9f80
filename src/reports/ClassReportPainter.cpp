#include "reports/ClassReportPainter.h"

#include "reports/HeatScale.h"
#include "reports/PrintStyle.h"
#include "reports/ScoreGlyphs.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

using PrintStyle::text;

// Sizes in points.
constexpr double Padding = 3;
constexpr double NameShare = 0.21; // of the printable width
constexpr double TitleGap = 6;
constexpr double LegendHeight = 44;
constexpr double TableGap = 16;
constexpr double FooterHeight = 16;
constexpr double Hairline = 0.5;
constexpr double FrameWidth = 1.4;
constexpr double InnerFrameWidth = 0.9;
constexpr double LegendGap = 22;

} // namespace

ClassReportPainter::ClassReportPainter(QPagedPaintDevice &device, const ClassReport &report)
    : m_device(device), m_report(report), m_titleFont(PrintStyle::font(20, true)),
      m_textFont(PrintStyle::font(9.5)), m_headingFont(PrintStyle::font(13, true)),
      m_captionFont(PrintStyle::font(9, true)), m_nameFont(PrintStyle::font(9)),
      m_highFont(PrintStyle::font(11, true)), m_lastFont(PrintStyle::font(7)),
      m_footerFont(PrintStyle::font(7.5)), m_highGlyphs(m_highFont, device),
      m_lastGlyphs(m_lastFont, device), m_lists(device, report.lists, FooterHeight)
{
    for (std::size_t step = 0; step < m_palette.size(); ++step) {
        const QColor fill = heatColour(static_cast<double>(step) / (m_palette.size() - 1));
        m_palette[step] = {fill, textColourOn(fill) == QColor(Qt::black)};
    }
    measure();
}

std::size_t ClassReportPainter::shadeStep(double shade) const
{
    const double step = std::lround(std::clamp(shade, 0.0, 1.0) * (m_palette.size() - 1));
    return static_cast<std::size_t>(step);
}

void ClassReportPainter::measure()
{
    m_scale = std::max(1, m_device.logicalDpiY()) / 72.0;
    m_width = m_device.width() / m_scale;
    m_height = m_device.height() / m_scale;
    m_nameWidth = std::round(m_width * NameShare);
    m_cellWidth = (m_width - m_nameWidth) / LevelCount;

    auto points = [this](double pixels) { return pixels / m_scale; };
    const QFontMetricsF name(m_nameFont, &m_device);
    const QFontMetricsF high(m_highFont, &m_device);
    const QFontMetricsF last(m_lastFont, &m_device);
    m_nameLine = points(name.lineSpacing());
    m_highAscent = points(high.ascent());
    m_highHeight = points(high.height());
    m_lastAscent = points(last.ascent());
    m_minRowHeight = points(high.height() + last.height()) + 2 * Padding;

    // The names are the same in every table: wrapped once, at word boundaries
    // where there are any and anywhere in a word too long for a line.
    const std::size_t students = m_report.tables.empty() ? 0 : m_report.tables.front().rows.size();
    m_nameLines.assign(students, QStringList());
    m_measures.rowHeights.assign(students, m_minRowHeight);
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const double lineWidth = (m_nameWidth - 2 * Padding) * m_scale;
    for (std::size_t i = 0; i < students; ++i) {
        const QString full = text(m_report.tables.front().rows[i].name);
        QTextLayout layout(full, m_nameFont, &m_device);
        layout.setTextOption(wrapping);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(lineWidth);
            m_nameLines[i].append(full.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
        const double height = m_nameLines[i].size() * m_nameLine + 2 * Padding;
        m_measures.rowHeights[i] = std::max(m_minRowHeight, height);
    }

    const QFontMetricsF title(m_titleFont, &m_device);
    const QFontMetricsF body(m_textFont, &m_device);
    m_measures.bodyHeight = m_height - FooterHeight;
    m_measures.titleHeight =
        points(title.lineSpacing() + body.lineSpacing()) + 2 * TitleGap + LegendHeight + TableGap;
    m_measures.headingHeight = points(QFontMetricsF(m_headingFont, &m_device).lineSpacing()) + 6;
    m_measures.headerHeight = points(QFontMetricsF(m_captionFont, &m_device).height()) + 8;
    m_measures.tableGap = TableGap;
    m_pagination = paginateReport(m_measures, m_report.tables.size());
}

bool ClassReportPainter::paint()
{
    QPainter painter;
    if (!painter.begin(&m_device))
        return false;
    for (int page = 0; page < pageCount(); ++page) {
        if (page > 0 && !m_device.newPage())
            return false;
        paintPage(painter, page);
    }
    return painter.end();
}

void ClassReportPainter::paintPage(QPainter &painter, int index)
{
    if (index >= heatMapPages()) {
        m_lists.paintPage(painter, index - heatMapPages());
        paintFooter(painter, index);
        return;
    }
    if (index == 0) {
        paintTitle(painter);
        if (m_report.tables.empty())
            paintEmptyNote(painter);
    }
    for (const TableSegment &segment : m_pagination.pages[index].segments)
        paintSegment(painter, segment);
    paintFooter(painter, index);
}

void ClassReportPainter::paintTitle(QPainter &painter)
{
    const QFontMetricsF title(m_titleFont, &m_device);
    const QFontMetricsF body(m_textFont, &m_device);
    painter.setPen(Qt::black);
    painter.setFont(m_titleFont);
    painter.drawText(at(0, title.ascent() / m_scale),
                     title.elidedText(text(m_report.title), Qt::ElideRight, m_width * m_scale));
    double y = title.lineSpacing() / m_scale + TitleGap;
    const QString students = m_report.studentCount == 1
                                 ? QStringLiteral("1 student")
                                 : QStringLiteral("%1 students").arg(m_report.studentCount);
    painter.setFont(m_textFont);
    painter.setPen(PrintStyle::QuietText);
    painter.drawText(at(0, y + body.ascent() / m_scale),
                     text(m_report.date) + QStringLiteral("  \u00b7  ") + students);
    y += body.lineSpacing() / m_scale + TitleGap;
    if (!m_report.tables.empty())
        paintLegend(painter, y);
}

void ClassReportPainter::paintLegend(QPainter &painter, double top)
{
    const double cellHeight = m_minRowHeight;
    const QFontMetricsF body(m_textFont, &m_device);
    double x = 0;
    // A caption of two lines beside a sample; the next sample follows it.
    auto caption = [&](const QString &words) {
        const QRectF space = box(x, top, 1000, cellHeight);
        const QRectF used = body.boundingRect(space, Qt::AlignLeft | Qt::AlignVCenter, words);
        painter.setFont(m_textFont);
        painter.setPen(Qt::black);
        painter.drawText(space, Qt::AlignLeft | Qt::AlignVCenter, words);
        x += used.width() / m_scale + LegendGap;
    };

    // A cell: the High large, the Last small beneath it.
    const QColor sample = heatColour(0.5);
    painter.fillRect(box(x, top, m_cellWidth, cellHeight), sample);
    const double blockTop = top + Padding;
    painter.setPen(textColourOn(sample));
    painter.setFont(m_highFont);
    constexpr int High = 23;
    constexpr int Last = 18;
    painter.drawText(
        at(x + (m_cellWidth - m_highGlyphs.width(High) / m_scale) / 2, blockTop + m_highAscent),
        m_highGlyphs.text(High));
    painter.setFont(m_lastFont);
    painter.drawText(at(x + (m_cellWidth - m_lastGlyphs.width(Last) / m_scale) / 2,
                        blockTop + m_highHeight + m_lastAscent),
                     m_lastGlyphs.text(Last));
    x += m_cellWidth + Padding * 2;
    caption(QStringLiteral("High score, large\nLast score, small"));

    // The scale, from the lowest High at a level to the highest.
    const double barWidth = 4 * m_cellWidth;
    const double barHeight = cellHeight * 0.5;
    QLinearGradient gradient(at(x, 0), at(x + barWidth, 0));
    for (int step = 0; step <= 10; ++step)
        gradient.setColorAt(step / 10.0, heatColour(step / 10.0));
    painter.fillRect(box(x, top, barWidth, barHeight), gradient);
    painter.setFont(m_textFont);
    painter.setPen(Qt::black);
    const QRectF under = box(x, top + barHeight, barWidth, cellHeight - barHeight);
    painter.drawText(under, Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("lowest"));
    painter.drawText(under, Qt::AlignRight | Qt::AlignBottom, QStringLiteral("highest"));
    x += barWidth + Padding * 2;
    caption(QStringLiteral("High, against the class's\nHighs at the same level"));

    // The student's own level, and a level without results.
    paintOwnLevelFrame(painter, x, top, cellHeight);
    x += m_cellWidth + Padding * 2;
    caption(QStringLiteral("the student's\nown level"));
    painter.setPen(QPen(PrintStyle::GridColour, Hairline * m_scale));
    painter.drawRect(box(x, top, m_cellWidth, cellHeight));
    x += m_cellWidth + Padding * 2;
    caption(QStringLiteral("no results\nyet"));
}

void ClassReportPainter::paintOwnLevelFrame(QPainter &painter, double left, double top,
                                            double height)
{
    // Black outside and white inside, so that it shows on the lightest cell and
    // on the darkest alike, in colour or in grey.
    painter.setBrush(Qt::NoBrush);
    double inset = FrameWidth / 2;
    painter.setPen(QPen(Qt::black, FrameWidth * m_scale));
    painter.drawRect(box(left + inset, top + inset, m_cellWidth - 2 * inset, height - 2 * inset));
    inset = FrameWidth + InnerFrameWidth / 2;
    painter.setPen(QPen(Qt::white, InnerFrameWidth * m_scale));
    painter.drawRect(box(left + inset, top + inset, m_cellWidth - 2 * inset, height - 2 * inset));
}

void ClassReportPainter::paintEmptyNote(QPainter &painter)
{
    painter.setFont(m_textFont);
    painter.setPen(Qt::black);
    const QString note = m_report.studentCount == 0
                             ? QStringLiteral("The class has no students yet.")
                             : QStringLiteral("No student has a result yet.");
    painter.drawText(at(0, m_measures.titleHeight - TableGap), note);
}

void ClassReportPainter::paintSegment(QPainter &painter, const TableSegment &segment)
{
    const SubjectTable &table = m_report.tables[segment.table];
    const QFontMetricsF heading(m_headingFont, &m_device);
    painter.setPen(Qt::black);
    painter.setFont(m_headingFont);
    QString title = text(table.subject);
    if (segment.continued)
        title += QStringLiteral(" (continued)");
    painter.drawText(at(0, segment.top + heading.ascent() / m_scale), title);

    // The captions, repeated on every page the table reaches.
    const double headerTop = segment.top + m_measures.headingHeight;
    const double headerHeight = m_measures.headerHeight;
    painter.fillRect(box(0, headerTop, m_width, headerHeight), PrintStyle::HeaderFill);
    painter.setFont(m_captionFont);
    painter.drawText(box(Padding, headerTop, m_nameWidth, headerHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Student"));
    for (int level = 0; level < LevelCount; ++level) {
        const QString caption = QStringLiteral("Level ") + text(levelText(level));
        painter.drawText(box(cellLeft(level), headerTop, m_cellWidth, headerHeight),
                         Qt::AlignCenter, caption);
    }
    paintCells(painter, table, segment, headerTop + headerHeight);
}

void ClassReportPainter::paintCells(QPainter &painter, const SubjectTable &table,
                                    const TableSegment &segment, double top)
{
    const std::vector<double> &heights = m_pagination.rowHeights;
    const std::size_t end = segment.firstRow + segment.rowCount;

    // Backgrounds first, all cells of a shade at once, and the names; then the
    // grid over them, the numbers one font and one colour at a time, and the
    // frames of the students' own levels.
    for (std::vector<QRectF> &cells : m_shadedCells)
        cells.clear();
    double y = top;
    for (std::size_t i = segment.firstRow; i < end; ++i) {
        for (int level = 0; level < LevelCount; ++level) {
            const ReportCell &cell = table.rows[i].cells[level];
            if (cell.hasResult)
                m_shadedCells[shadeStep(cell.shade)].push_back(
                    box(cellLeft(level), y, m_cellWidth, heights[i]));
        }
        y += heights[i];
    }
    painter.setPen(Qt::NoPen);
    for (std::size_t step = 0; step < m_palette.size(); ++step) {
        if (m_shadedCells[step].empty())
            continue;
        painter.setBrush(m_palette[step].fill);
        painter.drawRects(m_shadedCells[step].data(), static_cast<int>(m_shadedCells[step].size()));
    }
    painter.setBrush(Qt::NoBrush);

    painter.setFont(m_nameFont);
    const QFontMetricsF name(m_nameFont, &m_device);
    y = top;
    for (std::size_t i = segment.firstRow; i < end; ++i) {
        const ReportRow &row = table.rows[i];
        const QStringList &lines = m_nameLines[i];
        const double linesHeight = lines.size() * m_nameLine;
        double lineTop = y + std::max(Padding, (heights[i] - linesHeight) / 2);
        painter.setPen(row.name.empty() ? PrintStyle::QuietText : Qt::black);
        if (row.name.empty())
            painter.drawText(at(Padding, lineTop + name.ascent() / m_scale),
                             QStringLiteral("(no name)"));
        painter.save();
        painter.setClipRect(box(0, y, m_nameWidth, heights[i]));
        for (const QString &line : lines) {
            painter.drawText(at(Padding, lineTop + name.ascent() / m_scale), line);
            lineTop += m_nameLine;
        }
        painter.restore();
        y += heights[i];
    }
    const double bottom = y;

    painter.setPen(QPen(PrintStyle::GridColour, Hairline * m_scale));
    y = top;
    for (std::size_t i = segment.firstRow; i < end; ++i) {
        y += heights[i];
        painter.drawLine(at(0, y), at(m_width, y));
    }
    for (int level = 0; level <= LevelCount; ++level)
        painter.drawLine(at(cellLeft(level), top - m_measures.headerHeight),
                         at(cellLeft(level), bottom));

    // The High and the Last of a cell, one above the other, centred as a block.
    // All of a font's numbers in one colour go out together.
    const double block = m_minRowHeight - 2 * Padding;
    auto numbers = [&](ScoreGlyphs &glyphs, bool high) {
        ScoreGlyphs::Line onLight(glyphs);
        ScoreGlyphs::Line onDark(glyphs);
        double rowTop = top;
        for (std::size_t i = segment.firstRow; i < end; ++i) {
            const double blockTop = rowTop + (heights[i] - block) / 2;
            const double baseline =
                high ? blockTop + m_highAscent : blockTop + m_highHeight + m_lastAscent;
            for (int level = 0; level < LevelCount; ++level) {
                const ReportCell &cell = table.rows[i].cells[level];
                if (!cell.hasResult)
                    continue;
                const int score = high ? cell.high : cell.last;
                const double left =
                    cellLeft(level) + (m_cellWidth - glyphs.width(score) / m_scale) / 2;
                (m_palette[shadeStep(cell.shade)].darkText ? onLight : onDark)
                    .add(score, at(left, baseline));
            }
            rowTop += heights[i];
        }
        painter.setPen(Qt::black);
        onLight.draw(painter);
        painter.setPen(Qt::white);
        onDark.draw(painter);
    };
    numbers(m_highGlyphs, true);
    numbers(m_lastGlyphs, false);

    y = top;
    for (std::size_t i = segment.firstRow; i < end; ++i) {
        paintOwnLevelFrame(painter, cellLeft(table.rows[i].level), y, heights[i]);
        y += heights[i];
    }
}

void ClassReportPainter::paintFooter(QPainter &painter, int index)
{
    const double top = m_height - FooterHeight;
    const QRectF line = box(0, top, m_width, FooterHeight);
    painter.setFont(m_footerFont);
    painter.setPen(PrintStyle::QuietText);
    // The legend in a line, for a page read on its own, in the middle; the
    // title on the left is shortened rather than run into it.
    QString key;
    if (index > 0 && index < heatMapPages() && !m_report.tables.empty())
        key = QStringLiteral("large: High  \u00b7  small: Last  \u00b7  darker: a higher High at "
                             "that level  \u00b7  framed: own level");
    const QFontMetricsF metrics(m_footerFont, &m_device);
    const QString page = QStringLiteral("Page %1 of %2").arg(index + 1).arg(pageCount());
    const double room =
        key.isEmpty() ? line.width() - metrics.horizontalAdvance(page) - TitleGap * m_scale
                      : (line.width() - metrics.horizontalAdvance(key)) / 2 - TitleGap * m_scale;
    painter.drawText(line, Qt::AlignRight | Qt::AlignBottom, page);
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignBottom, key);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignBottom,
                     metrics.elidedText(text(m_report.title) + QStringLiteral("  \u00b7  ") +
                                            text(m_report.date),
                                        Qt::ElideRight, room));
}
