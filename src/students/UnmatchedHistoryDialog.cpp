#include "UnmatchedHistoryDialog.h"

#include "ProgressTable.h"
#include "core/History.h"
#include "ui/Accessibility.h"
#include "ui/Prompt.h"
#include "ui/Session.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString dayText(LocalSeconds seconds)
{
    return QLocale(QLocale::English)
        .toString(localDateTime(seconds).date(), QStringLiteral("d MMM yyyy"));
}

// "Sam Lee: 12 tests, 3 Sep 2026 to 20 Nov 2026"
QString lineText(const UnmatchedStudent &history)
{
    const QString name =
        history.name.empty() ? QStringLiteral("(no name)") : QString::fromStdString(history.name);
    if (history.tests == 0)
        return QStringLiteral("%1: no tests").arg(name);
    const QString tests = history.tests == 1 ? QStringLiteral("1 test")
                                             : QStringLiteral("%1 tests").arg(history.tests);
    if (history.firstTest / 86400 == history.lastTest / 86400)
        return QStringLiteral("%1: %2, %3").arg(name, tests, dayText(history.firstTest));
    return QStringLiteral("%1: %2, %3 to %4")
        .arg(name, tests, dayText(history.firstTest), dayText(history.lastTest));
}

} // namespace

UnmatchedHistoryDialog::UnmatchedHistoryDialog(Session &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setObjectName(QStringLiteral("frmNotMatched"));
    setWindowTitle(QStringLiteral("History Not Matched"));
    setModal(true);

    auto *explanation = new QLabel(
        QStringLiteral("The tests below were kept for students who are no longer in the list, "
                       "since the Students file was changed outside Tavrino (for example, a "
                       "copy from another computer). Give each to the student it belongs to, "
                       "or delete it."),
        this);
    explanation->setWordWrap(true);

    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstNotMatched"));
    m_list->setAccessibleName(QStringLiteral("History not matched"));
    auto *listCaption = new QLabel(QStringLiteral("&History:"), this);
    listCaption->setBuddy(m_list);

    m_studentList = new QComboBox(this);
    m_studentList->setObjectName(QStringLiteral("cmbGiveTo"));
    m_studentList->setAccessibleName(QStringLiteral("Student to give it to"));
    for (const Student &student : session.records.students)
        m_studentList->addItem(QString::fromStdString(trimName(student.name)));
    m_studentList->setCurrentIndex(session.records.currentStudent >= 0 &&
                                           session.records.currentStudent < m_studentList->count()
                                       ? session.records.currentStudent
                                       : 0);
    auto *studentCaption = new QLabel(QStringLiteral("&Student:"), this);
    studentCaption->setBuddy(m_studentList);

    m_giveButton = new QPushButton(QStringLiteral("&Give to Student"), this);
    m_giveButton->setObjectName(QStringLiteral("cmdGive"));
    m_deleteButton = new QPushButton(QStringLiteral("&Delete History"), this);
    m_deleteButton->setObjectName(QStringLiteral("cmdDeleteHistory"));
    m_closeButton = new QPushButton(QStringLiteral("Close"), this);
    m_closeButton->setObjectName(QStringLiteral("cmdClose"));
    for (QPushButton *button : {m_giveButton, m_deleteButton})
        button->setAutoDefault(false);
    m_closeButton->setDefault(true);

    auto *choice = new QGridLayout;
    choice->addWidget(listCaption, 0, 0, Qt::AlignTop);
    choice->addWidget(m_list, 0, 1, 1, 2);
    choice->addWidget(studentCaption, 1, 0);
    choice->addWidget(m_studentList, 1, 1);
    choice->addWidget(m_giveButton, 1, 2);
    choice->setColumnStretch(1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_deleteButton);
    buttons->addStretch(1);
    buttons->addWidget(m_closeButton);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addLayout(choice, 1);
    layout->addLayout(buttons);
    setTabChain({m_list, m_studentList, m_giveButton, m_deleteButton, m_closeButton});

    connect(m_list, &QListWidget::currentRowChanged, this, &UnmatchedHistoryDialog::enableButtons);
    connect(m_giveButton, &QPushButton::clicked, this, &UnmatchedHistoryDialog::giveToStudent);
    connect(m_deleteButton, &QPushButton::clicked, this, &UnmatchedHistoryDialog::deleteHistory);
    connect(m_closeButton, &QPushButton::clicked, this, &QDialog::accept);

    resize(560, 360);
    fillList();
    m_list->setFocus();
}

void UnmatchedHistoryDialog::fillList()
{
    m_unmatched = m_session.history ? m_session.history->roster().unmatchedStudents()
                                    : std::vector<UnmatchedStudent>();
    m_list->clear();
    for (const UnmatchedStudent &history : m_unmatched)
        m_list->addItem(lineText(history));
    m_list->setCurrentRow(m_unmatched.empty() ? -1 : 0);
    enableButtons();
}

void UnmatchedHistoryDialog::enableButtons()
{
    const bool chosen = selectedRow() >= 0;
    m_giveButton->setEnabled(chosen && m_studentList->count() > 0);
    m_deleteButton->setEnabled(chosen);
    if (m_unmatched.empty() && !m_closeButton->hasFocus())
        m_closeButton->setFocus();
}

int UnmatchedHistoryDialog::selectedRow() const
{
    const int row = m_list->currentRow();
    return row >= 0 && row < static_cast<int>(m_unmatched.size()) ? row : -1;
}

void UnmatchedHistoryDialog::giveToStudent()
{
    const int row = selectedRow();
    const int student = m_studentList->currentIndex();
    if (row < 0 || student < 0 || !m_session.history)
        return;
    const UnmatchedStudent &history = m_unmatched[static_cast<std::size_t>(row)];
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm Give History"),
            QStringLiteral("Give the history of \"%1\" to %2? It becomes part of %2's own "
                           "history and cannot be taken apart again.")
                .arg(QString::fromStdString(history.name), m_studentList->currentText())))
        return;
    // A copy first, so that a wrong choice can be taken back from Backups….
    m_session.backUpBeforeLoss({DataFile::History}, this);
    m_session.history->roster().giveUnmatched(history.key, student);
    fillList();
}

void UnmatchedHistoryDialog::deleteHistory()
{
    const int row = selectedRow();
    if (row < 0 || !m_session.history)
        return;
    const UnmatchedStudent &history = m_unmatched[static_cast<std::size_t>(row)];
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm Delete History"),
            QStringLiteral("Delete the history of \"%1\"? Its tests and answers are erased.")
                .arg(QString::fromStdString(history.name))))
        return;
    m_session.backUpBeforeLoss({DataFile::History}, this);
    m_session.history->roster().deleteUnmatched(history.key);
    fillList();
}
