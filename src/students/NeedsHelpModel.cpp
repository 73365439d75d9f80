#include "NeedsHelpModel.h"

#include <QDate>
#include <QLocale>

#include <limits>

namespace {

QDate dateOf(LocalSeconds seconds)
{
    const CivilTime time = toCivilTime(seconds);
    return {time.year, time.month, time.day};
}

} // namespace

NeedsHelpModel::NeedsHelpModel(std::vector<OverviewRow> rows, QObject *parent)
    : QAbstractTableModel(parent), m_rows(std::move(rows))
{
}

int NeedsHelpModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int NeedsHelpModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant NeedsHelpModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const OverviewRow &row = m_rows[std::size_t(index.row())];
    const bool tested = row.subject.has_value();
    const bool trend = tested && row.trend.direction != TrendDirection::TooFewTests;
    const double change = row.trend.recent - row.trend.earlier;
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
        switch (index.column()) {
        case StudentColumn:
            return QString::fromStdString(row.name);
        case SubjectColumn:
            return tested ? QString::fromStdString(row.subjectName)
                          : QStringLiteral("no tests yet");
        case TrendColumn:
            return tested ? QString::fromStdString(trendText(row.trend)) : QString();
        case ChangeColumn:
            return trend ? QLocale().toString(change, 'f', 1) : QString();
        case NotYetColumn:
            return row.factsNotYet ? QVariant(*row.factsNotYet) : QVariant(QString());
        case LastTestColumn:
            return tested ? QLocale().toString(dateOf(row.lastTest), QLocale::ShortFormat)
                          : QString();
        default:
            return {};
        }
    }
    if (role == Qt::UserRole) {
        // Rows without a value sort below those with one, whichever way.
        constexpr double None = -std::numeric_limits<double>::max();
        switch (index.column()) {
        case StudentColumn:
            return QString::fromStdString(row.name).toLower();
        case SubjectColumn:
            return QString::fromStdString(row.subjectName).toLower();
        case TrendColumn:
            // Falling first when sorted up, too few tests to tell last.
            switch (tested ? row.trend.direction : TrendDirection::TooFewTests) {
            case TrendDirection::Down:
                return 0;
            case TrendDirection::Level:
                return 1;
            case TrendDirection::Up:
                return 2;
            case TrendDirection::TooFewTests:
                break;
            }
            return 3;
        case ChangeColumn:
            return trend ? change : None;
        case NotYetColumn:
            return row.factsNotYet ? *row.factsNotYet : -1;
        case LastTestColumn:
            return static_cast<qlonglong>(row.lastTest);
        default:
            return {};
        }
    }
    if (role == Qt::TextAlignmentRole && index.column() >= ChangeColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant NeedsHelpModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case StudentColumn:
        return QStringLiteral("Student");
    case SubjectColumn:
        return QStringLiteral("Subject");
    case TrendColumn:
        return QStringLiteral("Scores (latest 5 from 5 before)");
    case ChangeColumn:
        return QStringLiteral("Change");
    case NotYetColumn:
        return QStringLiteral("Facts not yet known");
    case LastTestColumn:
        return QStringLiteral("Last test");
    default:
        return {};
    }
}
