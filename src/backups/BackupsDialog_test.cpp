// The Backups dialog as a teacher uses it: the copies listed newest first with
// what each holds, a damaged copy refused, and Restore putting the chosen bytes
// back, into the file and into memory, in a way that can itself be undone.
#include "BackupsDialog.h"

#include "core/DefaultBank.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

class BackupsDialogTest : public ::testing::Test {
protected:
    BackupsDialogTest()
    {
        buildDefaultTests(session.bank);
        session.records.students = {student("Ann", 7), student("Ben", 9)};
        session.records.students[0].current = true;
    }

    Student student(const std::string &name, int16_t score) const
    {
        Student made = newStudent(session.bank.subjectMax);
        made.name = name;
        made.results[1].high[3] = score;
        return made;
    }

    // Saves the roster as it is in memory and backs it up a second later.
    void saveAndBackUpStudents()
    {
        clock.advance(1000);
        ASSERT_FALSE(saveStudents(session.records, session.paths.studentsPath));
        ASSERT_EQ(session.backups.backUp(DataFile::Students).status, BackupOutcome::Status::Made);
    }

    std::vector<std::string> rows(const BackupsDialog &dialog, int column) const
    {
        const auto *list = dialog.findChild<QTreeWidget *>(QStringLiteral("lstBackups"));
        std::vector<std::string> texts;
        for (int row = 0; row < list->topLevelItemCount(); ++row)
            texts.push_back(list->topLevelItem(row)->text(column).toStdString());
        return texts;
    }
    static void select(BackupsDialog &dialog, int row)
    {
        auto *list = dialog.findChild<QTreeWidget *>(QStringLiteral("lstBackups"));
        list->setCurrentItem(list->topLevelItem(row));
    }
    static QPushButton *restoreButton(const BackupsDialog &dialog)
    {
        return dialog.findChild<QPushButton *>(QStringLiteral("cmdRestore"));
    }
    static QString status(const BackupsDialog &dialog)
    {
        return dialog.findChild<QLabel *>(QStringLiteral("lblStatus"))->text();
    }

    static std::string bytesOf(const std::filesystem::path &path)
    {
        const std::vector<unsigned char> bytes = readFileBytes(path);
        return {bytes.begin(), bytes.end()};
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    ManualClock clock{{2026, 11, 24, 10, 15, 2}};
    Session session{dir.paths(), prompt, clock};
};

} // namespace

TEST_F(BackupsDialogTest, ListsEveryCopyNewestFirstAndRefusesADamagedOne)
{
    saveAndBackUpStudents();
    clock.advance(60'000);
    ASSERT_FALSE(saveTests(session.bank, session.paths.testsPath));
    ASSERT_EQ(session.backups.backUp(DataFile::Tests).status, BackupOutcome::Status::Made);
    // A copy cut short, as a failing disk could leave one.
    std::filesystem::path damaged =
        session.paths.backupsDir / "Tavrino_Students 2026-11-25 08-00-00.dat";
    std::ofstream(damaged, std::ios::binary) << bytesOf(session.paths.studentsPath).substr(0, 30);

    BackupsDialog dialog(session);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Backups"));
    const auto *list = dialog.findChild<QTreeWidget *>(QStringLiteral("lstBackups"));
    EXPECT_EQ(list->accessibleName(), QStringLiteral("Backups"));
    EXPECT_EQ(restoreButton(dialog)->accessibleName(), QStringLiteral("Restore"));
    EXPECT_EQ(rows(dialog, 0),
              (std::vector<std::string>{"Wed 25 Nov 2026   08:00:00", "Tue 24 Nov 2026   10:16:03",
                                        "Tue 24 Nov 2026   10:15:03"}));
    EXPECT_EQ(rows(dialog, 1), (std::vector<std::string>{"Students", "Tests", "Students"}));
    // The selected copy is read at once, the others after the dialog is up.
    EXPECT_EQ(rows(dialog, 2)[2], "\u2026");
    while (dialog.readNextSummary()) {
    }
    const std::vector<std::string> holds = rows(dialog, 2);
    EXPECT_EQ(holds[0], "Damaged: it cannot be restored");
    EXPECT_EQ(holds[1].rfind("6 subjects, ", 0), 0u) << holds[1];
    EXPECT_EQ(holds[2], "2 students, 6 subjects");

    // The damaged copy is selected first, as the newest: Restore is not offered.
    EXPECT_FALSE(restoreButton(dialog)->isEnabled());
    EXPECT_TRUE(status(dialog).contains(QStringLiteral("damaged"))) << status(dialog).toStdString();
    dialog.restoreSelected();
    EXPECT_TRUE(prompt.shown().empty());
    select(dialog, 2);
    EXPECT_TRUE(restoreButton(dialog)->isEnabled());
    EXPECT_TRUE(status(dialog).isEmpty());
}

TEST_F(BackupsDialogTest, RestoreAsksThenPutsTheCopyBackAndCanBeUndone)
{
    saveAndBackUpStudents();
    const std::string withResults = bytesOf(session.paths.studentsPath);
    for (Student &each : session.records.students)
        clearResults(each);
    session.records.students.pop_back();
    saveAndBackUpStudents();
    const std::string reset = bytesOf(session.paths.studentsPath);

    BackupsDialog dialog(session);
    QSignalSpy restored(&dialog, &BackupsDialog::restored);
    select(dialog, 1);

    // Cancel leaves everything as it was.
    prompt.answerConfirm(false);
    dialog.restoreSelected();
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.shown()[0].title, QStringLiteral("Confirm Restore"));
    EXPECT_TRUE(prompt.shown()[0].text.contains(
        QStringLiteral("Students file as it was on Tuesday 24 November 2026 at 10:15:03")))
        << prompt.shown()[0].text.toStdString();
    EXPECT_EQ(bytesOf(session.paths.studentsPath), reset);
    EXPECT_EQ(restored.count(), 0);

    prompt.answerConfirm(true);
    dialog.restoreSelected();
    EXPECT_EQ(bytesOf(session.paths.studentsPath), withResults);
    ASSERT_EQ(restored.count(), 1);
    EXPECT_EQ(restored[0][0].value<DataFile>(), DataFile::Students);
    ASSERT_EQ(session.records.students.size(), 2u);
    EXPECT_EQ(session.records.students[1].results[1].high[3], 9);
    // The file as it was is already the newest copy, so none was added; the
    // restored copy stays selected.
    EXPECT_EQ(rows(dialog, 0).size(), 2u);
    EXPECT_TRUE(status(dialog).contains(QStringLiteral("now as it was")))
        << status(dialog).toStdString();

    // Undone by restoring the newest copy.
    select(dialog, 0);
    prompt.answerConfirm(true);
    dialog.restoreSelected();
    EXPECT_EQ(bytesOf(session.paths.studentsPath), reset);
    EXPECT_EQ(session.records.students.size(), 1u);
    EXPECT_EQ(prompt.shown().size(), 3u);
}

TEST_F(BackupsDialogTest, ARestoredTestsFileBringsItsSubjectsAndKeepsEveryResult)
{
    // A bank with an added subject and its results, then the subject deleted.
    addSubject(session.bank, "Birds");
    for (Student &each : session.records.students)
        each.results.resize(7);
    session.records.students[1].results[6].last[2] = 42;
    ASSERT_FALSE(saveTests(session.bank, session.paths.testsPath));
    ASSERT_EQ(session.backups.backUp(DataFile::Tests).status, BackupOutcome::Status::Made);
    const std::string withBirds = bytesOf(session.paths.testsPath);
    clock.advance(1000);
    session.bank = TestBank{};
    buildDefaultTests(session.bank);
    resizeResults(session.records, session.bank.subjectMax);
    session.records.students[1].extraResults = {SubjectResults{}};
    session.records.students[1].extraResults[0].last[2] = 42;
    ASSERT_FALSE(saveTests(session.bank, session.paths.testsPath));
    session.keepTestsFile = true;

    BackupsDialog dialog(session);
    select(dialog, 0);
    prompt.answerConfirm(true);
    dialog.restoreSelected();
    EXPECT_EQ(bytesOf(session.paths.testsPath), withBirds);
    EXPECT_EQ(session.bank.subjectMax, 6);
    EXPECT_EQ(session.bank.subjects[6].name, "Birds");
    EXPECT_EQ(session.records.students[1].results.at(6).last[2], 42);
    EXPECT_FALSE(session.keepTestsFile);
}

TEST_F(BackupsDialogTest, WithoutBackupsNothingCanBeRestored)
{
    BackupsDialog dialog(session);
    EXPECT_TRUE(rows(dialog, 0).empty());
    EXPECT_FALSE(restoreButton(dialog)->isEnabled());
    EXPECT_TRUE(status(dialog).startsWith(QStringLiteral("There are no backups yet")));
    EXPECT_FALSE(dialog.readNextSummary());
}
