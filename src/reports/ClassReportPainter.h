// Draws the class report page by page on any paged device, so that the PDF
// written from the command line and the print preview (and so the printer)
// show the same pages.
#pragma once

#include "reports/ClassReport.h"
#include "reports/ReportLists.h"
#include "reports/ReportPagination.h"
#include "reports/ScoreGlyphs.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QStringList>

#include <array>
#include <vector>

class QPagedPaintDevice;
class QPainter;

class ClassReportPainter {
public:
    // Measures the report for the device's current page layout. The device and
    // the report must outlive the painter.
    ClassReportPainter(QPagedPaintDevice &device, const ClassReport &report);

    const ReportPagination &pagination() const { return m_pagination; }
    // The heat map's pages, then the lists'.
    int pageCount() const { return heatMapPages() + m_lists.pageCount(); }
    // The lines a student's name is wrapped into in the name column.
    const QStringList &nameLines(std::size_t student) const { return m_nameLines[student]; }
    // The width of the name column, in points.
    double nameColumnWidth() const { return m_nameWidth; }

    // Draws every page onto the device; false when painting could not begin (a
    // file that cannot be written, a printer that is gone).
    bool paint();

private:
    int heatMapPages() const { return static_cast<int>(m_pagination.pages.size()); }
    void measure();
    void paintPage(QPainter &painter, int index);
    void paintTitle(QPainter &painter);
    void paintLegend(QPainter &painter, double top);
    void paintEmptyNote(QPainter &painter);
    void paintSegment(QPainter &painter, const TableSegment &segment);
    void paintCells(QPainter &painter, const SubjectTable &table, const TableSegment &segment,
                    double top);
    void paintOwnLevelFrame(QPainter &painter, double left, double top, double height);
    void paintFooter(QPainter &painter, int index);

    // Points to device pixels.
    QPointF at(double x, double y) const { return {x * m_scale, y * m_scale}; }
    QRectF box(double x, double y, double width, double height) const
    {
        return {x * m_scale, y * m_scale, width * m_scale, height * m_scale};
    }
    double cellLeft(int level) const { return m_nameWidth + level * m_cellWidth; }
    // The shade's place in the palette.
    std::size_t shadeStep(double shade) const;

    QPagedPaintDevice &m_device;
    const ClassReport &m_report;
    double m_scale = 1; // device pixels per point
    double m_width = 0; // the printable area, in points
    double m_height = 0;
    double m_nameWidth = 0;
    double m_cellWidth = 0;

    QFont m_titleFont;
    QFont m_textFont;
    QFont m_headingFont;
    QFont m_captionFont;
    QFont m_nameFont;
    QFont m_highFont;
    QFont m_lastFont;
    QFont m_footerFont;
    double m_nameLine = 0; // line spacing of the names, in points
    double m_highAscent = 0;
    double m_highHeight = 0;
    double m_lastAscent = 0;
    double m_minRowHeight = 0;
    ScoreGlyphs m_highGlyphs;
    ScoreGlyphs m_lastGlyphs;
    // The heat scale in steps as fine as print tells apart, worked out once, and
    // a page's cells by step, so that each shade is filled in one go.
    struct Shade {
        QColor fill;
        bool darkText = true;
    };
    static constexpr std::size_t ShadeSteps = 32;
    std::array<Shade, ShadeSteps> m_palette;
    std::array<std::vector<QRectF>, ShadeSteps> m_shadedCells;

    std::vector<QStringList> m_nameLines;
    ReportPagination m_pagination;
    ReportMeasures m_measures;
    ReportListPainter m_lists;
};
