#include "reports/ReportLists.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Sizes in points, as in the heat-map pages.
constexpr double Padding = 3;
constexpr double ListGap = 16;
constexpr double Hairline = 0.5;
const QColor GridColour(0xC8, 0xC8, 0xC8);
const QColor HeaderFill(0xEC, 0xEC, 0xEC);

QFont listFont(double points, bool bold = false)
{
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

} // namespace

ReportListPainter::ReportListPainter(QPagedPaintDevice &device,
                                     const std::vector<ReportList> &lists, double footerHeight)
    : m_device(device), m_lists(lists), m_headingFont(listFont(13, true)),
      m_captionFont(listFont(9, true)), m_textFont(listFont(9))
{
    m_scale = std::max(1, device.logicalDpiY()) / 72.0;
    m_width = device.width() / m_scale;
    const double bodyHeight = device.height() / m_scale - footerHeight;
    m_headingHeight = QFontMetricsF(m_headingFont, &device).lineSpacing() / m_scale + 6;
    m_rowHeight = QFontMetricsF(m_textFont, &device).height() / m_scale + 2 * Padding;

    // Each list starts on a new page unless its heading, captions and a few
    // rows fit under the one before. A top of 0 is a fresh page.
    constexpr std::size_t KeepRows = 3;
    double top = 0;
    auto newPage = [this, &top] {
        m_pages.emplace_back();
        top = 0;
    };
    for (std::size_t list = 0; list < lists.size(); ++list) {
        const std::size_t rows = std::max<std::size_t>(lists[list].rows.size(), 1);
        std::size_t row = 0;
        bool continued = false;
        while (row < rows) {
            if (m_pages.empty())
                newPage();
            const double start = top == 0 ? 0 : top + ListGap;
            const double room = bodyHeight - start - m_headingHeight - m_rowHeight;
            const auto fitting =
                static_cast<std::size_t>(std::max(0.0, std::floor(room / m_rowHeight)));
            if (start > 0 && fitting < std::min(KeepRows, rows - row)) {
                newPage();
                continue;
            }
            const std::size_t count = std::min(std::max<std::size_t>(fitting, 1), rows - row);
            m_pages.back().push_back({list, row, count, continued, start});
            top = start + m_headingHeight + m_rowHeight * double(count + 1);
            row += count;
            continued = true;
            if (row < rows)
                newPage();
        }
    }
}

void ReportListPainter::paintPage(QPainter &painter, int index) const
{
    for (const Piece &piece : m_pages[std::size_t(index)])
        paintPiece(painter, piece);
}

void ReportListPainter::paintPiece(QPainter &painter, const Piece &piece) const
{
    const ReportList &list = m_lists[piece.list];
    auto box = [this](double x, double y, double w, double h) {
        return QRectF(x * m_scale, y * m_scale, w * m_scale, h * m_scale);
    };
    painter.setPen(Qt::black);
    painter.setFont(m_headingFont);
    const QString heading = QString::fromStdString(list.heading) +
                            (piece.continued ? QStringLiteral(" (continued)") : QString());
    painter.drawText(box(0, piece.top, m_width, m_headingHeight), Qt::AlignLeft | Qt::AlignTop,
                     heading);

    std::vector<double> lefts{0};
    for (const double share : list.widths)
        lefts.push_back(lefts.back() + share * m_width);
    auto paintRow = [&](double top, const std::vector<std::string> &cells, bool header) {
        const QFontMetricsF metrics(header ? m_captionFont : m_textFont, &m_device);
        for (std::size_t column = 0; column + 1 < lefts.size(); ++column) {
            const QRectF cell =
                box(lefts[column], top, lefts[column + 1] - lefts[column], m_rowHeight);
            if (header)
                painter.fillRect(cell, HeaderFill);
            painter.setPen(QPen(GridColour, Hairline * m_scale));
            painter.drawRect(cell);
            if (column >= cells.size())
                continue;
            painter.setPen(Qt::black);
            const QRectF inside = cell.adjusted(Padding * m_scale, 0, -Padding * m_scale, 0);
            painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                             metrics.elidedText(QString::fromStdString(cells[column]),
                                                Qt::ElideRight, inside.width()));
        }
    };
    double top = piece.top + m_headingHeight;
    painter.setFont(m_captionFont);
    paintRow(top, list.captions, true);
    painter.setFont(m_textFont);
    if (list.rows.empty()) {
        top += m_rowHeight;
        painter.drawText(box(Padding, top, m_width, m_rowHeight), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::fromStdString(list.emptyText));
        return;
    }
    for (std::size_t row = piece.firstRow; row < piece.firstRow + piece.rowCount; ++row) {
        top += m_rowHeight;
        paintRow(top, list.rows[row], false);
    }
}
