// Start-up and the data folder: one copy of the program at a time, a Tests file
// that cannot be read, and a class's files left in a folder that cannot be written.
#include "MainScreenFixture_test.h"

#include "testsupport/EndedProcess.h"
#include "ui/DataFolderLock.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

void writeFile(const fs::path &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

QString quoted(const fs::path &path)
{
    return "\"" + QString::fromStdString(path.string()) + "\"";
}

} // namespace

TEST_F(MainScreenTest, ASecondCopyOnTheFolderEndsWithoutReadingOrWritingEitherFile)
{
    // Damaged files: a copy that read them would move the Tests file aside.
    writeFile(session.paths.testsPath, "\x01\x02\x03");
    writeFile(session.paths.studentsPath, "\x05\x06");
    const fs::path unfinished =
        dir.path() / ("Tavrino_Students.dat.tmp" + std::to_string(endedProcessId()) + "-0");
    writeFile(unfinished, "a save killed part-way");
    {
        const DataFolderLock firstCopy(dir.path());
        ASSERT_TRUE(firstCopy.isHeld());
        startUp();
        ASSERT_EQ(prompt.shown().size(), 1u);
        EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
        EXPECT_TRUE(
            prompt.last()->text.contains("already open on the data folder " + quoted(dir.path())))
            << prompt.last()->text;
        EXPECT_TRUE(screen->isEnding());
        EXPECT_EQ(studentsScreenShown, 0);
        EXPECT_EQ(readFileBytes(session.paths.testsPath), (std::vector<unsigned char>{1, 2, 3}));
        EXPECT_EQ(readFileBytes(session.paths.studentsPath), (std::vector<unsigned char>{5, 6}));
        EXPECT_FALSE(fs::exists(session.paths.blankPagePath));
        EXPECT_TRUE(fs::exists(unfinished)) << "cleaned up only under the lock";
    }

    // Once the first copy has ended the folder is free, and what a killed save
    // left behind goes.
    fs::remove(session.paths.testsPath);
    fs::remove(session.paths.studentsPath);
    prompt.clear();
    startUp();
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_FALSE(screen->isEnding());
    EXPECT_FALSE(fs::exists(unfinished));
    EXPECT_FALSE(DataFolderLock(dir.path()).isHeld()) << "held while the program runs";
}

TEST_F(MainScreenTest, ATestsFileThatCannotBeReadStaysWhereItIsAndNothingSavesOverIt)
{
    // A folder where the file should be: it opens, but every read fails, as on a
    // disk error. Its content may be whole; it is not damaged.
    fs::create_directories(session.paths.testsPath / "inside");
    startUp();
    int testsScreenShown = 0;
    screen->setOtherScreens(
        {[this] { return closeStudentsScreen(); }, [&] { ++testsScreenShown; }, [] {}});

    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString message = prompt.last()->text;
    for (const QString &part : {quoted(session.paths.testsPath), QString("could not be read"),
                                QString::fromLocal8Bit(std::strerror(EISDIR)),
                                QString("left where it is"), QString("default tests")})
        EXPECT_TRUE(message.contains(part)) << message;
    EXPECT_FALSE(message.contains("damaged")) << message;
    EXPECT_TRUE(fs::is_directory(session.paths.testsPath / "inside"));
    EXPECT_FALSE(fs::exists(dir.path() / "Tavrino_Tests.damaged.dat"));
    EXPECT_EQ(combo("cmbSubject")->count(), 6);
    EXPECT_TRUE(shown("fraStartTest")) << "the class can still take tests";

    // The Tests screen, whose close saves the bank, stays shut in this run.
    button("cmdTest")->click();
    EXPECT_EQ(testsScreenShown, 0);
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_TRUE(prompt.last()->text.contains("cannot be changed")) << prompt.last()->text;
    EXPECT_FALSE(session.saveTests(nullptr));
    EXPECT_TRUE(fs::is_directory(session.paths.testsPath / "inside"));
}

TEST_F(MainScreenTest, TheClassFilesOfAFolderThatCannotBeWrittenComeAlongWithAWord)
{
    TempDataDir beside; // "data" beside the program, on a read-only share
    TestBank bank;
    buildDefaultTests(bank);
    ::addSubject(bank, "Fractions");
    ASSERT_FALSE(saveTests(bank, beside.paths().testsPath));
    StudentRecords roster;
    roster.students.push_back(newStudent(bank.subjectMax));
    roster.students[0].name = "Zoe";
    roster.students[0].current = true;
    ASSERT_FALSE(saveStudents(roster, beside.paths().studentsPath));

    const auto startFrom = [&](std::size_t messages) {
        prompt.clear();
        createScreen();
        screen->bringClassFilesFrom(beside.path());
        screen->show();
        screen->firstActivation();
        EXPECT_EQ(prompt.shown().size(), messages);
        const QString message = prompt.shown().empty() ? QString() : prompt.shown()[0].text;
        if (messages > 0) {
            for (const fs::path &folder : {beside.path(), dir.path()})
                EXPECT_TRUE(message.contains(quoted(folder))) << message;
        }
        return message;
    };

    // The new folder has none of the files: they are copied, and the class goes on.
    fs::remove_all(dir.path());
    EXPECT_TRUE(startFrom(1).contains("copied"));
    for (const auto &[from, to] :
         {std::pair{beside.paths().testsPath, session.paths.testsPath},
          std::pair{beside.paths().studentsPath, session.paths.studentsPath}})
        EXPECT_EQ(readFileBytes(to), readFileBytes(from));
    EXPECT_EQ(combo("cmbSubject")->count(), 7);
    EXPECT_EQ(text("lblStudent"), QStringLiteral("Zoe"));

    // Next time the new folder's files are the class's: they are not replaced, and the
    // teacher, told once, is not told again.
    screen.reset();
    session.records = {};
    fs::remove(session.paths.testsPath);
    const std::vector<unsigned char> students = readFileBytes(session.paths.studentsPath);
    EXPECT_TRUE(startFrom(0).isEmpty());
    EXPECT_FALSE(fs::exists(session.paths.testsPath));
    EXPECT_EQ(readFileBytes(session.paths.studentsPath), students);
}
