#include "RosterList.h"

RosterList::RosterList(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
}

QItemSelectionModel::SelectionFlags RosterList::selectionCommand(const QModelIndex &index,
                                                                 const QEvent *event) const
{
    const QItemSelectionModel::SelectionFlags flags = QListWidget::selectionCommand(index, event);
    if (!index.isValid() || flags.testFlag(QItemSelectionModel::Deselect) ||
        flags.testFlag(QItemSelectionModel::Toggle))
        return QItemSelectionModel::NoUpdate;
    return flags;
}
