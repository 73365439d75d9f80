// The Arithmetic settings frame of the Tests screen: the levels grid, the range
// lists and their checks, the operations and the switches.
#include "TestsScreenFixture_test.h"

namespace {

TEST_F(ArithmeticSettingsTest, GridShowsEveryLevelAndChoosingOneShowsItsSettings)
{
    ASSERT_EQ(grid()->model()->rowCount(), 16);
    // Level K asks addition only; its ranges are emphasised, the rest read "Off" plainly.
    EXPECT_EQ(cells(0, Add), QStringList({"0", "1", "0", "4"}));
    const auto bold = [this](int column) {
        return grid()->model()->index(3, column).data(Qt::FontRole).value<QFont>().bold();
    };
    EXPECT_TRUE(bold(2) && !bold(5));
    EXPECT_EQ(cells(0, Sub), Off);
    EXPECT_EQ((QStringList{cell(3, 17), cell(3, 18), cell(4, 17), cell(4, 18)}),
              (QStringList{"No", "No", "Yes", "Yes"}));
    EXPECT_EQ(cells(12, Mul), QStringList({"12", "12", "2", "12"}));

    EXPECT_TRUE(hidden("optOn0") && hidden("optOff0")) << "addition cannot be switched off at K";
    EXPECT_TRUE(checked("optOn0") && checked("optOff2"));
    EXPECT_TRUE(!hidden("fraMathSub2_0") && hidden("fraMathSub2_2"));
    EXPECT_EQ(shown("cmbHigh2_0"), "4");

    // The level list moves the grid and shows the chosen level at once.
    QTest::keyClicks(control<QComboBox>("cmbLevel2"), "6");
    EXPECT_EQ(grid()->currentIndex().row(), 9);
    EXPECT_EQ(session.records.currentLevel, 6);
    EXPECT_FALSE(hidden("optOn0"));
    EXPECT_TRUE(checked("optOff0") && hidden("fraMathSub2_0"));
    EXPECT_EQ((QStringList{shown("cmbLow1_2"), shown("cmbLow2_2")}), (QStringList{"6", "2"}));

    // A click on a heading row is refused; on a level row it chooses that level.
    frame->window()->show();
    QTableView *view = grid();
    const auto clickAt = [view](int row, int column) {
        const QPoint centre = view->visualRect(view->model()->index(row, column)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, centre);
    };
    clickAt(1, 6);
    EXPECT_EQ(view->currentIndex().row(), 9);
    clickAt(10, 3);
    EXPECT_EQ(view->currentIndex().row(), 10);
    EXPECT_EQ(shown("cmbLevel2"), "7");
    EXPECT_EQ(session.records.currentLevel, 7);

    // Filling the controls for every level must not write anything back.
    const auto arithmetic = [&bank = session.bank] {
        return std::make_tuple(bank.arithOps, bank.arithLow1, bank.arithHigh1, bank.arithLow2,
                               bank.arithHigh2, bank.arithSwitch);
    };
    const auto before = arithmetic();
    for (int l = 0; l < LevelCount; ++l)
        frame->showLevel(l);
    EXPECT_TRUE(arithmetic() == before);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(ArithmeticSettingsTest, HighBelowLowIsRefusedAndTheEndsOfTheListsAreAccepted)
{
    frame->showLevel(2); // addition 6..12, 6..12
    pick(QStringLiteral("cmbLow1_0"), QStringLiteral("7"));
    EXPECT_EQ(session.bank.arithLow1[2][Add], 7);
    EXPECT_EQ(cell(5, 1), "7");
    EXPECT_TRUE(prompt.shown().empty());

    pick(QStringLiteral("cmbHigh1_0"), QStringLiteral("5"));
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_TRUE(prompt.last()->text.endsWith("(You might have to change the Low number first.)"));
    EXPECT_EQ(shown("cmbLow1_0"), "0");
    EXPECT_EQ(session.bank.arithLow1[2][Add], 7);
    EXPECT_EQ(session.bank.arithHigh1[2][Add], 12);

    // A Low above its High gets the other hint; the Number 2 pair is checked on its own.
    pick(QStringLiteral("cmbLow2_1"), QStringLiteral("13"));
    EXPECT_TRUE(prompt.last()->text.endsWith("(You might have to change the High number first.)"));
    EXPECT_EQ(shown("cmbLow2_1"), "0");
    EXPECT_EQ(session.bank.arithLow2[2][Sub], 6);

    // Division has no 0: its Low list goes back to the stored low.
    pick(QStringLiteral("cmbLow1_3"), QStringLiteral("5"));
    EXPECT_EQ(prompt.shown().size(), 3u);
    EXPECT_EQ(shown("cmbLow1_3"), "1");
    EXPECT_EQ(session.bank.arithLow1[2][Div], 1);

    // Equal ends are accepted; here picked with the keyboard, as a user would.
    pick(QStringLiteral("cmbLow2_2"), QStringLiteral("4"));
    QTest::keyClick(control<QComboBox>("cmbHigh2_2"), Qt::Key_Up);
    EXPECT_EQ(session.bank.arithHigh2[2][Mul], 4);
    EXPECT_EQ(cells(2, Mul), QStringList({"0", "5", "4", "4"}));

    // The ends of the lists are accepted: at level 9 ("x" only), addition 0..30 and
    // 30..30, subtraction 0..0 and 0..30, division 1..30 and 30..30.
    frame->showLevel(9);
    const std::pair<int, QStringList> ranges[] = {{Add, {"0", "30", "30", "30"}},
                                                  {Sub, {"0", "0", "0", "30"}},
                                                  {Div, {"1", "30", "30", "30"}}};
    for (const auto &[operation, ends] : ranges) {
        frame->switchOperationOn(operation);
        // Highs first, so that no low ever passes its high.
        for (int k : {1, 0, 3, 2})
            pick(QStringList{"cmbLow1_", "cmbHigh1_", "cmbLow2_", "cmbHigh2_"}[k] +
                     QString::number(operation),
                 ends[k]);
        EXPECT_EQ(cells(9, operation), ends);
    }
    EXPECT_EQ(prompt.shown().size(), 3u) << "nothing more was refused";
}

TEST_F(ArithmeticSettingsTest, OperationsAndSwitchesEditTheLevelAndTheGrid)
{
    session.bank.arithOps[1] = "+-";
    frame->showLevel(1);
    EXPECT_EQ(cells(1, Mul), Off);

    control<QRadioButton>("optOn2")->click();
    EXPECT_EQ(session.bank.arithOps[1], "+-x");
    EXPECT_FALSE(hidden("fraMathSub2_2"));
    EXPECT_EQ(cells(1, Mul), QStringList({"0", "2", "0", "2"}));

    control<QRadioButton>("optOff1")->click();
    EXPECT_EQ(session.bank.arithOps[1], "+x");
    EXPECT_TRUE(hidden("fraMathSub2_1"));
    EXPECT_EQ(cells(1, Sub), Off);
    EXPECT_EQ(session.bank.arithHigh1[1][Sub], 5) << "a switched-off range is kept for later";

    // The switches store Yes as true, for the edited level only.
    QTest::keyClick(control<QComboBox>("cmbSwitchNumbers"), Qt::Key_Down);
    EXPECT_FALSE(session.bank.arithSwitch[1][SwitchNumbers]);
    EXPECT_TRUE(session.bank.arithSwitch[1][SwitchBlanks]);
    EXPECT_EQ((QStringList{cell(4, 17), cell(4, 18)}), (QStringList{"No", "Yes"}));
    frame->showLevel(0);
    pick(QStringLiteral("cmbSwitchBlanks"), QStringLiteral("Yes"));
    EXPECT_TRUE(session.bank.arithSwitch[0][SwitchBlanks]);
    EXPECT_EQ(cell(3, 18), "Yes");

    // On appends without looking; Off removes one copy, and nothing when none is left.
    frame->showLevel(3); // "x/"
    frame->switchOperationOn(Mul);
    EXPECT_EQ(session.bank.arithOps[3], "x/x");
    frame->switchOperationOff(Mul);
    EXPECT_EQ(session.bank.arithOps[3], "/x");
    EXPECT_EQ(cells(3, Mul), QStringList({"5", "10", "5", "10"}));
    frame->switchOperationOff(Mul);
    frame->switchOperationOff(Mul);
    EXPECT_EQ(session.bank.arithOps[3], "/");
    EXPECT_EQ(cells(3, Mul), Off);
}

TEST_F(ArithmeticSettingsTest, RevertRestoresArithmeticOnlyAfterOk)
{
    frame->showLevel(2);
    session.bank.arithOps[2] = "/";
    session.bank.arithHigh1[2][Add] = 20;
    session.bank.arithSwitch[2][SwitchNumbers] = false;
    session.bank.limits[ArithmeticSubject].seconds = 99;
    session.bank.limits[SpellingSubject].seconds = 45;
    frame->refreshGrid();

    click("cmdRevert2"); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm: Revert to Original, Default Subject");
    EXPECT_EQ(session.bank.arithOps[2], "/");
    EXPECT_EQ(session.bank.limits[ArithmeticSubject].seconds, 99);
    EXPECT_EQ(cells(2, Add), Off);

    prompt.answerConfirm(true);
    click("cmdRevert2");
    EXPECT_EQ(session.bank.arithOps[2], "+-x/");
    EXPECT_EQ(session.bank.arithHigh1[2][Add], 12);
    EXPECT_TRUE(session.bank.arithSwitch[2][SwitchNumbers]);
    EXPECT_EQ(session.bank.limits[ArithmeticSubject].seconds, 30);
    EXPECT_EQ(control<QLineEdit>("txtDuration")->text(), QStringLiteral("30"));
    EXPECT_EQ(cells(2, Add), QStringList({"6", "12", "6", "12"}));
    EXPECT_EQ(grid()->currentIndex().row(), 5);
    EXPECT_EQ(shown("cmbHigh1_0"), "12");
    EXPECT_EQ(session.bank.limits[SpellingSubject].seconds, 45) << "other subjects keep edits";
}

} // namespace
