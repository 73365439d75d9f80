// The Students screen's Backups…: the dated copies of the data files, and the
// screen showing a restored roster or bank at once.
#include "StudentsScreen.h"

#include "backups/BackupsDialog.h"

#include <QListWidget>
#include <QPushButton>

void StudentsScreen::setBackupsShower(BackupsShower showBackups)
{
    m_showBackups = std::move(showBackups);
}

void StudentsScreen::openBackups()
{
    BackupsDialog dialog(m_session, this);
    // The roster or the bank in memory was replaced: the screen shows it at
    // once, on the same line of the list where the roster still reaches it.
    connect(&dialog, &BackupsDialog::restored, this, [this] {
        const int row = selectedStudent();
        fillControls();
        m_deleteButton->setEnabled(m_studentList->count() > 1);
        if (row >= 0 && row < m_studentList->count())
            m_studentList->setCurrentRow(row);
        selectCurrentSubject();
        // Fills the name, level and grid even where no subject is left to choose.
        selectStudent();
    });
    m_showBackups(dialog);
    // The keyboard comes back here also where no window manager hands it back.
    activateWindow();
}
