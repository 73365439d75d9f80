// The Students screen's Add Class…: a whole class added at the end of the roster
// from the names pasted, typed or read into the Add Class dialog.
#include "StudentsScreen.h"

#include "AddClassDialog.h"
#include "classlist/NewNames.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QListWidget>
#include <QPushButton>

void StudentsScreen::setAddClassRunner(AddClassRunner runAddClass)
{
    m_runAddClass = std::move(runAddClass);
}

void StudentsScreen::addClass()
{
    AddClassDialog dialog(m_session.records.students, m_session.prompt, this);
    const bool added = m_runAddClass ? m_runAddClass(dialog) : dialog.exec() == QDialog::Accepted;
    if (!added)
        return;
    const WaitCursor wait;
    const std::vector<Student> &students = m_session.records.students;
    const auto first = static_cast<int>(addNewStudents(m_session.records, dialog.newNames().names,
                                                       dialog.level(), m_session.bank.subjectMax));
    if (first >= static_cast<int>(students.size()))
        return;

    // A first run's nameless student may have taken the first name.
    if (first < m_studentList->count())
        m_studentList->item(first)->setText(QString::fromStdString(students[first].name));
    QStringList lines;
    for (auto i = static_cast<std::size_t>(m_studentList->count()); i < students.size(); ++i)
        lines.append(QString::fromStdString(students[i].name));
    m_studentList->addItems(lines);
    m_deleteButton->setEnabled(students.size() > 1);

    // The class's first student is selected and shown: selecting a new line runs
    // the selecting step; the line already selected is shown again.
    if (m_studentList->currentRow() == first)
        selectStudent();
    else
        m_studentList->setCurrentRow(first);
    // As much of the new class as fits is in view, not only its first name.
    m_studentList->scrollToItem(m_studentList->item(first), QAbstractItemView::PositionAtTop);
}
