// The "Who needs help" table: a row for each student and subject, with the
// trend of the scores, the facts not yet known and the date of the last test.
// Each column sorts by its value (Qt::UserRole), not by its text.
#pragma once

#include "fluency/ClassOverview.h"

#include <QAbstractTableModel>

class NeedsHelpModel : public QAbstractTableModel {
public:
    enum Column {
        StudentColumn,
        SubjectColumn,
        TrendColumn,
        ChangeColumn,
        NotYetColumn,
        LastTestColumn,
        ColumnCount
    };

    explicit NeedsHelpModel(std::vector<OverviewRow> rows, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    std::vector<OverviewRow> m_rows;
};
