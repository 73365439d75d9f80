#include "ResultsModel.h"

#include "core/Students.h"
#include "core/TestBank.h"
#include "ui/Colours.h"

#include <QColor>

ResultsModel::ResultsModel(const StudentRecords &records, const TestBank &bank, QObject *parent)
    : QAbstractTableModel(parent), m_records(records), m_bank(bank)
{
    setFont(QFont(QStringLiteral("Arial")));
}

void ResultsModel::setFont(const QFont &font)
{
    m_font = font;
    m_boldFont = font;
    m_boldFont.setBold(true);
}

void ResultsModel::show(const Selection &selection)
{
    beginResetModel();
    m_selection = selection;
    m_items = itemCount();
    const int student = selection.student;
    m_boldColumn = student >= 0 && student < static_cast<int>(m_records.students.size())
                       ? FirstLevelColumn + m_records.students[student].level
                       : -1;
    endResetModel();
}

void ResultsModel::studentRenamed(int student)
{
    if (m_selection.byStudent || student < 0 || student >= m_items)
        return;
    emit dataChanged(index(lastRowOf(student), NameColumn),
                     index(lastRowOf(student) + 1, NameColumn), {Qt::DisplayRole});
}

int ResultsModel::highlightedItem() const
{
    return m_selection.byStudent ? m_selection.subject : m_selection.student;
}

int ResultsModel::itemCount() const
{
    return m_selection.byStudent ? static_cast<int>(m_bank.subjects.size())
                                 : static_cast<int>(m_records.students.size());
}

int ResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 2 * m_items + 1;
}

int ResultsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

int ResultsModel::score(int item, bool high, int level) const
{
    // By student the item is a subject of the selected student; by subject it
    // is a student, read at the current subject.
    const int student = m_selection.byStudent ? m_selection.student : item;
    const int subject = m_selection.byStudent ? item : m_selection.subject;
    if (student < 0 || student >= static_cast<int>(m_records.students.size()))
        return 0;
    const std::vector<SubjectResults> &results = m_records.students[student].results;
    if (subject < 0 || subject >= static_cast<int>(results.size()))
        return 0;
    return high ? results[subject].high[level] : results[subject].last[level];
}

QString ResultsModel::text(int row, int column) const
{
    if (row == 0) {
        if (column == NameColumn)
            return m_selection.byStudent ? QStringLiteral("Subject") : QStringLiteral("Student");
        if (column == LastHighColumn)
            return QString();
        return QString::fromStdString(levelText(column - FirstLevelColumn));
    }
    const int item = (row - 1) / 2;
    const bool high = row % 2 == 0;
    if (column == NameColumn) {
        if (m_selection.byStudent)
            return item < static_cast<int>(m_bank.subjects.size())
                       ? QString::fromStdString(m_bank.subjects[item].name)
                       : QString();
        return item < static_cast<int>(m_records.students.size())
                   ? QString::fromStdString(m_records.students[item].name)
                   : QString();
    }
    if (column == LastHighColumn)
        return high ? QStringLiteral("High") : QStringLiteral("Last");
    return QString::number(score(item, high, column - FirstLevelColumn));
}

bool ResultsModel::isBold(int row, int column) const
{
    return row == 0 || column <= LastHighColumn || column == m_boldColumn;
}

QVariant ResultsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= ColumnCount)
        return {};
    const int row = index.row();
    const int column = index.column();
    const bool scoreCell = row > 0 && column >= LastHighColumn;
    switch (role) {
    case Qt::DisplayRole:
        return text(row, column);
    case Qt::ToolTipRole:
        // A long name is cut off by the narrow first column.
        if (row > 0 && column == NameColumn)
            return text(row, column);
        return {};
    case Qt::TextAlignmentRole:
        if (row > 0 && column == NameColumn)
            return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
        return QVariant::fromValue(Qt::AlignCenter);
    case Qt::FontRole:
        return isBold(row, column) ? m_boldFont : m_font;
    case Qt::ForegroundRole:
        if (scoreCell && row % 2 == 0)
            return bgrColor(Bgr::Red);
        return {};
    case Qt::BackgroundRole:
        if (!scoreCell)
            return {};
        return bgrColor((row - 1) / 2 == highlightedItem() ? Bgr::Yellow : Bgr::White);
    default:
        return {};
    }
}

QVariant ResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::FontRole:
    case Qt::TextAlignmentRole:
        return data(index(0, section), role);
    default:
        return {};
    }
}
