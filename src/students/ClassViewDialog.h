// Who needs help: the whole class in one table, a row for each student and
// subject, sortable by any column with the mouse or from the keyboard.
#pragma once

#include "fluency/ClassOverview.h"

#include <QDialog>

class QComboBox;
class QCheckBox;
class QSortFilterProxyModel;
class QTableView;

class ClassViewDialog : public QDialog {
    Q_OBJECT
public:
    ClassViewDialog(std::vector<OverviewRow> rows, QWidget *parent = nullptr);

    QTableView *table() const { return m_table; }
    QSortFilterProxyModel *sorted() const { return m_sorted; }
    // Sorts by the column chosen in "Sort by", highest first when asked.
    void sortRows();

private:
    QTableView *m_table = nullptr;
    QSortFilterProxyModel *m_sorted = nullptr;
    QComboBox *m_sortBy = nullptr;
    QCheckBox *m_descending = nullptr;
};
