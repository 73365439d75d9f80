// The main screen's Worksheet…: the current subject and level on paper, asked
// for in a small dialog and shown in a print preview.
#include "MainScreen.h"

#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"
#include "worksheets/Worksheet.h"

#include <optional>

void MainScreen::setWorksheetSteps(WorksheetSteps steps)
{
    m_worksheetSteps = std::move(steps);
}

void MainScreen::printWorksheet()
{
    const TestBank &bank = m_session.bank;
    const int subject = m_session.records.currentSubject;
    const int level = m_session.records.currentLevel;
    // A student's level may be one the subject has no questions at; its
    // button is then off, and there is nothing to draw.
    if (!levelHasQuestions(bank, subject, level)) {
        m_session.prompt.stop(this, QStringLiteral("Worksheet"),
                              QStringLiteral("Level %1 has no questions to put on a worksheet. "
                                             "Choose another level first.")
                                  .arg(QString::fromStdString(levelText(level))));
        return;
    }
    const std::optional<WorksheetSettings> settings =
        m_worksheetSteps.ask(this, bank, subject, level);
    if (settings) {
        Worksheet sheet;
        {
            const WaitCursor wait;
            sheet = makeWorksheet(bank, subject, level, *settings);
        }
        m_worksheetSteps.preview(this, sheet);
    }
    // A bare X session (a kiosk) has no window manager to hand the keyboard
    // back when the dialog or the preview closes.
    takeKeyboardBack();
}
