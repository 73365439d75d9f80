#include "reports/FactsReport.h"

#include "reports/MasteryLook.h"
#include "reports/PrintStyle.h"
#include "reports/ReportPageSetup.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSaveFile>
#include <QScreen>

#include <algorithm>

namespace {

using PrintStyle::text;

// Sizes in points, as in the class report.
constexpr double FooterHeight = 16;
constexpr double Gap = 6;
constexpr double LargestCell = 34;
constexpr double GroupCellWidth = 74;
constexpr double Hairline = 0.5;

QString gridHeading(const FactGrid &grid)
{
    QString name = text(operationName(grid.operation));
    name[0] = name[0].toUpper();
    return name;
}

} // namespace

FactsReportPainter::FactsReportPainter(QPagedPaintDevice &device, const FactsReport &report)
    : m_device(device), m_report(report), m_titleFont(PrintStyle::font(20, true)),
      m_headingFont(PrintStyle::font(13, true)), m_textFont(PrintStyle::font(9.5)),
      m_cellFont(PrintStyle::font(10, true)), m_footerFont(PrintStyle::font(7.5)),
      m_lists(device, report.lists, FooterHeight)
{
    m_scale = std::max(1, device.logicalDpiY()) / 72.0;
    m_width = device.width() / m_scale;
    m_height = device.height() / m_scale;
}

int FactsReportPainter::pageCount() const
{
    // The title page stands even for a student with no facts.
    return std::max<int>(1, static_cast<int>(m_report.grids.size())) + m_lists.pageCount();
}

bool FactsReportPainter::paint()
{
    QPainter painter;
    if (!painter.begin(&m_device))
        return false;
    const int gridPages = pageCount() - m_lists.pageCount();
    for (int page = 0; page < pageCount(); ++page) {
        if (page > 0 && !m_device.newPage())
            return false;
        if (page < gridPages) {
            if (m_report.grids.empty()) {
                FactGrid none;
                none.facts = -1;
                paintGridPage(painter, none, true);
            } else {
                paintGridPage(painter, m_report.grids[std::size_t(page)], page == 0);
            }
        } else {
            m_lists.paintPage(painter, page - gridPages);
        }
        paintFooter(painter, page);
    }
    return painter.end();
}

void FactsReportPainter::paintGridPage(QPainter &painter, const FactGrid &grid, bool first)
{
    double top = 0;
    const auto line = [this](const QFont &font) {
        return QFontMetricsF(font, &m_device).lineSpacing() / m_scale;
    };
    painter.setPen(Qt::black);
    if (first) {
        painter.setFont(m_titleFont);
        painter.drawText(box(0, top, m_width, line(m_titleFont)), Qt::AlignLeft,
                         text(m_report.title));
        top += line(m_titleFont);
        painter.setFont(m_textFont);
        painter.drawText(box(0, top, m_width, line(m_textFont)), Qt::AlignLeft,
                         text(m_report.date));
        top += line(m_textFont) + Gap;
    }
    if (grid.facts < 0) {
        painter.setFont(m_textFont);
        painter.drawText(box(0, top, m_width, line(m_textFont)), Qt::AlignLeft,
                         QStringLiteral("No Arithmetic facts answered yet."));
        return;
    }

    painter.setFont(m_headingFont);
    painter.drawText(box(0, top, m_width, line(m_headingFont)), Qt::AlignLeft, gridHeading(grid));
    top += line(m_headingFont);
    painter.setFont(m_textFont);
    painter.drawText(box(0, top, m_width, line(m_textFont)), Qt::AlignLeft, text(grid.summary()));
    top += line(m_textFont);

    // The legend: a swatch with its mark, and its word.
    const double swatch = line(m_textFont);
    double left = 0;
    for (const Mastery mastery : MasteryLegend) {
        const QRectF cell = box(left, top + 2, swatch, swatch);
        painter.fillRect(cell, masteryFill(mastery));
        painter.setPen(QPen(PrintStyle::GridColour, Hairline * m_scale));
        painter.drawRect(cell);
        painter.setPen(Qt::black);
        painter.drawText(cell, Qt::AlignCenter, masteryMark(mastery));
        const QString word = text(masteryName(mastery));
        painter.drawText(box(left + swatch + 4, top + 2, 100, swatch),
                         Qt::AlignLeft | Qt::AlignVCenter, word);
        left +=
            swatch + 16 + QFontMetricsF(m_textFont, &m_device).horizontalAdvance(word) / m_scale;
    }
    top += swatch + 2 * Gap;
    if (grid.operation == 1 || grid.operation == 3) {
        painter.setPen(PrintStyle::QuietText);
        painter.drawText(box(0, top, m_width, line(m_textFont)), Qt::AlignLeft,
                         grid.operation == 1
                             ? QStringLiteral("Rows: the number taken away. Columns: the answer.")
                             : QStringLiteral("Rows: the number divided by. Columns: the answer."));
        painter.setPen(Qt::black);
        top += line(m_textFont) + Gap;
    }
    if (grid.table)
        paintTable(painter, grid, top);
    else
        paintGroups(painter, grid, top);
}

void FactsReportPainter::paintTable(QPainter &painter, const FactGrid &grid, double top)
{
    const double room = m_height - FooterHeight - top - Gap;
    const auto columns = double(grid.columnNumbers.size() + 1);
    const auto rows = double(grid.rowNumbers.size() + 1);
    const double cell = std::min({LargestCell, m_width / columns, room / rows});
    painter.setFont(m_cellFont);
    auto paintCell = [&](double x, double y, const QColor &fill, const QString &mark) {
        const QRectF rect = box(x, y, cell, cell);
        painter.fillRect(rect, fill);
        painter.setPen(QPen(PrintStyle::GridColour, Hairline * m_scale));
        painter.drawRect(rect);
        painter.setPen(Qt::black);
        painter.drawText(rect, Qt::AlignCenter, mark);
    };
    paintCell(0, top, PrintStyle::HeaderFill, text(operationSign(grid.operation)));
    for (std::size_t c = 0; c < grid.columnNumbers.size(); ++c)
        paintCell(cell * double(c + 1), top, PrintStyle::HeaderFill,
                  QString::number(grid.columnNumbers[c]));
    for (std::size_t r = 0; r < grid.rows.size(); ++r) {
        const double y = top + cell * double(r + 1);
        paintCell(0, y, PrintStyle::HeaderFill, QString::number(grid.rowNumbers[r]));
        for (std::size_t c = 0; c < grid.rows[r].size(); ++c) {
            const Mastery mastery = grid.rows[r][c].mastery;
            paintCell(cell * double(c + 1), y, masteryFill(mastery), masteryMark(mastery));
        }
    }
}

void FactsReportPainter::paintGroups(QPainter &painter, const FactGrid &grid, double top)
{
    // Each first number on a line of its own, its facts wrapped across the page;
    // whatever does not fit the page is summed up in a line at its foot.
    const double cellHeight = QFontMetricsF(m_textFont, &m_device).height() / m_scale + 6;
    const auto perLine = std::max<std::size_t>(1, std::size_t(m_width / GroupCellWidth));
    const double bottom = m_height - FooterHeight - cellHeight;
    painter.setFont(m_textFont);
    std::size_t shown = 0;
    for (const std::vector<FactCell> &group : grid.rows) {
        for (std::size_t i = 0; i < group.size(); ++i) {
            if (top > bottom) {
                painter.drawText(box(0, top, m_width, cellHeight), Qt::AlignLeft,
                                 QStringLiteral("…and %1 more facts, on screen in the Facts view.")
                                     .arg(grid.facts - int(shown)));
                return;
            }
            const FactCell &fact = group[i];
            const QRectF rect =
                box(GroupCellWidth * double(i % perLine), top, GroupCellWidth, cellHeight);
            painter.fillRect(rect, masteryFill(fact.mastery));
            painter.setPen(QPen(PrintStyle::GridColour, Hairline * m_scale));
            painter.drawRect(rect);
            painter.setPen(Qt::black);
            painter.drawText(rect, Qt::AlignCenter,
                             text(factText(grid.operation, fact.number1, fact.number2)) +
                                 QLatin1Char(' ') + masteryMark(fact.mastery));
            ++shown;
            if (i % perLine == perLine - 1 || i + 1 == group.size())
                top += cellHeight;
        }
        top += Gap;
    }
}

void FactsReportPainter::paintFooter(QPainter &painter, int index)
{
    const QRectF line = box(0, m_height - FooterHeight, m_width, FooterHeight);
    painter.setFont(m_footerFont);
    painter.setPen(PrintStyle::QuietText);
    painter.drawText(line, Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("Page %1 of %2").arg(index + 1).arg(pageCount()));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignBottom,
                     text(m_report.title) + QStringLiteral("  \u00b7  ") + text(m_report.date));
}

void previewFactsReport(QWidget *parent, const FactsReport &report)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(reportPageLayout(QLocale()));
    printer.setDocName(text(report.title));
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("frmFactsPreview"));
    dialog.setWindowTitle(text(report.title));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&report](QPrinter *target) { FactsReportPainter(*target, report).paint(); });
    if (const QScreen *display = QGuiApplication::primaryScreen())
        dialog.resize(display->availableSize() * 0.8);
    dialog.exec();
}

std::optional<std::string> saveFactsReportPdf(const std::filesystem::path &path,
                                              const FactsReport &report)
{
    QSaveFile file(QString::fromStdString(path.string()));
    if (file.open(QIODevice::WriteOnly)) {
        bool painted = false;
        {
            QPdfWriter writer(&file);
            writer.setPageLayout(reportPageLayout(QLocale()));
            writer.setTitle(text(report.title));
            writer.setCreator(QStringLiteral("Tavrino"));
            painted = FactsReportPainter(writer, report).paint();
        }
        if (painted && file.commit())
            return std::nullopt;
    }
    return "The file \"" + path.string() +
           "\" could not be saved: " + file.errorString().toStdString() + ".";
}
