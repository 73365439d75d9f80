// The Students screen's tools that read the answer history: the selected
// student's Progress… and Facts…, and the class's Who Needs Help….
#include "StudentsScreen.h"

#include "ClassViewDialog.h"
#include "FactsDialog.h"
#include "core/History.h"
#include "ui/ClassHistory.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QHBoxLayout>
#include <QPushButton>

#include <optional>
#include <utility>

namespace {

QPushButton *toolButton(const QString &name, const QString &text, const QString &accessibleName,
                        const QString &description, QWidget *parent)
{
    auto *pushButton = new QPushButton(text, parent);
    pushButton->setObjectName(name);
    // Enter closes the screen whichever control has the focus.
    pushButton->setAutoDefault(false);
    pushButton->setMinimumSize(100, 30);
    pushButton->setAccessibleName(accessibleName);
    pushButton->setAccessibleDescription(description);
    return pushButton;
}

// The history to read, or null after telling the teacher why there is none.
History *readableHistory(Session &session, QWidget *parent)
{
    if (session.history && session.history->isOn())
        return session.history.get();
    session.prompt.stop(parent, QStringLiteral("Tavrino"),
                        QStringLiteral("The answer history could not be opened, so there is "
                                       "nothing to show yet."));
    return nullptr;
}

} // namespace

// Beside the current subject: what the screen shows of the selected student.
QWidget *StudentsScreen::buildStudentTools(QWidget *parent)
{
    auto *tools = new QWidget(parent);
    auto *layout = new QHBoxLayout(tools);
    layout->setContentsMargins(0, 0, 0, 0);
    m_progressButton = toolButton(
        QStringLiteral("cmdProgress"), QStringLiteral("&Progress\u2026"),
        QStringLiteral("Progress"),
        QStringLiteral("The selected student's score in each test over time, in the current "
                       "subject and level"),
        tools);
    m_factsButton = toolButton(
        QStringLiteral("cmdFacts"), QStringLiteral("&Facts\u2026"), QStringLiteral("Facts"),
        QStringLiteral("Which Arithmetic facts the selected student knows, and the questions "
                       "missed most"),
        tools);
    connect(m_progressButton, &QPushButton::clicked, this, &StudentsScreen::showProgress);
    connect(m_factsButton, &QPushButton::clicked, this, &StudentsScreen::showFacts);
    layout->addWidget(m_progressButton);
    layout->addWidget(m_factsButton);
    return tools;
}

void StudentsScreen::setFluencyShower(FluencyShower show)
{
    m_showFluency = std::move(show);
}

void StudentsScreen::showFacts()
{
    const int student = selectedStudent();
    History *history = readableHistory(m_session, this);
    if (student < 0 || !history)
        return;
    std::optional<WaitCursor> wait(std::in_place);
    const QString name =
        QString::fromStdString(trimName(m_session.records.students[std::size_t(student)].name));
    FactsDialog dialog(history->queries(), m_session.bank, student, name, m_session.prompt, this);
    wait.reset();
    showFluencyDialog(dialog);
}

void StudentsScreen::showClassView()
{
    History *history = readableHistory(m_session, this);
    if (!history)
        return;
    std::optional<WaitCursor> wait(std::in_place);
    ClassViewDialog dialog(makeClassOverview(history->queries(), studentNames(m_session.records),
                                             subjectNames(m_session.bank)),
                           this);
    wait.reset();
    showFluencyDialog(dialog);
}

void StudentsScreen::showFluencyDialog(QDialog &dialog)
{
    if (m_showFluency) {
        m_showFluency(dialog);
        return;
    }
    dialog.exec();
    // A bare X session (a kiosk) does not give the keyboard back by itself.
    activateWindow();
}
