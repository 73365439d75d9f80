// The Tests screen for a teacher who uses only the keyboard, or a screen reader.
#include "TestsScreen.h"

#include "TestsScreenFixture.h"
#include "testsupport/ScreenAccess.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>

#include <string>
#include <vector>

TEST_F(TestsScreenFixture, TabVisitsEachFrameTopDownAndTheControlsAreNamed)
{
    // Level 3 with addition and multiplication on: both show their range lists.
    session.bank.ArithOps[3] = "+x";
    session.records.CurrentLevel = 3;
    TestsScreen &arithmetic = open(ArithmeticSubject);
    arithmetic.show();
    control<QComboBox>("cmbSubject")->setFocus();
    EXPECT_EQ(TabStops(arithmetic),
              std::vector<std::string>(
                  {"cmbSubject",       "cmdAddSubject",   "txtDuration", "Grid2",      "cmbLevel2",
                   "cmbSwitchNumbers", "cmbSwitchBlanks", "cmdRevert2",  "optOn0",     "cmbLow1_0",
                   "cmbHigh1_0",       "cmbLow2_0",       "cmbHigh2_0",  "optOff1",    "optOn2",
                   "cmbLow1_2",        "cmbHigh1_2",      "cmbLow2_2",   "cmbHigh2_2", "optOff3",
                   "cmdRevertAll",     "cmdHelp",         "cmdClose"}));
    EXPECT_EQ(SpokenName(*control<QTableView>("Grid2")), "Arithmetic levels");
    EXPECT_EQ(SpokenLabel(*control<QComboBox>("cmbSubject")), "Subject:");
    EXPECT_EQ(SpokenName(*control<QLineEdit>("txtDuration")), "Time (in Seconds):");
    EXPECT_EQ(SpokenLabel(*control<QComboBox>("cmbLow1_2")), "Number 1 - Low");
    arithmetic.close();

    TestsScreen &spelling = open(1);
    spelling.show();
    control<QComboBox>("cmbSubject")->setFocus();
    EXPECT_EQ(TabStops(spelling),
              std::vector<std::string>({"cmbSubject", "cmdAddSubject", "txtDuration", "Grid1",
                                        "cmbLevel", "txt1", "txt2", "txt3", "txt4", "txt5",
                                        "cmdAdd", "cmdDelete", "chkAdjacentLevels", "cmdRevert",
                                        "cmdRevertAll", "cmdHelp", "cmdClose"}));
    EXPECT_EQ(SpokenName(*control<QTableView>("Grid1")), "Questions");
    EXPECT_EQ(SpokenLabel(*control<QComboBox>("cmbLevel")), "Level:");
    EXPECT_EQ(SpokenName(*control<QLineEdit>("txt3")), "Wrong Answer #1:");
}
