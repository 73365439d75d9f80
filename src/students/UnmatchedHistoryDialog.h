// The history that matches no student of the roster, kept since the Students
// file changed outside Tavrino (a restored copy, a file from another computer):
// the teacher gives each to a student, whose own history it joins, or deletes it.
#pragma once

#include "core/HistoryTypes.h"

#include <QDialog>

#include <vector>

class QComboBox;
class QListWidget;
class QPushButton;
struct Session;

class UnmatchedHistoryDialog : public QDialog {
    Q_OBJECT
public:
    explicit UnmatchedHistoryDialog(Session &session, QWidget *parent = nullptr);

    // Gives the selected history to the student chosen in the list of students,
    // or deletes it; each asks first.
    void giveToStudent();
    void deleteHistory();

    const std::vector<UnmatchedStudent> &listed() const { return m_unmatched; }

private:
    void fillList();
    void enableButtons();
    int selectedRow() const;

    Session &m_session;
    std::vector<UnmatchedStudent> m_unmatched;
    QListWidget *m_list = nullptr;
    QComboBox *m_studentList = nullptr;
    QPushButton *m_giveButton = nullptr;
    QPushButton *m_deleteButton = nullptr;
    QPushButton *m_closeButton = nullptr;
};
