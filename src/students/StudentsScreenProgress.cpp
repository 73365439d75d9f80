// The Students screen's Progress…: the selected student's tests over time, in
// the subject and at the level chosen on the screen.
#include "StudentsScreen.h"

#include "LevelButtons.h"
#include "ProgressDialog.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <optional>
#include <utility>

void StudentsScreen::setProgressShower(ProgressShower showProgress)
{
    m_showProgress = std::move(showProgress);
}

void StudentsScreen::showProgress()
{
    const int student = selectedStudent();
    if (student < 0)
        return;
    const int level = m_levels->selected() >= 0 ? m_levels->selected()
                                                : m_session.records.students[student].level;
    std::optional<WaitCursor> wait(std::in_place);
    ProgressDialog dialog(m_session, student, level, this);
    wait.reset();
    if (m_showProgress) {
        m_showProgress(dialog);
        return;
    }
    dialog.exec();
    // A bare X session (a kiosk) does not give the keyboard back by itself.
    activateWindow();
}
