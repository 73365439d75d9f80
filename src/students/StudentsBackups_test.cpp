// Backups from the Students screen: a copy of the file as last saved before
// each action that wipes results or removes a student, a failed copy told once
// without stopping anything, and Backups... restoring results that were reset.
#include "StudentsScreenFixture_test.h"

#include "backups/BackupsDialog.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>

#include <fstream>
#include <functional>

namespace {

std::string bytesOf(const std::filesystem::path &path)
{
    const std::vector<unsigned char> bytes = readFileBytes(path);
    return {bytes.begin(), bytes.end()};
}

} // namespace

TEST_F(StudentsScreenTest, EachActionThatWipesResultsIsPrecededByACopyOfTheFileAsSaved)
{
    writeRoster({"A", "B", "C", "D"});
    auto screen = openScreen();
    const std::pair<const char *, const char *> actions[] = {
        {"cmdResetTotals_Student", "Confirm Reset Student's Totals"},
        {"cmdResetTotals_All", "Confirm Reset ALL Student Totals"},
        {"cmdDelete", "Confirm Delete Student"},
    };
    for (const auto &[button, confirmation] : actions) {
        SCOPED_TRACE(button);
        // A save point with something new, so that the file differs from its copies.
        session.records.students[0].level += 1;
        screen->saveOnClose();
        const std::string asSaved = bytesOf(session.paths.studentsPath);
        const std::size_t copies = session.backups.list().size();

        prompt.answerConfirm(false);
        child<QPushButton>(*screen, button)->click();
        EXPECT_EQ(lastConfirm(), confirmation);
        EXPECT_EQ(session.backups.list().size(), copies) << "Cancel copies nothing";

        prompt.answerConfirm(true);
        child<QPushButton>(*screen, button)->click();
        const std::vector<Backup> after = session.backups.list();
        ASSERT_EQ(after.size(), copies + 1);
        EXPECT_EQ(bytesOf(after.front().path), asSaved);
        // The action changed memory only; the file waits for the next save point.
        EXPECT_EQ(bytesOf(session.paths.studentsPath), asSaved);
    }
}

TEST_F(StudentsScreenTest, AFailedBackupIsToldOnceAndTheResultsAreStillSaved)
{
    writeRoster({"A", "B"});
    // Something is in the way of the backups folder.
    std::ofstream(session.paths.backupsDir) << "not a folder";
    auto screen = openScreen();
    for (const char *button : {"cmdResetTotals_Student", "cmdResetTotals_All"}) {
        prompt.answerConfirm(true);
        child<QPushButton>(*screen, button)->click();
    }
    screen->saveOnClose();
    int stops = 0;
    for (const ScriptedPrompt::Shown &shown : prompt.shown()) {
        if (shown.kind != ScriptedPrompt::Shown::Kind::Stop)
            continue;
        ++stops;
        EXPECT_TRUE(shown.text.contains(QStringLiteral("could not make a backup copy of the "
                                                       "Students file")) &&
                    shown.text.contains(QString::fromStdString(session.paths.backupsDir.string())))
            << shown.text.toStdString();
    }
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(saved().students[1].results[2].high[5], 0);
}

TEST_F(StudentsScreenTest, BackupsRestoresResetResultsAndTheScreenShowsThemAtOnce)
{
    writeRoster({"A", "B", "C"});
    const std::string withResults = bytesOf(session.paths.studentsPath);
    auto screen = openScreen();
    auto *backupsButton = child<QPushButton>(*screen, "cmdBackups");
    EXPECT_EQ(backupsButton->accessibleName(), QStringLiteral("Backups"));
    EXPECT_TRUE(backupsButton->text().startsWith(QStringLiteral("&Backups")));
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdResetTotals_All")->click();
    screen->saveOnClose();
    child<QListWidget>(*screen, "List1")->setCurrentRow(2);

    // Backups... lists the copy made before the reset; Restore puts it back.
    int shown = 0;
    screen->setBackupsShower([&](BackupsDialog &dialog) {
        ++shown;
        EXPECT_EQ(dialog.findChild<QTreeWidget *>()->topLevelItemCount(), 1);
        prompt.answerConfirm(true);
        dialog.findChild<QPushButton *>(QStringLiteral("cmdRestore"))->click();
    });
    backupsButton->click();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(bytesOf(session.paths.studentsPath), withResults);
    EXPECT_EQ(session.records.students[2].results[3].high[7], scoreOf(2, 3, 7, true));
    // The screen shows the restored scores of the student it was showing.
    EXPECT_EQ(child<QListWidget>(*screen, "List1")->currentRow(), 2);
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    EXPECT_EQ(cell(grid, 5, 2), QString::number(scoreOf(2, 2, 0, false)));
}

TEST_F(StudentsScreenTest, ARestoredShorterRosterLeavesAValidSelectionAndCanBeUndone)
{
    writeRoster({"A", "B"});
    const std::string twoStudents = bytesOf(session.paths.studentsPath);
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    for (const char *name : {"C", "D"}) {
        screen->addStudent();
        child<QLineEdit>(*screen, "txtStudent")->setText(QString::fromLatin1(name));
    }
    // The first save of the run copies the two-student file first.
    screen->saveOnClose();
    const std::string fourStudents = bytesOf(session.paths.studentsPath);
    list->setCurrentRow(3);

    // Restores the newest copy, which after the first restore is the file it replaced.
    auto restoreNewest = [&] {
        screen->setBackupsShower([&](BackupsDialog &dialog) {
            auto *copies = dialog.findChild<QTreeWidget *>();
            copies->setCurrentItem(copies->topLevelItem(0));
            prompt.answerConfirm(true);
            dialog.restoreSelected();
        });
        child<QPushButton>(*screen, "cmdBackups")->click();
    };

    restoreNewest();
    EXPECT_EQ(bytesOf(session.paths.studentsPath), twoStudents);
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"A", "B"}));
    // The fourth line is gone: the roster's current student is shown instead.
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("A"));
    EXPECT_TRUE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());

    list->setCurrentRow(1);
    restoreNewest();
    EXPECT_EQ(bytesOf(session.paths.studentsPath), fourStudents);
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"A", "B", "C", "D"}));
    EXPECT_EQ(list->currentRow(), 1);
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("B"));
}
