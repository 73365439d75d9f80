#include "ProgressTable.h"

#include <QLocale>

#include <algorithm>
#include <iterator>

namespace {

CivilTime civilTime(const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    return {date.year(), date.month(), date.day(), clock.hour(), clock.minute(), clock.second()};
}

} // namespace

QDateTime localDateTime(LocalSeconds seconds)
{
    const CivilTime time = toCivilTime(seconds);
    return QDateTime(QDate(time.year, time.month, time.day),
                     QTime(time.hour, time.minute, time.second));
}

DateRange progressRange(ProgressSpan span, LocalSeconds now)
{
    // Qt's calendar keeps the day where the earlier month has it, and takes the
    // month's last day where it has not (31 March goes back to 28 February).
    const QDateTime today = localDateTime(now);
    switch (span) {
    case ProgressSpan::LastMonth:
        return {toLocalSeconds(civilTime(today.addMonths(-1))), std::nullopt};
    case ProgressSpan::LastYear:
        return {toLocalSeconds(civilTime(today.addYears(-1))), std::nullopt};
    case ProgressSpan::All:
        break;
    }
    return {};
}

std::vector<TestSummary> scoredTests(const std::vector<TestSummary> &tests)
{
    std::vector<TestSummary> scored;
    std::copy_if(tests.begin(), tests.end(), std::back_inserter(scored),
                 [](const TestSummary &test) {
                     return !test.practice && test.ending != TestEnding::Interrupted;
                 });
    return scored;
}

ProgressTableModel::ProgressTableModel(QObject *parent) : QAbstractTableModel(parent)
{
}

void ProgressTableModel::show(std::vector<TestSummary> tests)
{
    beginResetModel();
    m_tests = std::move(tests);
    endResetModel();
}

int ProgressTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_tests.size());
}

int ProgressTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ProgressTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(index.column() == DateColumn || index.column() == EndColumn
                                       ? Qt::AlignLeft | Qt::AlignVCenter
                                       : Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const TestSummary &test = m_tests[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case DateColumn:
        return QLocale(QLocale::English)
            .toString(localDateTime(test.started), QStringLiteral("d MMM yyyy, hh:mm"));
    case ScoreColumn:
        return test.score;
    case RightColumn:
        return test.rights;
    case WrongColumn:
        return test.wrongs;
    case EndColumn:
        return test.ending == TestEnding::Stopped ? QStringLiteral("Stopped")
                                                  : QStringLiteral("Time ran out");
    default:
        return {};
    }
}

QVariant ProgressTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    switch (section) {
    case DateColumn:
        return QStringLiteral("Date");
    case ScoreColumn:
        return QStringLiteral("Score");
    case RightColumn:
        return QStringLiteral("Right");
    case WrongColumn:
        return QStringLiteral("Wrong");
    case EndColumn:
        return QStringLiteral("Ended");
    default:
        return {};
    }
}
