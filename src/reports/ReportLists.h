// Plain tables of text printed in the class report's look, page after page:
// the questions a class misses most, who needs help, and the questions one
// student misses. The caller draws each page's footer.
#pragma once

#include "reports/ClassReport.h"

#include <QFont>

#include <vector>

class QPagedPaintDevice;
class QPainter;

class ReportListPainter {
public:
    // Lays the lists out on the device's pages, above a footer of footerHeight
    // points. The device and the lists must outlive the painter.
    ReportListPainter(QPagedPaintDevice &device, const std::vector<ReportList> &lists,
                      double footerHeight);

    int pageCount() const { return static_cast<int>(m_pages.size()); }
    void paintPage(QPainter &painter, int index) const;

private:
    struct Piece {
        std::size_t list = 0;
        std::size_t firstRow = 0;
        std::size_t rowCount = 0;
        bool continued = false;
        double top = 0; // in points
    };
    void paintPiece(QPainter &painter, const Piece &piece) const;

    QPagedPaintDevice &m_device;
    const std::vector<ReportList> &m_lists;
    double m_scale = 1; // device pixels per point
    double m_width = 0;
    QFont m_headingFont;
    QFont m_captionFont;
    QFont m_textFont;
    double m_headingHeight = 0;
    double m_rowHeight = 0;
    std::vector<std::vector<Piece>> m_pages;
};
