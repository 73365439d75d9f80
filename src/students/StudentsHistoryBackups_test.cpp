// The answer history beside the backups and Add Class: a delete copies the
// history first and the two copies bring the student back whole, each file
// restored on its own; a restored data file is matched to the history again;
// the students Add Class adds are followed as those added one by one.
#include "StudentsScreenFixture_test.h"

#include "AddClassDialog.h"
#include "backups/BackupsDialog.h"
#include "core/History.h"
#include "core/TestsFile.h"
#include "testsupport/HistoryRows.h"
#include "ui/ClassHistory.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

#include <map>

namespace {

enum Column { MadeColumn, FileColumn, HoldsColumn };

std::map<std::string, int> answersByStudent(History &history)
{
    std::map<std::string, int> counts;
    for (const std::string &name : historyColumn(historyRows(history), "Student"))
        ++counts[name];
    return counts;
}

// The answers of the student at position, in Arithmetic at level 1.
int answersOf(History &history, int student)
{
    int answers = 0;
    for (const TestSummary &test : history.queries().tests(student, 0, 1))
        answers += test.rights + test.wrongs;
    return answers;
}

} // namespace

class StudentsHistoryBackupsTest : public StudentsScreenTest {
protected:
    std::unique_ptr<StudentsScreen> openWithHistory()
    {
        openHistory(session);
        return openScreen();
    }
    History &history() { return *session.history; }
    void recordTest(int student, int answers)
    {
        recordArithmeticTest(history(), student, 1, std::vector<bool>(answers, true));
    }
    std::size_t copiesOf(DataFile file) const
    {
        std::size_t count = 0;
        for (const Backup &copy : session.backups.list())
            count += copy.file == file;
        return count;
    }

    // Backups… on the screen: the newest copy of the file named by label is
    // selected, what the dialog says it holds is kept, and it is restored.
    void restoreNewest(StudentsScreen &screen, const QString &label)
    {
        screen.setBackupsShower([&](BackupsDialog &dialog) {
            auto *copies = dialog.findChild<QTreeWidget *>();
            for (int row = 0; row < copies->topLevelItemCount(); ++row) {
                QTreeWidgetItem *item = copies->topLevelItem(row);
                if (item->text(FileColumn) != label)
                    continue;
                copies->setCurrentItem(item);
                dialog.showSelected();
                holds = item->text(HoldsColumn);
                prompt.answerConfirm(true);
                dialog.restoreSelected();
                return;
            }
            ADD_FAILURE() << "no copy of " << label.toStdString();
        });
        child<QPushButton>(screen, "cmdBackups")->click();
    }

    QString holds;
};

TEST_F(StudentsHistoryBackupsTest, ADeleteCopiesTheHistoryAndEachCopyRestoresItsOwnFileAlone)
{
    writeRoster({"Ann", "Ben", "Cat"});
    auto screen = openWithHistory();
    for (int student = 0; student < 3; ++student)
        recordTest(student, student + 1);

    child<QListWidget>(*screen, "List1")->setCurrentRow(1);
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdDelete")->click();
    EXPECT_EQ(copiesOf(DataFile::Students), 1u);
    EXPECT_EQ(copiesOf(DataFile::History), 1u);
    screen->closeScreen();
    ASSERT_EQ(answersByStudent(history()), (std::map<std::string, int>{{"Ann", 1}, {"Cat", 3}}));

    // The roster from before the delete: Ben is back without his answers, and
    // Cat's are found at her old place again. The history is not touched.
    screen = openScreen();
    restoreNewest(*screen, QStringLiteral("Students"));
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"Ann", "Ben", "Cat"}));
    EXPECT_EQ(
        std::make_tuple(answersOf(history(), 0), answersOf(history(), 1), answersOf(history(), 2)),
        std::make_tuple(1, 0, 3));
    EXPECT_EQ(copiesOf(DataFile::History), 1u);

    // Then the history from before the delete, on its own: Ben's answers too.
    restoreNewest(*screen, QStringLiteral("History"));
    EXPECT_EQ(holds, QStringLiteral("6 answers"));
    EXPECT_EQ(
        std::make_tuple(answersOf(history(), 0), answersOf(history(), 1), answersOf(history(), 2)),
        std::make_tuple(1, 2, 3));
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"Ann", "Ben", "Cat"}));
    // The history it replaced was copied first, so this restore can be undone too.
    EXPECT_EQ(copiesOf(DataFile::History), 2u);
    screen->closeScreen();
    EXPECT_EQ(answersByStudent(history()),
              (std::map<std::string, int>{{"Ann", 1}, {"Ben", 2}, {"Cat", 3}}));
}

TEST_F(StudentsHistoryBackupsTest, ARestoredTestsFileIsMatchedToTheHistoryByItsSubjectsNames)
{
    writeRoster({"Ann"});
    auto screen = openWithHistory();
    constexpr int Geography = 2;
    HistoryRecorder &recorder = history().recorder();
    recorder.beginTest({0, Geography, 1, 30, false});
    recorder.recordChoice({"Capital of France?", {"Paris", "Rome", "Oslo", "Bern"}, 0, 0});
    recorder.endTest({1, 1, 0, false});

    // A copy in which Geography has moved one place down.
    TestBank moved = session.bank;
    moved.subjects[Geography].name = "Maps";
    moved.subjects[Geography + 1].name = "Geography";
    ASSERT_FALSE(saveTests(moved, session.paths.testsPath));
    ASSERT_EQ(session.backups.backUp(DataFile::Tests).status, BackupOutcome::Status::Made);
    ASSERT_FALSE(saveTests(session.bank, session.paths.testsPath));
    clock.advance(1000);

    restoreNewest(*screen, QStringLiteral("Tests"));
    EXPECT_EQ(session.bank.subjects[Geography + 1].name, "Geography");
    EXPECT_TRUE(history().queries().tests(0, Geography, 1).empty());
    EXPECT_EQ(history().queries().tests(0, Geography + 1, 1).size(), 1u);
}

TEST_F(StudentsHistoryBackupsTest, AddClassStudentsAreFollowedAndANameAddedAgainStartsAfresh)
{
    writeRoster({"Ann", "Ben"});
    auto screen = openWithHistory();
    recordTest(0, 2);
    recordTest(1, 1);
    child<QListWidget>(*screen, "List1")->setCurrentRow(0);
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdDelete")->click();

    screen->setAddClassRunner([](AddClassDialog &dialog) {
        dialog.findChild<QPlainTextEdit *>(QStringLiteral("txtNames"))
            ->insertPlainText(QStringLiteral("Ann\nCy\n"));
        dialog.findChild<QPushButton *>(QStringLiteral("cmdAdd"))->click();
        return dialog.result() == QDialog::Accepted;
    });
    child<QPushButton>(*screen, "cmdAddClass")->click();
    ASSERT_EQ(lines(*screen), (std::vector<std::string>{"Ben", "Ann", "Cy"}));
    // Before the roster is saved, a new student's test is theirs.
    recordTest(2, 4);
    EXPECT_EQ(answersOf(history(), 2), 4);

    screen->closeScreen();
    // The deleted Ann's answers are gone; the new Ann has none of them.
    EXPECT_EQ(answersByStudent(history()), (std::map<std::string, int>{{"Ben", 1}, {"Cy", 4}}));
    EXPECT_EQ(answersOf(history(), 1), 0);
}
