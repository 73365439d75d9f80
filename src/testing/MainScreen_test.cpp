#include "testing/MainScreen.h"

#include "MainScreenFixture.h"
#include "testing/StartUp.h"
#include "ui/Colours.h"

#include <QButtonGroup>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

void writeFile(const fs::path &path, const std::string &bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
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

    EXPECT_EQ(screen->windowTitle(), "Tavrino");
    EXPECT_EQ(text("lblStudent"), "Ann");
    EXPECT_EQ(text("lblSubject"), "Arithmetic");
    EXPECT_EQ(text("lblLevel"), "K");
    EXPECT_EQ(text("lblDuration"), "30 secs");
    EXPECT_EQ(text("lblHighScore"), "0");
    EXPECT_EQ(text("lblLastScore"), "0");
    EXPECT_EQ(combo("cmbSubject")->currentText(), "Arithmetic");
    EXPECT_TRUE(option("optLevel0")->isChecked());
    EXPECT_TRUE(shown("Frame1"));
    EXPECT_FALSE(shown("fraSplash"));
    EXPECT_TRUE(shown("fraStartTest"));
    EXPECT_TRUE(shown("fraScore"));
    EXPECT_FALSE(shown("fraScore_Test"));
    EXPECT_FALSE(shown("fraQuestion_Math"));
    EXPECT_FALSE(shown("fraQuestion_Multi"));
    EXPECT_FALSE(shown("fraLastAnswer"));
    EXPECT_FALSE(shown("lblTestCompleted"));
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    EXPECT_EQ(screen->focusWidget(), button("cmdStartTest"));

    const StudentRecords onDisk = studentsOnDisk();
    ASSERT_EQ(onDisk.Students.size(), 1u);
    EXPECT_EQ(onDisk.Students[0].Name, "Ann");

    screen->Form_Activate();
    EXPECT_EQ(studentsScreenShown, 1) << "only the first activation starts up";
}

TEST_F(MainScreenTest, EveryControlCarriesItsCaption)
{
    startUp();
    EXPECT_EQ(screen->objectName(), "frmMain");
    EXPECT_EQ(button("cmdTest")->text(), "Tests");
    EXPECT_EQ(button("cmdSelectStudent")->text(), "Students");
    EXPECT_EQ(button("cmdHelp")->text(), "Help");
    EXPECT_EQ(button("cmdExit")->text(), "E&xit");
    EXPECT_EQ(button("cmdStartTest")->text(), "Start Test");
    EXPECT_EQ(button("cmdStop")->text(), "Stop Test");
    EXPECT_EQ(option("optLevel0")->text(), "K");
    EXPECT_EQ(option("optLevel1")->text(), "1");
    EXPECT_EQ(option("optLevel12")->text(), "12");
    EXPECT_EQ(text("lblInstruction"), "Type your answer, and press [Enter]:");
    EXPECT_EQ(text("lblLastAnswer"), "Your last answer was");
    for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
        EXPECT_NE(box(name), nullptr);
    for (const char *name :
         {"lblOp", "lblEqual", "lblQuestion_Multi", "lblInstruction_Multi", "lblRightWrong",
          "lblTimeLeft", "lblScoreRight", "lblScoreWrong", "lblScoreTotal", "lblLastQuestion_Math0",
          "lblLastQuestion_Math4", "lblLastQuestion_Multi0", "lblLastQuestion_Multi1"})
        EXPECT_NE(label(name), nullptr);
    for (const char *name : {"optAnswer0", "optAnswer3"})
        EXPECT_NE(option(name), nullptr);
    for (const char *name : {"fraScore_Totals", "fraScore_Test"})
        EXPECT_NE(find<QWidget>(name), nullptr);

    QStringList captions;
    for (const QLabel *caption : screen->findChildren<QLabel *>())
        captions << caption->text();
    for (const char *caption :
         {"Subject:", "Level:", "Seconds:", "Student:", "High Score:", "Last Score:", "Time",
          "Right", "Wrong", "Score", "Please Wait ...", "Loading Program,"})
        EXPECT_TRUE(captions.contains(QLatin1String(caption))) << caption;
    EXPECT_EQ(text("lblDuration").section(' ', 1), "secs");
    EXPECT_EQ(QFontInfo(button("cmdStartTest")->font()).family(),
              QFontInfo(QFont("Arial")).family());
}

TEST_F(MainScreenTest, AnExistingEmptyDataDirectoryIsUsedAsItIs)
{
    ASSERT_TRUE(fs::is_directory(dir.path()));
    ASSERT_TRUE(fs::is_empty(dir.path()));
    startUp();
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_FALSE(screen->isEnding());
    EXPECT_EQ(studentsScreenShown, 1);
    EXPECT_TRUE(fs::exists(session.paths.BlankPagePath));
    EXPECT_TRUE(fs::exists(session.paths.StudentsPath));
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
        EXPECT_TRUE(prompt.last()->text.contains(QString::fromStdString(dataDir.string())));
        EXPECT_TRUE(prompt.last()->text.contains("could not be created: ")) << prompt.last()->text;
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
    EXPECT_EQ(FreeDamagedCopyPath(dir.path()), dir.path() / "Tavrino_Tests.damaged.3.dat");

    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(messagesWhenStudentsOpened, 1u) << "told before the Students screen comes up";
    const ScriptedPrompt::Shown &message = prompt.shown().front();
    EXPECT_EQ(message.kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_TRUE(message.text.contains(QString::fromStdString(session.paths.TestsPath.string())));
    EXPECT_TRUE(message.text.contains("damaged")) << message.text;
    EXPECT_TRUE(message.text.contains(QString::fromStdString(copy.string()))) << message.text;
    EXPECT_TRUE(message.text.contains("default tests")) << message.text;

    EXPECT_EQ(session.bank.SubjectMax, 5);
    EXPECT_EQ(combo("cmbSubject")->count(), 6);
    EXPECT_EQ(studentsScreenShown, 1);
    EXPECT_TRUE(shown("fraStartTest"));
}

TEST_F(MainScreenTest, AStudentsFileThatCannotBeReadEndsTheProgramAndIsLeftAsItWas)
{
    writeFile(session.paths.StudentsPath, "\x05\x06");
    createScreen();
    int shownCount = 0;
    screen->setOtherScreens({[&shownCount] {
                                 ++shownCount;
                                 return false;
                             },
                             [] {}, [] {}});
    screen->show();
    screen->Form_Activate();
    EXPECT_EQ(shownCount, 1);
    EXPECT_TRUE(screen->isEnding());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_FALSE(find<QWidget>("fraStartTest")->isVisibleTo(screen.get()));
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

    QTest::mouseClick(option("optLevel3"), Qt::LeftButton);
    EXPECT_EQ(text("lblLevel"), "3");
    EXPECT_EQ(text("lblLastScore"), "4");
    EXPECT_EQ(text("lblHighScore"), "7");
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 3);

    QTest::mouseClick(option("optLevel0"), Qt::LeftButton);
    EXPECT_EQ(text("lblLevel"), "K");
    EXPECT_EQ(text("lblHighScore"), "0");
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 0);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(MainScreenTest, ASaveThatFailsIsReportedAndTheScreenGoesOn)
{
    startUp();
    // A directory where the Students file belongs cannot be replaced by a file.
    fs::remove(session.paths.StudentsPath);
    fs::create_directory(session.paths.StudentsPath);
    QTest::mouseClick(option("optLevel2"), Qt::LeftButton);
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_TRUE(prompt.last()->text.contains("Tavrino_Students.dat")) << prompt.last()->text;
    EXPECT_EQ(text("lblLevel"), "2");
    EXPECT_EQ(session.records.CurrentLevel, 2);
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
                                 TestBank &bank = session.bank;
                                 bank.Limits[ArithmeticSubject].Seconds = 90;
                                 bank.Subjects.push_back({"Fractions", false});
                                 bank.QuestionBank.emplace_back();
                                 SubjectLimits limits;
                                 limits.LastQuestion.fill(-1);
                                 limits.LastQuestion[2] = 0;
                                 limits.Seconds = 60;
                                 bank.Limits.push_back(limits);
                                 bank.SubjectMax += 1;
                                 ResizeQuestionSlots(bank, bank.QuestionMax);
                                 AddSubjectResults(session.records, bank.SubjectMax);
                             },
                             [&helpShown] { ++helpShown; }});

    QTest::mouseClick(button("cmdTest"), Qt::LeftButton);
    EXPECT_EQ(testsShown, 1);
    EXPECT_EQ(combo("cmbSubject")->count(), 7);
    EXPECT_EQ(combo("cmbSubject")->itemText(6), "Fractions");
    EXPECT_EQ(combo("cmbSubject")->currentText(), "Arithmetic");
    EXPECT_EQ(text("lblDuration"), "90 secs");

    combo("cmbSubject")->setCurrentIndex(6);
    EXPECT_EQ(text("lblSubject"), "Fractions");
    EXPECT_EQ(text("lblDuration"), "60 secs");
    for (int level = 0; level < LevelCount; ++level)
        EXPECT_EQ(find<QRadioButton>(QString("optLevel%1").arg(level).toLatin1().constData())
                      ->isEnabled(),
                  level == 2)
            << level;

    QTest::mouseClick(button("cmdHelp"), Qt::LeftButton);
    EXPECT_EQ(helpShown, 1);
    QTest::mouseClick(button("cmdSelectStudent"), Qt::LeftButton);
    EXPECT_EQ(studentsScreenShown, 2);
    EXPECT_EQ(text("lblSubject"), "Fractions") << "the chosen subject stays";
}
