// A school day on one machine: a thousand tests in one process through the main
// screen, ended by Stop and by the clock, with the current student changing now
// and then. Afterwards the Students file must hold exactly the scores the tests
// produced, and the process must not have grown while it ran.
#include "MainScreenFixture.h"

#include "core/TestsFile.h"

#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>

namespace {

constexpr int Tests = 1000;
constexpr int TestSeconds = 5;
constexpr int Students = 3;
constexpr long AllowedGrowthKb = 5 * 1024;

// AddressSanitizer holds freed memory back in quarantine, so resident memory
// says nothing about leaks there; it reports leaks itself at exit.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool ResidentMemoryTellsLeaks = false;
#else
constexpr bool ResidentMemoryTellsLeaks = true;
#endif

// Subjects and levels taken in turn: Arithmetic on levels whose numbers never
// make a blank unanswerable, and every built-in multiple-choice subject.
struct Choice {
    int subject;
    int level;
};
constexpr std::array<Choice, 13> Choices = {{
    {0, 0},
    {1, 3},
    {0, 5},
    {2, 1},
    {0, 8},
    {3, 12},
    {4, 0},
    {0, 3},
    {5, 7},
    {1, 0},
    {0, 12},
    {2, 6},
    {0, 4},
}};

// Resident memory in kB, after handing freed heap back to the system so that
// only memory still in use counts.
long ResidentKb()
{
    malloc_trim(0);
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6));
    return -1;
}

struct Scores {
    int last = 0;
    int high = 0;
};
using Key = std::tuple<int, int, int>; // student, subject, level

} // namespace

class LongUseTest : public MainScreenTest {
protected:
    // Every save is flushed to disk twice (the file, then its directory), and a
    // test saves three times (subject, level, end): on a real disk the run would
    // be almost all waiting for it. A memory-backed directory, where there is
    // one, keeps the saves real and the run about the program.
    static void SetUpTestSuite()
    {
        if (const char *previous = std::getenv("TMPDIR"))
            s_previousTmpDir = previous;
        std::error_code error;
        if (std::filesystem::is_directory("/dev/shm", error))
            setenv("TMPDIR", "/dev/shm", 1);
    }
    static void TearDownTestSuite()
    {
        if (s_previousTmpDir)
            setenv("TMPDIR", s_previousTmpDir->c_str(), 1);
        else
            unsetenv("TMPDIR");
    }

    // The Students screen's close, choosing the student the test asks for.
    bool chooseStudent()
    {
        StudentRecords &records = session.records;
        if (records.Students.empty()) {
            EXPECT_EQ(LoadStudents(records, session.bank, session.paths.StudentsPath).status,
                      LoadResult::Status::Loaded);
        }
        for (Student &student : records.Students)
            student.Current = false;
        Student &chosen = records.Students.at(m_nextStudent);
        chosen.Current = true;
        records.CurrentStudent = m_nextStudent;
        records.CurrentStudentName = TrimName(chosen.Name);
        records.CurrentLevel = chosen.Level;
        return session.saveStudents(nullptr);
    }

    void writeRoster()
    {
        StudentRecords records;
        TestBank bank;
        BuildDefaultTests(bank);
        for (const char *name : {"Ann", "Bob", "Cy"}) {
            Student student = NewStudent(bank.SubjectMax);
            student.Name = name;
            records.Students.push_back(student);
        }
        records.Students[0].Current = true;
        ASSERT_FALSE(SaveStudents(records, session.paths.StudentsPath).has_value());
    }

    QLineEdit *blankBox() const
    {
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
            if (box(name)->text().isEmpty())
                return box(name);
        return nullptr;
    }

    // The number that makes the equation on the screen true in the blank box.
    long long rightEntry(const QLineEdit *blank) const
    {
        const long long n1 = box("txtNum1")->text().toLongLong();
        const long long n2 = box("txtNum2")->text().toLongLong();
        const long long answer = box("txtAnswer")->text().toLongLong();
        const QChar op = text("lblOp").at(0);
        if (blank == box("txtAnswer"))
            return op == '+' ? n1 + n2 : op == '-' ? n1 - n2 : op == 'x' ? n1 * n2 : n1 / n2;
        if (blank == box("txtNum1"))
            return op == '+'   ? answer - n2
                   : op == '-' ? answer + n2
                   : op == 'x' ? answer / n2
                               : answer * n2;
        return op == '+'   ? answer - n1
               : op == '-' ? n1 - answer
               : op == 'x' ? answer / n1
                           : n1 / answer;
    }

    void answerArithmetic(bool right)
    {
        QLineEdit *blank = blankBox();
        ASSERT_NE(blank, nullptr);
        QTest::keyClicks(blank, QString::number(rightEntry(blank) + (right ? 0 : 1)));
        QTest::keyClick(blank, Qt::Key_Return);
    }

    // The right answer among the buttons: the Answer of the subject's stored
    // question whose text and four answers are the ones shown.
    QString rightChoice() const
    {
        std::multiset<std::string> shownAnswers;
        for (int index = 0; index < 4; ++index)
            shownAnswers.insert(option(QString("optAnswer%1").arg(index).toLatin1().constData())
                                    ->text()
                                    .toStdString());
        const std::string question = text("lblQuestion_Multi").toStdString();
        const int subject = session.records.CurrentSubject;
        std::set<std::string> answers;
        for (const auto &level : session.bank.QuestionBank[subject].Items)
            for (const Question &stored : level) {
                const std::string label = subject != SpellingSubject ? stored.Text + "?"
                                          : stored.Text.empty()      ? std::string()
                                                                     : stored.Text + ":";
                if (label == question &&
                    std::multiset<std::string>{stored.Answer, stored.Wrong1, stored.Wrong2,
                                               stored.Wrong3} == shownAnswers)
                    answers.insert(stored.Answer);
            }
        EXPECT_EQ(answers.size(), 1u) << "the question on the screen is one stored question";
        return answers.empty() ? QString() : QString::fromStdString(*answers.begin());
    }

    void answerMultipleChoice(bool right)
    {
        const QString wanted = rightChoice();
        for (int index = 0; index < 4; ++index) {
            QRadioButton *answer = option(QString("optAnswer%1").arg(index).toLatin1().constData());
            if ((answer->text() == wanted) == right) {
                QTest::mouseClick(answer, Qt::LeftButton);
                QTest::keyClick(answer, Qt::Key_Return);
                return;
            }
        }
        ADD_FAILURE() << "no answer to choose";
    }

    int m_nextStudent = 0;
    static inline std::optional<std::string> s_previousTmpDir;
};

TEST_F(LongUseTest, AThousandTestsLeaveExactlyTheirScoresOnDiskAndMemoryFlat)
{
    saveTestsWith([](TestBank &bank) {
        for (SubjectLimits &limits : bank.Limits)
            limits.Seconds = TestSeconds;
    });
    writeRoster();
    createScreen();
    screen->setOtherScreens({[this] { return chooseStudent(); }, [] {}, [] {}});
    screen->show();
    screen->Form_Activate();
    ASSERT_EQ(session.records.Students.size(), static_cast<std::size_t>(Students));

    std::map<Key, Scores> expected;
    long residentAfterWarmUp = 0;
    const auto started = std::chrono::steady_clock::now();
    for (int test = 0; test < Tests; ++test) {
        if (test % 7 == 3) {
            m_nextStudent = (test / 7) % Students;
            screen->cmdSelectStudent_Click();
            ASSERT_EQ(text("lblStudent"),
                      QString::fromStdString(session.records.Students[m_nextStudent].Name));
        }
        const Choice choice = Choices[test % Choices.size()];
        combo("cmbSubject")->setCurrentIndex(choice.subject);
        QRadioButton *level =
            option(QString("optLevel%1").arg(choice.level).toLatin1().constData());
        ASSERT_TRUE(level->isEnabled()) << choice.subject << "/" << choice.level;
        level->click();
        ASSERT_EQ(session.records.CurrentLevel, choice.level);

        screen->cmdStartTest_Click();
        const int rights = 1 + test % 3;
        const int wrongs = (test / 3) % 3;
        for (int turn = 0; turn < std::max(rights, wrongs); ++turn)
            for (const bool right : {true, false}) {
                if (turn >= (right ? rights : wrongs))
                    continue;
                if (choice.subject == ArithmeticSubject)
                    answerArithmetic(right);
                else
                    answerMultipleChoice(right);
            }
        ASSERT_EQ(text("lblScoreTotal"), QString::number(rights - wrongs)) << "test " << test;

        const bool timeOut = test % 5 < 2;
        if (timeOut) {
            for (int second = 0; second < TestSeconds; ++second)
                screen->Timer1_Timer();
            ASSERT_FALSE(shown("cmdStartTest"));
            screen->Timer1_Timer(); // the pause before Start comes back
        } else {
            screen->cmdStop_Click();
        }
        ASSERT_TRUE(shown("cmdStartTest"));

        Scores &scores = expected[{session.records.CurrentStudent, choice.subject, choice.level}];
        scores.last = rights - wrongs;
        scores.high = std::max(scores.high, scores.last);
        ASSERT_EQ(text("lblLastScore"), QString::number(scores.last)) << "test " << test;
        ASSERT_EQ(text("lblHighScore"), QString::number(scores.high)) << "test " << test;

        // Between tests the program is back in its event loop, which delivers
        // what the screen queued (repaints, window-system events); the clock is
        // stopped, so no tick can come from here.
        ASSERT_FALSE(find<QTimer>("Timer1")->isActive());
        QCoreApplication::processEvents();

        if (test == 99)
            residentAfterWarmUp = ResidentKb();
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    const long residentAtEnd = ResidentKb();
    std::cout << Tests << " tests in " << seconds << " s; resident memory " << residentAfterWarmUp
              << " kB after 100, " << residentAtEnd << " kB after " << Tests << "\n";
    if (ResidentMemoryTellsLeaks) {
        EXPECT_LE(residentAtEnd - residentAfterWarmUp, AllowedGrowthKb);
    }

    // What a restart would find.
    TestBank bank;
    ASSERT_EQ(LoadTests(bank, session.paths.TestsPath).status, LoadResult::Status::Loaded);
    StudentRecords onDisk;
    ASSERT_EQ(LoadStudents(onDisk, bank, session.paths.StudentsPath).status,
              LoadResult::Status::Loaded);
    ASSERT_EQ(onDisk.Students.size(), static_cast<std::size_t>(Students));
    int mismatches = 0;
    for (int student = 0; student < Students; ++student)
        for (int subject = 0; subject <= bank.SubjectMax; ++subject)
            for (int level = 0; level < LevelCount; ++level) {
                const auto found = expected.find({student, subject, level});
                const Scores want = found == expected.end() ? Scores{} : found->second;
                const SubjectResults &results = onDisk.Students[student].Results.at(subject);
                if (results.Last[level] != want.last || results.High[level] != want.high) {
                    ++mismatches;
                    ADD_FAILURE() << "student " << student << " subject " << subject << " level "
                                  << level << ": file Last/High " << results.Last[level] << "/"
                                  << results.High[level] << ", tests gave " << want.last << "/"
                                  << want.high;
                }
            }
    EXPECT_EQ(mismatches, 0);
    EXPECT_EQ(expected.size(), Choices.size() * Students) << "every student took every choice";
}
