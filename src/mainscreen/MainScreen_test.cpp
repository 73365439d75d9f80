// Starting the main screen (a first run, a data directory or files it cannot
// use) and what it does between tests.
#include "MainScreenFixture_test.h"

#include "core/DataFileBackups.h"

#include <QTimer>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

void writeFile(const fs::path &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string fileText(const fs::path &path)
{
    const std::vector<unsigned char> bytes = readFileBytes(path);
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

TEST_F(MainScreenTest, FirstRunMakesTheDataDirectoryAndOpensTheStudentsScreenFirst)
{
    fs::remove_all(dir.path());
    createScreen();
    EXPECT_TRUE(fs::is_directory(dir.path()));
    EXPECT_EQ(studentsScreenShown, 0) << "nothing that needs a dialog before the screen is up";

    screen->show();
    screen->firstActivation();
    screen->firstActivation(); // only the first activation starts up
    EXPECT_EQ(studentsScreenShown, 1);
    EXPECT_EQ(subjectsListedWhenStudentsOpened, 6) << "the default tests are loaded first";
    EXPECT_EQ(fileText(session.paths.blankPagePath), "<HTML></HTML>") << "13 bytes, no line end";
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_FALSE(fs::exists(session.paths.testsPath)) << "defaults stay in memory";
    EXPECT_EQ(studentsOnDisk().students.at(0).name, "Ann");

    EXPECT_EQ(texts({"lblStudent", "lblSubject", "lblLevel", "lblDuration", "lblHighScore",
                     "lblLastScore"}),
              "Ann|Arithmetic|K|30 secs|0|0");
    EXPECT_TRUE(option("optLevel0")->isChecked());
    EXPECT_EQ(showing({"fraStartTest", "fraSplash", "fraQuestion_Math", "fraQuestion_Multi",
                       "lblTestCompleted"}),
              "fraStartTest");
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    EXPECT_EQ(screen->focusWidget(), button("cmdStartTest"));
}

TEST_F(MainScreenTest, ADataDirectoryOrStudentsFileThatCannotBeUsedEndsTheProgram)
{
    const fs::path blocker = dir.path() / "blocker";
    writeFile(blocker, "not a directory");
    for (const fs::path &dataDir : {blocker / "data", blocker}) {
        prompt.clear();
        session.paths = DataPaths::in(dataDir);
        startUp();
        ASSERT_EQ(prompt.shown().size(), 1u) << dataDir;
        EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
        for (const QString &part :
             {QString::fromStdString(dataDir.string()), QString("could not be created: ")})
            EXPECT_TRUE(prompt.last()->text.contains(part)) << prompt.last()->text;
        EXPECT_TRUE(screen->isEnding());
        EXPECT_FALSE(screen->isVisible());
        EXPECT_EQ(studentsScreenShown, 0);
    }
    EXPECT_EQ(fileText(blocker), "not a directory");

    // The Students screen reports a roster it cannot read; the file is left alone.
    session.paths = dir.paths();
    writeFile(session.paths.studentsPath, "\x05\x06");
    createScreen();
    screen->setOtherScreens({[this] { return ++studentsScreenShown, false; }, [] {}, [] {}});
    screen->show();
    screen->firstActivation();
    EXPECT_EQ(studentsScreenShown, 1);
    EXPECT_TRUE(screen->isEnding());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(fileText(session.paths.studentsPath), "\x05\x06");
}

TEST_F(MainScreenTest, ADamagedTestsFileIsMovedAsideUnderAFreeNameAndTheDefaultsAreUsed)
{
    writeFile(session.paths.testsPath, "\x01\x02\x03");
    writeFile(dir.path() / "Tavrino_Tests.damaged.dat", "an older damaged copy");
    startUp();

    const fs::path copy = dir.path() / "Tavrino_Tests.damaged.2.dat";
    EXPECT_FALSE(fs::exists(session.paths.testsPath));
    EXPECT_EQ(fileText(copy), "\x01\x02\x03");
    EXPECT_EQ(fileText(dir.path() / "Tavrino_Tests.damaged.dat"), "an older damaged copy");

    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(messagesWhenStudentsOpened, 1u) << "told before the Students screen comes up";
    const QString &message = prompt.last()->text;
    for (const std::string &part : {session.paths.testsPath.string(), std::string("damaged"),
                                    copy.string(), std::string("default tests")})
        EXPECT_TRUE(message.contains(QString::fromStdString(part))) << message;
    EXPECT_EQ(combo("cmbSubject")->count(), 6);
    EXPECT_TRUE(shown("fraStartTest"));
    for (const Backup &backup : session.backups.list())
        EXPECT_NE(backup.file, DataFile::Tests) << "a damaged file kept aside is no backup";
}

TEST_F(MainScreenTest, ATestsFileRestoredOnTheStudentsScreenShowsItsSubjectsAtOnce)
{
    startUp();
    // The Students screen's Backups... brought back a bank with a subject more.
    screen->setOtherScreens({[this] {
                                 TestBank restored;
                                 buildDefaultTests(restored);
                                 addSubject(restored, "Birds");
                                 adoptBank(session.bank, std::move(restored), session.records);
                                 session.records.currentSubject = 6;
                                 session.records.currentSubjectName = "Birds";
                                 return closeStudentsScreen();
                             },
                             [] {}, [] {}});
    button("cmdSelectStudent")->click();
    EXPECT_EQ(combo("cmbSubject")->count(), 7);
    EXPECT_EQ(combo("cmbSubject")->currentText(), "Birds");
    EXPECT_EQ(text("lblSubject"), "Birds");
}

TEST_F(MainScreenTest, SubjectAndLevelChoicesFollowTheBankAndTheOtherScreensAndAreSaved)
{
    saveTestsWith([](TestBank &bank) {
        bank.limits[SpellingSubject].seconds = 45;
        bank.limits[SpellingSubject].lastQuestion[7] = -1;
        bank.arithOps[6].clear();
    });
    startUp();
    EXPECT_FALSE(option("optLevel6")->isEnabled()) << "Arithmetic level without operations";
    EXPECT_TRUE(option("optLevel7")->isEnabled());
    session.records.students[0].results[SpellingSubject].last[3] = 4;
    session.records.students[0].results[SpellingSubject].high[3] = 7;

    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    EXPECT_EQ(texts({"lblSubject", "lblDuration"}), "Spelling|45 secs");
    EXPECT_FALSE(option("optLevel7")->isEnabled()) << "Spelling level without questions";
    EXPECT_TRUE(option("optLevel6")->isEnabled());
    EXPECT_EQ(studentsOnDisk().currentSubject, SpellingSubject);
    chooseLevel(3);
    EXPECT_EQ(texts({"lblLevel", "lblLastScore", "lblHighScore"}), "3|4|7");
    EXPECT_EQ(studentsOnDisk().students[0].level, 3);
    chooseLevel(0);
    EXPECT_EQ(texts({"lblLevel", "lblLastScore", "lblHighScore"}), "K|0|0");
    EXPECT_EQ(studentsOnDisk().students[0].level, 0);

    // The main screen follows what the Tests screen changed.
    std::string opened;
    screen->setOtherScreens({[&] { return opened += "Students", closeStudentsScreen(); },
                             [&] {
                                 opened += "Tests ";
                                 session.bank.limits[SpellingSubject].seconds = 90;
                                 session.bank.subjects[SpellingSubject].name = "Words";
                                 session.bank.limits[SpellingSubject].lastQuestion[2] = -1;
                             },
                             [&] { opened += "Help "; }});
    button("cmdTest")->click();
    button("cmdHelp")->click();
    button("cmdSelectStudent")->click();
    EXPECT_EQ(opened, "Tests Help Students");
    EXPECT_EQ(combo("cmbSubject")->itemText(SpellingSubject), "Words");
    EXPECT_EQ(text("lblDuration"), "90 secs");
    EXPECT_FALSE(option("optLevel2")->isEnabled());
    EXPECT_TRUE(prompt.shown().empty());

    // A directory where the Students file belongs cannot be replaced by a file.
    fs::remove(session.paths.studentsPath);
    fs::create_directory(session.paths.studentsPath);
    chooseLevel(4);
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_TRUE(prompt.last()->text.contains("Tavrino_Students.dat")) << prompt.last()->text;
    EXPECT_EQ(text("lblLevel"), "4") << "a save that fails is reported and the screen goes on";
    EXPECT_FALSE(screen->isEnding());
}
