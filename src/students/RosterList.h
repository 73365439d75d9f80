// The list of students: one line always stays selected, so the student the
// screen acts on (Delete, the name box, the level) is the one that looks chosen.
#pragma once

#include <QListWidget>

class RosterList : public QListWidget {
    Q_OBJECT
public:
    explicit RosterList(QWidget *parent = nullptr);

protected:
    // A click below the last line, or a Ctrl+click or Ctrl+Space on the selected
    // line, would otherwise leave the current student unselected.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;
};
