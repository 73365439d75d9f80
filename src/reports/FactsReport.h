// One student's facts on paper, in the class report's look: a page for each
// operation's grid, coloured and marked as on screen, then the multiple-choice
// questions the student misses most.
#pragma once

#include "fluency/FactGrid.h"
#include "reports/ClassReport.h"
#include "reports/ReportLists.h"

#include <QFont>
#include <QRectF>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class QPagedPaintDevice;
class QPainter;
class QWidget;

struct FactsReport {
    std::string title; // "Facts: Ann"
    std::string date;
    std::vector<FactGrid> grids;
    std::vector<ReportList> lists; // the questions missed, a list per subject
};

class FactsReportPainter {
public:
    FactsReportPainter(QPagedPaintDevice &device, const FactsReport &report);

    int pageCount() const;
    bool paint();

private:
    void paintGridPage(QPainter &painter, const FactGrid &grid, bool first);
    void paintTable(QPainter &painter, const FactGrid &grid, double top);
    void paintGroups(QPainter &painter, const FactGrid &grid, double top);
    void paintFooter(QPainter &painter, int index);
    QRectF box(double x, double y, double width, double height) const
    {
        return {x * m_scale, y * m_scale, width * m_scale, height * m_scale};
    }

    QPagedPaintDevice &m_device;
    const FactsReport &m_report;
    double m_scale = 1;
    double m_width = 0;
    double m_height = 0;
    QFont m_titleFont;
    QFont m_headingFont;
    QFont m_textFont;
    QFont m_cellFont;
    QFont m_footerFont;
    ReportListPainter m_lists;
};

// The report in a print preview; tests replace it so that nothing blocks.
void previewFactsReport(QWidget *parent, const FactsReport &report);
// Written beside path and renamed over it once complete; on failure, a message.
std::optional<std::string> saveFactsReportPdf(const std::filesystem::path &path,
                                              const FactsReport &report);
