#include "reports/ReportPagination.h"

#include <algorithm>

ReportPagination paginateReport(const ReportMeasures &m, std::size_t tableCount)
{
    ReportPagination result;
    const double tallest = std::max(1.0, m.bodyHeight - m.headingHeight - m.headerHeight);
    result.rowHeights = m.rowHeights;
    for (double &height : result.rowHeights)
        height = std::min(height, tallest);
    const std::vector<double> &heights = result.rowHeights;
    const std::size_t rowCount = heights.size();

    result.pages.emplace_back();
    double y = m.titleHeight;
    bool pageHasTable = false;
    auto newPage = [&] {
        result.pages.emplace_back();
        y = 0;
        pageHasTable = false;
    };

    for (std::size_t table = 0; table < tableCount; ++table) {
        double kept = 0;
        for (std::size_t row = 0; row < std::min(m.keepRows, rowCount); ++row)
            kept += heights[row];
        double top = pageHasTable ? y + m.tableGap : y;
        const bool freshPage = !pageHasTable && result.pages.size() > 1;
        if (!freshPage && top + m.headingHeight + m.headerHeight + kept > m.bodyHeight) {
            newPage();
            top = 0;
        }
        TableSegment segment{table, false, top, 0, 0};
        y = top + m.headingHeight + m.headerHeight;
        for (std::size_t row = 0; row < rowCount; ++row) {
            // The first row of a part always goes on its page: the height cut
            // above makes it fit on any page.
            if (segment.rowCount > 0 && y + heights[row] > m.bodyHeight) {
                result.pages.back().segments.push_back(segment);
                newPage();
                segment = TableSegment{table, true, 0, row, 0};
                y = m.headingHeight + m.headerHeight;
            }
            ++segment.rowCount;
            y += heights[row];
        }
        result.pages.back().segments.push_back(segment);
        pageHasTable = true;
    }
    return result;
}
