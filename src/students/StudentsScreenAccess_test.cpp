// The Students screen for a teacher who uses only the keyboard, or a screen reader.
#include "StudentsScreen.h"

#include "StudentsTestFixture.h"
#include "testsupport/ScreenAccess.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include <string>
#include <vector>

TEST_F(StudentsScreenTest, TabFollowsTheScreenAndTheControlsAreNamed)
{
    writeRoster({"Ann", "Bob"});
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");

    EXPECT_EQ(screen->focusWidget(), list) << "the arrow keys choose a student at once";
    EXPECT_EQ(
        TabStops(*screen),
        std::vector<std::string>({"List1", "cmdAddStudent", "cmdDelete", "txtStudent", "optLevel0",
                                  "cmbSubject", "optByStudent", "cmdResetTotals_Student",
                                  "cmdResetTotals_All", "cmdHelp", "cmdClose"}));

    EXPECT_EQ(SpokenName(*list), "Students");
    EXPECT_EQ(SpokenName(*child<QLineEdit>(*screen, "txtStudent")), "Student name");
    EXPECT_EQ(SpokenLabel(*child<QComboBox>(*screen, "cmbSubject")), "Current Subject:");
    EXPECT_EQ(SpokenName(*child<QTableView>(*screen, "Grid1")), "Scores");
    EXPECT_EQ(SpokenName(*child<QRadioButton>(*screen, "optLevel0")), "Level K");
    EXPECT_EQ(SpokenName(*child<QRadioButton>(*screen, "optLevel7")), "Level 7");

    auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
    EXPECT_EQ(SpokenName(*heading), "Scores for: Ann");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(SpokenName(*heading), "Scores for: Bob");
}
