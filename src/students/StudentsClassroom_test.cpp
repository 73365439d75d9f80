// The Students screen in classroom mode: a child chooses a name, a subject and
// a level and looks at the scores; the roster and the scores stay as the
// teacher left them.
#include "StudentsScreenFixture_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

TEST_F(StudentsScreenTest, InClassroomModeAChildChoosesAndLooksButChangesNoNameOrScore)
{
    writeRoster({"Ann", "Ben", "Cy"});
    const StudentRecords before = saved();
    session.mode = ProgramMode::Classroom;
    auto screen = openScreen();

    for (const char *name :
         {"cmdAddStudent", "cmdAddClass", "cmdDelete", "cmdResetTotals_Student",
          "cmdResetTotals_All", "cmdBackups", "cmdProgress", "cmdFacts", "cmdClassView"}) {
        QWidget *control = child(*screen, name);
        EXPECT_FALSE(control->isVisibleTo(screen.get())) << name;
        EXPECT_FALSE(control->isEnabled()) << name;
    }
    for (const char *name : {"List1", "txtStudent", "cmbSubject", "optByStudent", "optBySubject",
                             "Grid1", "cmdReport", "cmdExport", "cmdHelp", "cmdClose"}) {
        QWidget *control = child(*screen, name);
        EXPECT_TRUE(control->isVisibleTo(screen.get()) && control->isEnabled()) << name;
    }

    // Neither typing in the name box nor the Delete key changes the roster.
    auto *nameBox = child<QLineEdit>(*screen, "txtStudent");
    EXPECT_TRUE(nameBox->isReadOnly());
    QTest::keyClicks(nameBox, QStringLiteral("xy"));
    QTest::keyClick(nameBox, Qt::Key_Backspace);
    QTest::keyClick(child(*screen, "List1"), Qt::Key_Delete);
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"Ann", "Ben", "Cy"}));

    // Ben chooses himself, Arithmetic and level 3; closing saves that choice alone.
    child<QListWidget>(*screen, "List1")->setCurrentRow(1);
    EXPECT_EQ(nameBox->text(), "Ben");
    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(ArithmeticSubject);
    child<QRadioButton>(*screen, "optLevel3")->click();
    child<QPushButton>(*screen, "cmdClose")->click();
    const StudentRecords after = saved();
    ASSERT_EQ(after.students.size(), 3u);
    EXPECT_EQ(after.currentSubject, ArithmeticSubject);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(after.students[i].name, before.students[i].name);
        EXPECT_EQ(after.students[i].current, i == 1);
        EXPECT_EQ(after.students[i].level, i == 1 ? 3 : before.students[i].level);
        for (std::size_t s = 0; s < before.students[i].results.size(); ++s)
            EXPECT_EQ(after.students[i].results[s].high, before.students[i].results[s].high);
    }

    // The teacher's copy on the same roster: the box takes a name, Delete asks.
    session.mode = ProgramMode::Normal;
    auto teachers = openScreen();
    EXPECT_FALSE(child<QLineEdit>(*teachers, "txtStudent")->isReadOnly());
    QTest::keyClick(child(*teachers, "List1"), Qt::Key_Delete);
    EXPECT_EQ(lastConfirm(), "Confirm Delete Student");
}

TEST_F(StudentsScreenTest, InClassroomModeTheFirstRunAsksNoName)
{
    session.mode = ProgramMode::Classroom;
    auto screen = openScreen();
    EXPECT_TRUE(prompt.shown().empty()) << "naming the class is left to the teacher";
    EXPECT_EQ(lines(*screen), std::vector<std::string>{""});
    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(saved().students.size(), 1u);
}
