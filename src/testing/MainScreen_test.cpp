#include "testing/MainScreen.h"

#include "MainScreenFixture.h"
#include "testing/StartUp.h"

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
    const std::vector<unsigned char> bytes = ReadFileBytes(path);
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
    screen->Form_Activate();
    EXPECT_EQ(fileText(session.paths.BlankPagePath), "<HTML></HTML>\n");
    EXPECT_EQ(studentsScreenShown, 1);
    EXPECT_EQ(subjectsListedWhenStudentsOpened, 6) << "the default tests are loaded first";
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_FALSE(fs::exists(session.paths.TestsPath)) << "defaults stay in memory";
    EXPECT_EQ(studentsOnDisk().Students.at(0).Name, "Ann");

    const std::pair<const char *, const char *> captions[] = {
        {"lblStudent", "Ann"},      {"lblSubject", "Arithmetic"}, {"lblLevel", "K"},
        {"lblDuration", "30 secs"}, {"lblHighScore", "0"},        {"lblLastScore", "0"}};
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(text(name), caption) << name;
    const std::pair<const char *, const char *> buttons[] = {
        {"cmdTest", "Tests"}, {"cmdSelectStudent", "Students"}, {"cmdHelp", "Help"},
        {"cmdExit", "E&xit"}, {"cmdStartTest", "Start Test"},   {"cmdStop", "Stop Test"}};
    for (const auto &[name, caption] : buttons)
        EXPECT_EQ(button(name)->text(), caption) << name;
    EXPECT_TRUE(option("optLevel0")->isChecked());
    EXPECT_TRUE(shown("fraStartTest"));
    for (const char *hidden :
         {"fraSplash", "fraQuestion_Math", "fraQuestion_Multi", "lblTestCompleted"})
        EXPECT_FALSE(shown(hidden)) << hidden;
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    EXPECT_EQ(screen->focusWidget(), button("cmdStartTest"));

    screen->Form_Activate();
    EXPECT_EQ(studentsScreenShown, 1) << "only the first activation starts up";
}

TEST_F(MainScreenTest, ADataDirectoryThatCannotBeMadeEndsTheProgramWithAMessage)
{
    const fs::path blocker = dir.path() / "blocker";
    writeFile(blocker, "not a directory");
    for (const fs::path &dataDir : {blocker / "data", blocker}) {
        prompt.clear();
        session.paths = DataPaths::In(dataDir);
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
}

TEST_F(MainScreenTest, ADamagedTestsFileIsMovedAsideUnderAFreeNameAndTheDefaultsAreUsed)
{
    writeFile(session.paths.TestsPath, "\x01\x02\x03");
    writeFile(dir.path() / "Tavrino_Tests.damaged.dat", "an older damaged copy");
    startUp();

    const fs::path copy = dir.path() / "Tavrino_Tests.damaged.2.dat";
    EXPECT_FALSE(fs::exists(session.paths.TestsPath));
    EXPECT_EQ(fileText(copy), "\x01\x02\x03");
    EXPECT_EQ(fileText(dir.path() / "Tavrino_Tests.damaged.dat"), "an older damaged copy");

    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(messagesWhenStudentsOpened, 1u) << "told before the Students screen comes up";
    const ScriptedPrompt::Shown &message = prompt.shown().front();
    EXPECT_EQ(message.kind, ScriptedPrompt::Shown::Kind::Stop);
    for (const std::string &part : {session.paths.TestsPath.string(), std::string("damaged"),
                                    copy.string(), std::string("default tests")})
        EXPECT_TRUE(message.text.contains(QString::fromStdString(part))) << message.text;
    EXPECT_EQ(combo("cmbSubject")->count(), 6);
    EXPECT_TRUE(shown("fraStartTest"));
}

TEST_F(MainScreenTest, AStudentsFileThatCannotBeReadEndsTheProgramAndIsLeftAsItWas)
{
    writeFile(session.paths.StudentsPath, "\x05\x06");
    createScreen();
    int shownCount = 0;
    screen->setOtherScreens({[&shownCount] { return ++shownCount, false; }, [] {}, [] {}});
    screen->show();
    screen->Form_Activate();
    EXPECT_EQ(shownCount, 1);
    EXPECT_TRUE(screen->isEnding());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(fileText(session.paths.StudentsPath), "\x05\x06");
}

TEST_F(MainScreenTest, SubjectAndLevelChoicesFollowTheBankAndAreSaved)
{
    saveTestsWith([](TestBank &bank) {
        bank.Limits[SpellingSubject].Seconds = 45;
        bank.Limits[SpellingSubject].LastQuestion[7] = -1;
        bank.ArithOps[6].clear();
    });
    startUp();
    EXPECT_FALSE(option("optLevel6")->isEnabled()) << "Arithmetic level without operations";
    EXPECT_TRUE(option("optLevel7")->isEnabled());
    session.records.Students[0].Results[SpellingSubject].Last[3] = 4;
    session.records.Students[0].Results[SpellingSubject].High[3] = 7;

    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    EXPECT_EQ(text("lblSubject"), "Spelling");
    EXPECT_EQ(text("lblDuration"), "45 secs");
    EXPECT_FALSE(option("optLevel7")->isEnabled()) << "Spelling level without questions";
    EXPECT_TRUE(option("optLevel6")->isEnabled());
    EXPECT_EQ(studentsOnDisk().CurrentSubject, SpellingSubject);

    chooseLevel(3);
    EXPECT_EQ(text("lblLevel"), "3");
    EXPECT_EQ(text("lblLastScore"), "4");
    EXPECT_EQ(text("lblHighScore"), "7");
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 3);

    chooseLevel(0);
    EXPECT_EQ(text("lblLevel"), "K");
    EXPECT_EQ(text("lblHighScore"), "0");
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 0);
    EXPECT_TRUE(prompt.shown().empty());

    // A directory where the Students file belongs cannot be replaced by a file.
    fs::remove(session.paths.StudentsPath);
    fs::create_directory(session.paths.StudentsPath);
    chooseLevel(2);
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_TRUE(prompt.last()->text.contains("Tavrino_Students.dat")) << prompt.last()->text;
    EXPECT_EQ(text("lblLevel"), "2") << "a save that fails is reported and the screen goes on";
    EXPECT_FALSE(screen->isEnding());
}

TEST_F(MainScreenTest, TheOtherScreensOpenAndTheMainScreenFollowsTheirChanges)
{
    startUp();
    int testsShown = 0;
    int helpShown = 0;
    screen->setOtherScreens({[this] { return closeStudentsScreen(); },
                             [this, &testsShown] {
                                 ++testsShown;
                                 session.bank.Limits[ArithmeticSubject].Seconds = 90;
                                 session.bank.Subjects[SpellingSubject].Name = "Words";
                                 session.bank.ArithOps[2].clear();
                             },
                             [&helpShown] { ++helpShown; }});
    button("cmdTest")->click();
    button("cmdHelp")->click();
    button("cmdSelectStudent")->click();
    EXPECT_EQ(testsShown + helpShown + studentsScreenShown, 1 + 1 + 2);
    EXPECT_EQ(combo("cmbSubject")->itemText(SpellingSubject), "Words");
    EXPECT_EQ(text("lblDuration"), "90 secs");
    EXPECT_FALSE(option("optLevel2")->isEnabled());
}
