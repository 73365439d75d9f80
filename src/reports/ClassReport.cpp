#include "reports/ClassReport.h"

#include <QDate>
#include <QLocale>

#include <algorithm>

namespace {

bool hasResult(const SubjectResults &results, int level)
{
    return results.last[level] != 0 || results.high[level] != 0;
}

} // namespace

double shadeFor(int16_t high, const LevelRange &range)
{
    if (!range.any || range.highest == range.lowest)
        return 0.5;
    const double position = static_cast<double>(high - range.lowest) /
                            static_cast<double>(range.highest - range.lowest);
    return std::clamp(position, 0.0, 1.0);
}

ClassReport makeClassReport(const TestBank &bank, const StudentRecords &records, std::string title,
                            std::string date)
{
    ClassReport report;
    report.title = std::move(title);
    report.date = std::move(date);
    report.studentCount = records.students.size();

    std::vector<std::string> names;
    names.reserve(records.students.size());
    for (const Student &student : records.students)
        names.push_back(trimName(student.name));

    for (std::size_t subject = 0; subject < bank.subjects.size(); ++subject) {
        SubjectTable table;
        bool anyResult = false;
        for (const Student &student : records.students) {
            if (subject >= student.results.size())
                continue;
            const SubjectResults &results = student.results[subject];
            for (int level = 0; level < LevelCount; ++level) {
                if (!hasResult(results, level))
                    continue;
                anyResult = true;
                LevelRange &range = table.ranges[level];
                const int16_t high = results.high[level];
                range.lowest = range.any ? std::min(range.lowest, high) : high;
                range.highest = range.any ? std::max(range.highest, high) : high;
                range.any = true;
            }
        }
        if (!anyResult)
            continue;

        table.subject = bank.subjects[subject].name;
        table.rows.reserve(records.students.size());
        for (std::size_t i = 0; i < records.students.size(); ++i) {
            const Student &student = records.students[i];
            ReportRow row;
            row.name = names[i];
            row.level = std::clamp<int>(student.level, 0, LevelCount - 1);
            if (subject < student.results.size()) {
                const SubjectResults &results = student.results[subject];
                for (int level = 0; level < LevelCount; ++level) {
                    ReportCell &cell = row.cells[level];
                    cell.hasResult = hasResult(results, level);
                    cell.last = results.last[level];
                    cell.high = results.high[level];
                    if (cell.hasResult)
                        cell.shade = shadeFor(cell.high, table.ranges[level]);
                }
            }
            table.rows.push_back(std::move(row));
        }
        report.tables.push_back(std::move(table));
    }
    return report;
}

std::string className(const std::filesystem::path &dataDir)
{
    std::filesystem::path folder = dataDir.lexically_normal();
    if (folder.filename().empty())
        folder = folder.parent_path();
    if (folder.filename() == "data" && !folder.parent_path().filename().empty())
        folder = folder.parent_path();
    return folder.filename().string();
}

ClassReport makeTodaysClassReport(const TestBank &bank, const StudentRecords &records,
                                  const std::filesystem::path &dataDir)
{
    const QString today = QLocale().toString(QDate::currentDate(), QLocale::LongFormat);
    return makeClassReport(bank, records, "Class results: " + className(dataDir),
                           today.toStdString());
}
