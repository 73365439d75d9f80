#include "worksheets/WorksheetPainter.h"

#include "reports/ReportPageSetup.h"
#include "worksheets/WorksheetLayout.h"

#include <QMarginsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <optional>

namespace {

constexpr double MarginMillimetres = 12;
constexpr double LineWidth = 0.8; // points
const QColor FooterColour(0x66, 0x66, 0x66);

} // namespace

QPageLayout worksheetPageLayout(const QLocale &locale)
{
    const QMarginsF margins(MarginMillimetres, MarginMillimetres, MarginMillimetres,
                            MarginMillimetres);
    return QPageLayout(QPageSize(localePaperSize(locale)), QPageLayout::Portrait, margins,
                       QPageLayout::Millimeter);
}

bool paintWorksheet(QPagedPaintDevice &device, const Worksheet &sheet)
{
    const WorksheetLayout layout(device, sheet);
    const double scale = std::max(1, device.logicalDpiY()) / 72.0;
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const QPen writingPen(Qt::black, LineWidth * scale);
    bool first = true;
    for (const WorksheetPage &page : layout.pages()) {
        if (!first && !device.newPage())
            return false;
        first = false;
        // Texts come in runs of one role, so the font changes seldom.
        std::optional<PlacedText::Role> current;
        for (const PlacedText &placed : page.texts) {
            if (placed.role != current) {
                current = placed.role;
                painter.setFont(layout.font(placed.role));
                painter.setPen(placed.role == PlacedText::Role::Footer ? FooterColour
                                                                       : QColor(Qt::black));
            }
            painter.drawText(placed.baseline * scale, placed.text);
        }
        painter.setPen(writingPen);
        for (const QLineF &line : page.writingLines)
            painter.drawLine(QLineF(line.p1() * scale, line.p2() * scale));
    }
    return painter.end();
}
