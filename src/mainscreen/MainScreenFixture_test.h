// The main screen over a fresh data directory, with scripted dialogs and a
// Students screen replaced by what its close does: one current student (Ann,
// on a first run), and a child answering the questions on the screen.
#pragma once

#include "core/DefaultBank.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"
#include "mainscreen/MainScreen.h"
#include "quiz/Random.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/ShownText.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <ostream>
#include <set>
#include <string>

// Texts in failure messages.
inline std::ostream &operator<<(std::ostream &out, const QString &text)
{
    return out << text.toStdString();
}

inline QColor textColour(const QWidget *widget)
{
    return widget->palette().color(QPalette::WindowText);
}

class MainScreenTest : public ::testing::Test {
protected:
    TempDataDir dir;
    ScriptedPrompt prompt;
    // Dates the answer history; it moves only when a test moves it.
    ManualClock clock;
    Session session{dir.paths(), prompt, clock};
    RandomSource random{20240611};
    std::unique_ptr<MainScreen> screen;
    int studentsScreenShown = 0;
    int subjectsListedWhenStudentsOpened = -1;
    std::size_t messagesWhenStudentsOpened = 0;
    int nextStudent = 0; // the one the Students screen closes on

    void createScreen()
    {
        screen = std::make_unique<MainScreen>(session, random);
        screen->setOtherScreens({[this] { return closeStudentsScreen(); }, [] {}, [] {}});
    }

    // A Tests file holding the defaults with the given changes, as the Tests
    // screen would have saved it.
    template <typename Change> void saveTestsWith(Change change)
    {
        TestBank bank;
        buildDefaultTests(bank);
        change(bank);
        ASSERT_FALSE(saveTests(bank, session.paths.testsPath));
    }

    // The program's start: the window comes up and activates for the first time.
    void startUp()
    {
        createScreen();
        screen->show();
        screen->activateWindow();
        // Lets the window become active. The first activation may run from
        // here already; the call below then finds it done.
        QCoreApplication::processEvents();
        screen->firstActivation();
    }

    // What the Students screen does from its load to its close: the roster is
    // read (or started, with Ann as the first name) and nextStudent is made current.
    bool closeStudentsScreen()
    {
        ++studentsScreenShown;
        subjectsListedWhenStudentsOpened = combo("cmbSubject")->count();
        messagesWhenStudentsOpened = prompt.shown().size();
        StudentRecords &records = session.records;
        if (records.students.empty() &&
            loadStudents(records, session.bank, session.paths.studentsPath).status ==
                LoadResult::Status::Missing)
            records.students[0].name = "Ann";
        for (Student &student : records.students)
            student.current = false;
        Student &chosen = records.students.at(static_cast<std::size_t>(nextStudent));
        chosen.current = true;
        records.currentStudent = nextStudent;
        records.currentStudentName = trimName(chosen.name);
        records.currentLevel = chosen.level;
        return session.saveStudents(nullptr);
    }

    // The roster as it is on disk now.
    StudentRecords studentsOnDisk() const
    {
        StudentRecords onDisk;
        EXPECT_EQ(loadStudents(onDisk, session.bank, session.paths.studentsPath).status,
                  LoadResult::Status::Loaded);
        return onDisk;
    }
    // Last and High of the first student on disk, as "Last|High".
    QString scoresOnDisk(int subject, int level) const
    {
        const SubjectResults results =
            studentsOnDisk().students.at(0).results.at(static_cast<std::size_t>(subject));
        return QString("%1|%2").arg(results.last[level]).arg(results.high[level]);
    }

    template <typename W> W *find(const QString &name) const
    {
        W *widget = screen->findChild<W *>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLabel *label(const QString &name) const { return find<QLabel>(name); }
    QPushButton *button(const QString &name) const { return find<QPushButton>(name); }
    QLineEdit *box(const QString &name) const { return find<QLineEdit>(name); }
    QRadioButton *option(const QString &name) const { return find<QRadioButton>(name); }
    QComboBox *combo(const QString &name) const { return find<QComboBox>(name); }
    QRadioButton *answerButton(int index) const
    {
        return option(QString("optAnswer%1").arg(index));
    }

    QString text(const QString &name) const { return label(name)->text(); }
    bool shown(const QString &name) const
    {
        QWidget *widget = find<QWidget>(name);
        return widget && widget->isVisible();
    }
    // The texts of the named labels joined by "|", to compare a row of them at once.
    QString texts(std::initializer_list<const char *> names) const
    {
        QStringList all;
        for (const char *name : names)
            all << text(name);
        return all.join('|');
    }
    // Those of the named widgets that are on the screen, joined by "|".
    QString showing(std::initializer_list<const char *> names) const
    {
        QStringList visible;
        for (const char *name : names)
            if (shown(name))
                visible << name;
        return visible.join('|');
    }

    void chooseLevel(int level) { option(QString("optLevel%1").arg(level))->click(); }
    void tick(int times)
    {
        for (int i = 0; i < times; ++i)
            screen->onClockTick();
    }

    // The box the child types into: the one the question left empty.
    QLineEdit *blank() const
    {
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
            if (box(name)->text().isEmpty())
                return box(name);
        return nullptr;
    }

    // The operation of the problem on the screen, as the files and the judging
    // write it: the sign drawn for minus is a true minus sign, not a hyphen.
    char operationOnScreen() const
    {
        const QString sign = text("lblOp");
        if (sign == QString(QChar(0x2212)))
            return '-';
        return sign.size() == 1 ? sign.at(0).toLatin1() : '?';
    }

    // The number that makes the equation on the screen true: the operation
    // itself for the answer, its inverse for a missing number.
    long long rightEntry() const
    {
        const long long n1 = box("txtNum1")->text().toLongLong();
        const long long n2 = box("txtNum2")->text().toLongLong();
        const long long n3 = box("txtAnswer")->text().toLongLong();
        const long long answer[] = {n1 + n2, n1 - n2, n1 * n2, n2 ? n1 / n2 : -1};
        const long long first[] = {n3 - n2, n3 + n2, n2 ? n3 / n2 : -1, n3 * n2};
        const long long second[] = {n3 - n1, n1 - n3, n1 ? n3 / n1 : -1, n3 ? n1 / n3 : -1};
        const QLineEdit *empty = blank();
        const long long *entries = empty == box("txtAnswer") ? answer
                                   : empty == box("txtNum1") ? first
                                                             : second;
        const int op = operationIndex(operationOnScreen());
        EXPECT_GE(op, 0) << "operation sign " << text("lblOp");
        return op < 0 ? 0 : entries[op];
    }

    // Types into the blank box and presses Enter, as the child does.
    void typeAnswer(bool right)
    {
        QLineEdit *entry = blank();
        ASSERT_NE(entry, nullptr);
        QTest::keyClicks(entry, QString::number(rightEntry() + (right ? 0 : 1)));
        QTest::keyClick(entry, Qt::Key_Return);
    }

    // Clicks a right or a wrong answer and presses Enter on it. The right one is
    // the Answer of the subject's stored question whose text and four answers are
    // the ones shown (as the child reads them).
    void choose(bool right)
    {
        std::multiset<std::string> onButtons;
        for (int index = 0; index < 4; ++index)
            onButtons.insert(shownText(*answerButton(index)).toStdString());
        const std::string asked = shownText(*label("lblQuestion_Multi")).toStdString();
        const int subject = session.records.currentSubject;
        std::set<std::string> answers;
        for (const auto &level :
             session.bank.questionBank.at(static_cast<std::size_t>(subject)).items())
            for (const Question &q : level) {
                const std::string label = subject != SpellingSubject ? q.text + "?"
                                          : q.text.empty()           ? q.text
                                                                     : q.text + ":";
                if (label == asked &&
                    std::multiset<std::string>{q.answer, q.wrong1, q.wrong2, q.wrong3} == onButtons)
                    answers.insert(q.answer);
            }
        ASSERT_EQ(answers.size(), 1u) << "the question on the screen is one stored question";
        for (int index = 0; index < 4; ++index) {
            QRadioButton *answer = answerButton(index);
            if ((shownText(*answer).toStdString() == *answers.begin()) == right) {
                QTest::mouseClick(answer, Qt::LeftButton);
                QTest::keyClick(answer, Qt::Key_Return);
                return;
            }
        }
        ADD_FAILURE() << "no answer to choose";
    }
};
