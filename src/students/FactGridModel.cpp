#include "FactGridModel.h"

#include "reports/MasteryLook.h"

#include <algorithm>

FactGridModel::FactGridModel(FactGrid grid, QObject *parent)
    : QAbstractTableModel(parent), m_grid(std::move(grid))
{
    for (const std::vector<FactCell> &row : m_grid.rows)
        m_columns = std::max(m_columns, static_cast<int>(row.size()));
}

int FactGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_grid.rows.size());
}

int FactGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

const FactCell *FactGridModel::cellAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return nullptr;
    const std::vector<FactCell> &row = m_grid.rows[std::size_t(index.row())];
    return std::size_t(index.column()) < row.size() ? &row[std::size_t(index.column())] : nullptr;
}

QVariant FactGridModel::data(const QModelIndex &index, int role) const
{
    const FactCell *cell = cellAt(index);
    if (!cell) {
        // Past the end of a short group: no fact, so not the white of one untried.
        if (role == Qt::BackgroundRole && index.isValid())
            return QColor(0xE4, 0xE4, 0xE4);
        return {};
    }
    const QString words = QString::fromStdString(
        factDescription(m_grid.operation, cell->number1, cell->number2, cell->tally));
    switch (role) {
    case Qt::DisplayRole:
        // A table's headers say which fact a cell is; a group's cells say it themselves.
        if (m_grid.table)
            return masteryMark(cell->mastery);
        return QString::fromStdString(factText(m_grid.operation, cell->number1, cell->number2)) +
               QLatin1Char(' ') + masteryMark(cell->mastery);
    case Qt::BackgroundRole:
        return masteryFill(cell->mastery);
    case Qt::ForegroundRole:
        return QColor(Qt::black);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::ToolTipRole:
        return words;
    case Qt::AccessibleTextRole:
        return words + QStringLiteral(" (") + QString::fromStdString(masteryName(cell->mastery)) +
               QLatin1Char(')');
    default:
        return {};
    }
}

QVariant FactGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    if (orientation == Qt::Vertical) {
        if (section < 0 || std::size_t(section) >= m_grid.rowNumbers.size())
            return {};
        return QString::number(m_grid.rowNumbers[std::size_t(section)]);
    }
    if (!m_grid.table || section < 0 || std::size_t(section) >= m_grid.columnNumbers.size())
        return {};
    return QString::number(m_grid.columnNumbers[std::size_t(section)]);
}
