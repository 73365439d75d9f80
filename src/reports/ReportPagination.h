// Which part of which table goes on which page of the class report. Works on
// the heights the painter measured, in points, so that it can be checked
// without fonts: every row once and in order, each page's part of a table under
// its heading and the row of level captions, and nothing below the footer.
#pragma once

#include <cstddef>
#include <vector>

struct ReportMeasures {
    double bodyHeight = 0;    // the printable height above the footer
    double titleHeight = 0;   // title, date and legend at the top of the first page
    double headingHeight = 0; // a subject's name over its table
    double headerHeight = 0;  // the row of level captions
    double tableGap = 0;      // space between a table and the one above it
    // A table starts on a new page unless this many of its rows (or all, when it
    // has fewer) fit under its heading on the current one.
    std::size_t keepRows = 3;
    std::vector<double> rowHeights; // one per student, the same in every table
};

// The rows [firstRow, firstRow + rowCount) of one table, with the table's heading
// (marked as continued after the first page of the table) and its captions.
struct TableSegment {
    std::size_t table = 0;
    bool continued = false;
    double top = 0; // where the heading starts
    std::size_t firstRow = 0;
    std::size_t rowCount = 0;
};

struct ReportPage {
    std::vector<TableSegment> segments;
};

struct ReportPagination {
    std::vector<ReportPage> pages; // at least one
    // The row heights used: as measured, except that a row taller than a page
    // under its heading and captions is cut to fit one.
    std::vector<double> rowHeights;
};

// Lays tableCount tables of rowHeights.size() rows each onto pages.
ReportPagination paginateReport(const ReportMeasures &measures, std::size_t tableCount);
