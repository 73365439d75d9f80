// The classroom mode from the child's side: the main screen without the
// teacher's tools and with an Exit that asks, a child choosing themselves on the
// real Students screen and taking a test, and the same session writing the same
// files in either mode.
#include "MainScreenFixture_test.h"

#include "core/HistoryCsv.h"
#include "core/HistoryStore.h"
#include "students/StudentsScreen.h"

#include <QListWidget>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

// One child's run through the program, on a data folder of its own: the
// fixture's steps, driven from a test rather than as one.
class ChildSession : public MainScreenTest {
public:
    void TestBody() override {}
    using MainScreenTest::studentsOnDisk;
    std::string studentsFileName() const { return session.paths.studentsPath.filename().string(); }

    // Ben, the second of three, chooses himself and level 2 on the Students
    // screen, answers three sums right and one wrong, the clock runs out and
    // the program is closed. The files of the data folder afterwards, by name
    // (the backups by content alone: their names carry the time), and every
    // answer the history recorded.
    std::map<std::string, std::vector<unsigned char>> run(ProgramMode mode)
    {
        const std::string historyName = historyPath(dir.path()).filename().string();
        StudentRecords roster;
        for (const char *name : {"Ann", "Ben", "Cy"})
            roster.students.emplace_back(newStudent(5)).name = name;
        roster.students[0].current = true;
        EXPECT_FALSE(saveStudents(roster, session.paths.studentsPath));

        session.mode = mode;
        screen = std::make_unique<MainScreen>(session, random);
        screen->setOtherScreens({[this] { return chooseOnStudentsScreen(); }, [] {}, [] {}});
        screen->show();
        QCoreApplication::processEvents();
        screen->firstActivation();

        EXPECT_EQ(texts({"lblStudent", "lblLevel"}), "Ben|2");
        button("cmdStartTest")->click();
        typeAnswer(true);
        typeAnswer(false);
        typeAnswer(true);
        typeAnswer(true);
        tick(session.bank.limits[ArithmeticSubject].seconds);
        EXPECT_EQ(texts({"lblLastScore", "lblHighScore"}), "2|2");

        if (mode == ProgramMode::Classroom)
            prompt.answerConfirm(true);
        EXPECT_TRUE(screen->close());

        std::map<std::string, std::vector<unsigned char>> files;
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(dir.path())) {
            // The history's database is compared by what it records: SQLite
            // salts its journal with random bytes in every run.
            if (!entry.is_regular_file() ||
                entry.path().filename().string().rfind(historyName, 0) == 0)
                continue;
            const bool backup = entry.path().parent_path() == session.paths.backupsDir;
            const std::vector<unsigned char> bytes = readFileBytes(entry.path());
            files[backup ? "backup " + std::string(bytes.begin(), bytes.end())
                         : entry.path().filename().string()] = bytes;
        }
        std::ostringstream history;
        EXPECT_FALSE(exportHistoryCsv(dir.path(), history).has_value());
        const std::string rows = history.str();
        EXPECT_EQ(std::count(rows.begin(), rows.end(), '\n'), 5) << "a header and four answers";
        files["history"] = std::vector<unsigned char>(rows.begin(), rows.end());
        return files;
    }

private:
    bool chooseOnStudentsScreen()
    {
        StudentsScreen students(session, screen.get());
        if (!students.loadRoster())
            return false;
        students.findChild<QListWidget *>(QStringLiteral("List1"))->setCurrentRow(1);
        students.findChild<QRadioButton *>(QStringLiteral("optLevel2"))->click();
        students.closeScreen();
        return true;
    }
};

} // namespace

TEST_F(MainScreenTest, InClassroomModeTheTestsAndWorksheetButtonsAreGoneEvenAfterATest)
{
    const auto bar = [this] {
        return showing({"cmdSelectStudent", "cmdTest", "cmdWorksheet", "cmdHelp", "cmdExit"});
    };
    session.mode = ProgramMode::Classroom;
    startUp();
    EXPECT_EQ(bar(), "cmdSelectStudent|cmdHelp|cmdExit");
    for (const char *name : {"cmdTest", "cmdWorksheet"})
        EXPECT_FALSE(button(name)->isEnabled()) << name << ": its Alt key does nothing either";

    // The buttons come back after a test, the teacher's do not.
    screen->startTest();
    EXPECT_EQ(bar(), "");
    screen->stopTest();
    EXPECT_EQ(bar(), "cmdSelectStudent|cmdHelp|cmdExit");
    EXPECT_TRUE(button("cmdSelectStudent")->isEnabled());
}

TEST_F(MainScreenTest, InClassroomModeExitAndTheWindowsCloseBoxAskFirstAndATestAsksOnce)
{
    session.mode = ProgramMode::Classroom;
    startUp();
    using Kind = ScriptedPrompt::Shown::Kind;

    // Cancel keeps the program open, from Exit and from the window alike.
    button("cmdExit")->click();
    EXPECT_TRUE(screen->isVisible());
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, Kind::Confirm);
    EXPECT_EQ(prompt.last()->title, "Exit");
    EXPECT_EQ(prompt.last()->text, "Do you want to close Tavrino?");
    EXPECT_FALSE(screen->close());
    EXPECT_EQ(prompt.shown().size(), 2u);

    // During a test the test's own question is the only one.
    screen->startTest();
    prompt.answerConfirm(true);
    EXPECT_TRUE(screen->close());
    ASSERT_EQ(prompt.shown().size(), 3u);
    EXPECT_EQ(prompt.last()->text, "A test is running. Stop it and quit?");

    screen->show();
    prompt.answerConfirm(true);
    button("cmdExit")->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(prompt.shown().size(), 4u);
}

TEST(ClassroomMode, AChildsSessionWritesTheSameFilesAsInTheTeachersCopy)
{
    ChildSession teachers;
    ChildSession classroom;
    const auto normalFiles = teachers.run(ProgramMode::Normal);
    const auto classroomFiles = classroom.run(ProgramMode::Classroom);

    const StudentRecords saved = classroom.studentsOnDisk();
    ASSERT_EQ(saved.students.size(), 3u);
    EXPECT_TRUE(saved.students[1].current);
    EXPECT_EQ(saved.students[1].level, 2);
    EXPECT_EQ(saved.students[1].results[ArithmeticSubject].last[2], 2) << "the result is saved";
    EXPECT_EQ(normalFiles.count(teachers.studentsFileName()), 1u);
    EXPECT_EQ(classroomFiles, normalFiles);
}
