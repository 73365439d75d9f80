// Laying the report's tables onto pages: each row exactly once and in order,
// each page's part of a table under its heading and captions, nothing below
// the footer, short tables kept together and overlong rows cut to a page.
#include "reports/ReportPagination.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

namespace {

ReportMeasures measuresOf(std::vector<double> rowHeights)
{
    ReportMeasures m;
    m.bodyHeight = 500;
    m.titleHeight = 100;
    m.headingHeight = 20;
    m.headerHeight = 15;
    m.tableGap = 10;
    m.rowHeights = std::move(rowHeights);
    return m;
}

// Checks what every pagination must hold and returns a description of the
// pages: per page, its segments as "table:firstRow+count", "c" when continued.
std::string checked(const ReportMeasures &m, std::size_t tables, const ReportPagination &p)
{
    std::string shape;
    std::vector<std::size_t> nextRow(tables, 0);
    for (std::size_t page = 0; page < p.pages.size(); ++page) {
        double below = page == 0 ? m.titleHeight : 0;
        if (page > 0)
            shape += " |";
        for (const TableSegment &s : p.pages[page].segments) {
            EXPECT_GE(s.top + 1e-9, below) << "page " << page << ": overlaps what is above";
            EXPECT_EQ(s.firstRow, nextRow[s.table]) << "page " << page << ": rows out of order";
            EXPECT_EQ(s.continued, s.firstRow > 0) << "page " << page;
            EXPECT_GT(s.rowCount, 0u) << "page " << page << ": a heading without rows";
            const double rows =
                std::accumulate(p.rowHeights.begin() + s.firstRow,
                                p.rowHeights.begin() + s.firstRow + s.rowCount, 0.0);
            below = s.top + m.headingHeight + m.headerHeight + rows;
            EXPECT_LE(below, m.bodyHeight + 1e-9) << "page " << page << ": runs into the footer";
            nextRow[s.table] += s.rowCount;
            shape += std::string(shape.empty() ? "" : " ") + (s.continued ? "c" : "") +
                     std::to_string(s.table) + ":" + std::to_string(s.firstRow) + "+" +
                     std::to_string(s.rowCount);
        }
    }
    for (std::size_t t = 0; t < tables; ++t)
        EXPECT_EQ(nextRow[t], m.rowHeights.size()) << "table " << t << " lost rows";
    return shape;
}

} // namespace

TEST(ReportPagination, EveryRowOnceUnderItsHeadingAndNothingBelowTheFooter)
{
    struct Case {
        const char *what;
        std::vector<double> rows;
        std::size_t tables;
        const char *shape;
    };
    const std::vector<Case> cases = {
        // 365 points under the title: three small tables share the first page.
        {"small class", std::vector<double>(3, 25), 3, "0:0+3 1:0+3 2:0+3"},
        // 18 rows of 25 fill a page under heading and captions; the title takes 4.
        {"big class", std::vector<double>(40, 25), 2,
         "0:0+14 | c0:14+18 | c0:32+8 1:0+8 | c1:8+18 | c1:26+14"},
        // A table whose first three rows would not fit starts on the next page.
        {"kept together", std::vector<double>(12, 25), 3, "0:0+12 | 1:0+12 2:0+4 | c2:4+8"},
        // Names wrapped onto several lines make taller rows.
        {"tall rows",
         {25, 60, 25, 90, 25, 25, 120, 25, 25, 25},
         2,
         "0:0+6 | c0:6+4 1:0+5 | c1:5+5"},
        {"no students", {}, 2, ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const ReportMeasures m = measuresOf(c.rows);
        const ReportPagination p = paginateReport(m, c.tables);
        if (!c.rows.empty())
            EXPECT_EQ(checked(m, c.tables, p), c.shape);
        else
            EXPECT_EQ(p.pages.size(), 1u);
    }
}

TEST(ReportPagination, ARowTallerThanAPageIsCutToOnePage)
{
    const ReportMeasures m = measuresOf({25, 5000, 25});
    const ReportPagination p = paginateReport(m, 1);
    EXPECT_DOUBLE_EQ(p.rowHeights[1], m.bodyHeight - m.headingHeight - m.headerHeight);
    EXPECT_EQ(p.rowHeights[0], 25);
    // The table and its first rows do not fit under the title, so it starts on page 2.
    EXPECT_EQ(checked(m, 1, p), " | 0:0+1 | c0:1+1 | c0:2+1");
}

TEST(ReportPagination, NoTablesIsTheTitlePageAlone)
{
    const ReportPagination p = paginateReport(measuresOf({25, 25}), 0);
    ASSERT_EQ(p.pages.size(), 1u);
    EXPECT_TRUE(p.pages[0].segments.empty());
}
