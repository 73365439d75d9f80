// One operation's fluency grid as a table: each cell a fact in its mastery's
// colour and mark, with the fact in words for the tooltip and a screen reader.
#pragma once

#include "fluency/FactGrid.h"

#include <QAbstractTableModel>

class FactGridModel : public QAbstractTableModel {
public:
    explicit FactGridModel(FactGrid grid, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    const FactGrid &grid() const { return m_grid; }
    // The fact at a cell; null for a cell past the end of a short group.
    const FactCell *cellAt(const QModelIndex &index) const;

private:
    FactGrid m_grid;
    int m_columns = 0;
};
