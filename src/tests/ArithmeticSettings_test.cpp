#include "tests/ArithmeticSettings.h"

#include "core/DefaultBank.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QFont>
#include <QFrame>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int Add = 0, Sub = 1, Mul = 2, Div = 3;

class ArithmeticSettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        BuildDefaultTests(session.bank);
        frame = std::make_unique<ArithmeticSettings>(session);
        frame->PopulateGrid2();
    }

    template <typename T> T *child(const QString &name) const
    {
        T *widget = frame->findChild<T *>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QComboBox *list(const QString &name) const { return child<QComboBox>(name); }
    QTableView *grid() const { return child<QTableView>(QStringLiteral("Grid2")); }
    QString cell(int row, int column) const
    {
        return grid()->model()->index(row, column).data().toString();
    }
    bool bold(int row, int column) const
    {
        return grid()->model()->index(row, column).data(Qt::FontRole).value<QFont>().bold();
    }
    // The four cells of an operation at a level: Number 1 low, high, Number 2 low, high.
    QStringList cells(int level, int operation) const
    {
        QStringList texts;
        for (int k = 1; k <= 4; ++k) {
            texts << cell(level + 3, 4 * operation + k);
        }
        return texts;
    }
    // Chooses an entry the way the user's pick does, then runs its handler.
    void choose(const QString &name, const QString &text)
    {
        list(name)->setCurrentText(text);
        ASSERT_EQ(list(name)->currentText(), text);
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    std::unique_ptr<ArithmeticSettings> frame;
};

TEST_F(ArithmeticSettingsTest, GridShowsHeadingsLevelsAndOffOperations)
{
    const QAbstractItemModel *model = grid()->model();
    ASSERT_EQ(model->rowCount(), 16);
    ASSERT_EQ(model->columnCount(), 19);

    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(cell(row, 0), "Level");
    }
    const QStringList names = {"Addition", "Subtraction", "Multiplication", "Division"};
    for (int column = 1; column <= 16; ++column) {
        const int operation = (column - 1) / 4;
        const int within = (column - 1) % 4;
        EXPECT_EQ(cell(0, column), names[operation]) << column;
        const bool backward = operation == Sub || operation == Div;
        const QString number = within < 2 ? (backward ? "2nd Number" : "Number 1")
                                          : (backward ? "Result" : "Number 2");
        EXPECT_EQ(cell(1, column), number) << column;
        EXPECT_EQ(cell(2, column), within % 2 == 0 ? "Low" : "High") << column;
    }
    EXPECT_EQ(cell(0, 17), "Alternate position of");
    EXPECT_EQ(cell(0, 18), "Alternate position of");
    EXPECT_EQ(cell(1, 17), "Numbers?");
    EXPECT_EQ(cell(1, 18), "'Blank'?");
    EXPECT_EQ(cell(2, 17), " ");
    EXPECT_EQ(cell(2, 18), " ");

    EXPECT_EQ(cell(3, 0), "K");
    EXPECT_EQ(cell(15, 0), "12");
    // Level K asks addition only; its ranges are emphasised, the rest read "Off" plainly.
    EXPECT_EQ(cells(0, Add), QStringList({"0", "1", "0", "4"}));
    EXPECT_TRUE(bold(3, 2));
    EXPECT_EQ(cells(0, Sub), QStringList({"Off", "Off", "Off", "Off"}));
    EXPECT_FALSE(bold(3, 5));
    EXPECT_EQ(cells(0, Div), QStringList({"Off", "Off", "Off", "Off"}));
    EXPECT_EQ(cell(3, 17), "No");
    EXPECT_EQ(cell(3, 18), "No");
    EXPECT_EQ(cells(12, Mul), QStringList({"12", "12", "2", "12"}));
    EXPECT_EQ(cell(4, 17), "Yes");
    EXPECT_EQ(cell(4, 18), "Yes");
}

TEST_F(ArithmeticSettingsTest, ChoosingALevelShowsItsSettings)
{
    frame->showLevel(0);
    EXPECT_TRUE(child<QRadioButton>("optOn0")->isHidden());
    EXPECT_TRUE(child<QRadioButton>("optOff0")->isHidden());
    EXPECT_TRUE(child<QRadioButton>("optOn0")->isChecked());
    EXPECT_FALSE(child<QFrame>("fraMathSub2_0")->isHidden());
    EXPECT_EQ(list("cmbHigh2_0")->currentText(), "4");
    EXPECT_TRUE(child<QRadioButton>("optOff2")->isChecked());
    EXPECT_TRUE(child<QFrame>("fraMathSub2_2")->isHidden());
    EXPECT_EQ(list("cmbSwitchNumbers")->currentText(), "No");

    // The level list moves the grid and shows the chosen level at once.
    QComboBox *level = list("cmbLevel2");
    QTest::keyClicks(level, "6");
    EXPECT_EQ(level->currentText(), "6");
    EXPECT_EQ(grid()->currentIndex().row(), 9);
    EXPECT_EQ(session.records.CurrentLevel, 6);
    EXPECT_FALSE(child<QRadioButton>("optOn0")->isHidden());
    EXPECT_TRUE(child<QRadioButton>("optOff0")->isChecked());
    EXPECT_TRUE(child<QFrame>("fraMathSub2_0")->isHidden());
    EXPECT_EQ(list("cmbLow1_2")->currentText(), "6");
    EXPECT_EQ(list("cmbLow2_2")->currentText(), "2");
    EXPECT_EQ(list("cmbSwitchBlanks")->currentText(), "No");

    // Filling the controls for every level must not write anything back.
    const TestBank before = session.bank;
    for (int l = 0; l < LevelCount; ++l) {
        frame->showLevel(l);
    }
    EXPECT_EQ(session.bank.ArithOps, before.ArithOps);
    EXPECT_EQ(session.bank.ArithLow1, before.ArithLow1);
    EXPECT_EQ(session.bank.ArithHigh1, before.ArithHigh1);
    EXPECT_EQ(session.bank.ArithLow2, before.ArithLow2);
    EXPECT_EQ(session.bank.ArithHigh2, before.ArithHigh2);
    EXPECT_EQ(session.bank.ArithSwitch, before.ArithSwitch);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(ArithmeticSettingsTest, HeadingRowsCannotBeChosenButLevelRowsCan)
{
    frame->show();
    frame->showLevel(2);
    QTableView *view = grid();
    const QPoint heading = view->visualRect(view->model()->index(1, 6)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, heading);
    EXPECT_EQ(view->currentIndex().row(), 5);

    const QPoint level7 = view->visualRect(view->model()->index(10, 3)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, level7);
    EXPECT_EQ(view->currentIndex().row(), 10);
    EXPECT_EQ(list("cmbLevel2")->currentText(), "7");
    EXPECT_EQ(session.records.CurrentLevel, 7);
}

TEST_F(ArithmeticSettingsTest, HighBelowLowIsRefusedAndTheLowListStartsAgain)
{
    frame->showLevel(2); // addition 6..12, 6..12
    choose("cmbLow1_0", "7");
    frame->cmbLow1_Click(Add);
    EXPECT_EQ(session.bank.ArithLow1[2][Add], 7);
    EXPECT_EQ(cell(5, 1), "7");
    EXPECT_TRUE(prompt.shown().empty());

    choose("cmbHigh1_0", "5");
    frame->cmbHigh1_Click(Add);
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_EQ(prompt.last()->title, "Invalid Number");
    EXPECT_EQ(prompt.last()->text, "The Low number cannot be greater than the High number.\r"
                                   "(You might have to change the Low number first.)");
    EXPECT_EQ(list("cmbLow1_0")->currentText(), "0");
    EXPECT_EQ(session.bank.ArithLow1[2][Add], 7);
    EXPECT_EQ(session.bank.ArithHigh1[2][Add], 12);

    // A Low above its High gets the other hint; the Number 2 pair is checked on its own.
    choose("cmbLow2_1", "13");
    frame->cmbLow2_Click(Sub);
    EXPECT_EQ(prompt.last()->text, "The Low number cannot be greater than the High number.\r"
                                   "(You might have to change the High number first.)");
    EXPECT_EQ(list("cmbLow2_1")->currentText(), "0");
    EXPECT_EQ(session.bank.ArithLow2[2][Sub], 6);

    // Division has no 0: its Low list goes back to the stored low.
    choose("cmbLow1_3", "5");
    frame->cmbLow1_Click(Div);
    EXPECT_EQ(prompt.shown().size(), 3u);
    EXPECT_EQ(list("cmbLow1_3")->currentText(), "1");
    EXPECT_EQ(session.bank.ArithLow1[2][Div], 1);

    // Equal ends are accepted; here picked with the keyboard, as a user would.
    choose("cmbLow2_2", "4");
    frame->cmbLow2_Click(Mul);
    QComboBox *high = list("cmbHigh2_2");
    QTest::keyClick(high, Qt::Key_Up);
    EXPECT_EQ(high->currentText(), "4");
    EXPECT_EQ(session.bank.ArithLow2[2][Mul], 4);
    EXPECT_EQ(session.bank.ArithHigh2[2][Mul], 4);
    EXPECT_EQ(cells(2, Mul), QStringList({"0", "5", "4", "4"}));
    EXPECT_EQ(prompt.shown().size(), 3u);
}

TEST_F(ArithmeticSettingsTest, SwitchingOperationsOnAndOffEditsTheLevelText)
{
    session.bank.ArithOps[1] = "+-";
    frame->showLevel(1);
    EXPECT_EQ(cells(1, Mul), QStringList({"Off", "Off", "Off", "Off"}));

    child<QRadioButton>("optOn2")->click();
    EXPECT_EQ(session.bank.ArithOps[1], "+-x");
    EXPECT_FALSE(child<QFrame>("fraMathSub2_2")->isHidden());
    EXPECT_EQ(list("cmbHigh1_2")->currentText(), "2");
    EXPECT_EQ(cells(1, Mul), QStringList({"0", "2", "0", "2"}));
    EXPECT_TRUE(bold(4, 9));

    child<QRadioButton>("optOff1")->click();
    EXPECT_EQ(session.bank.ArithOps[1], "+x");
    EXPECT_TRUE(child<QFrame>("fraMathSub2_1")->isHidden());
    EXPECT_EQ(cells(1, Sub), QStringList({"Off", "Off", "Off", "Off"}));
    // The ranges of a switched-off operation are kept for later.
    EXPECT_EQ(session.bank.ArithHigh1[1][Sub], 5);

    frame->optOff_Click(Add);
    EXPECT_EQ(session.bank.ArithOps[1], "x");
    EXPECT_EQ(cells(1, Add), QStringList({"Off", "Off", "Off", "Off"}));
}

TEST_F(ArithmeticSettingsTest, OnAppendsWithoutLookingAndOffRemovesOneCopy)
{
    frame->showLevel(3); // "x/"
    frame->optOn_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "x/x");
    frame->optOff_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "/x");
    EXPECT_EQ(cells(3, Mul), QStringList({"5", "10", "5", "10"}));
    frame->optOff_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "/");
    frame->optOff_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "/");
}

TEST_F(ArithmeticSettingsTest, SwitchesStoreYesAsTrue)
{
    frame->showLevel(1);
    QComboBox *numbers = list("cmbSwitchNumbers");
    QTest::keyClick(numbers, Qt::Key_Down);
    EXPECT_EQ(numbers->currentText(), "No");
    EXPECT_FALSE(session.bank.ArithSwitch[1][SwitchNumbers]);
    EXPECT_TRUE(session.bank.ArithSwitch[1][SwitchBlanks]);
    EXPECT_EQ(cell(4, 17), "No");
    EXPECT_EQ(cell(4, 18), "Yes");

    frame->showLevel(0);
    choose("cmbSwitchBlanks", "Yes");
    frame->cmbSwitchBlanks_Click();
    EXPECT_TRUE(session.bank.ArithSwitch[0][SwitchBlanks]);
    EXPECT_EQ(cell(3, 18), "Yes");
}

TEST_F(ArithmeticSettingsTest, RevertRestoresArithmeticOnlyAfterOk)
{
    frame->showLevel(2);
    session.bank.ArithOps[2] = "/";
    session.bank.ArithHigh1[2][Add] = 20;
    session.bank.ArithSwitch[2][SwitchNumbers] = false;
    session.bank.Limits[ArithmeticSubject].Seconds = 99;
    session.bank.Limits[SpellingSubject].Seconds = 45;
    session.bank.QuestionBank[SpellingSubject].Items[0][0].Text = "Edited";
    frame->PopulateGrid2();
    QSignalSpy reverted(frame.get(), &ArithmeticSettings::reverted);

    frame->cmdRevert2_Click(); // no answer scripted: Cancel
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Confirm);
    EXPECT_EQ(prompt.last()->title, "Confirm: Revert to Original, Default Subject");
    EXPECT_EQ(prompt.last()->text,
              "Are you sure you want to Revert to the Original, Default Subject?");
    EXPECT_EQ(session.bank.ArithOps[2], "/");
    EXPECT_EQ(session.bank.Limits[ArithmeticSubject].Seconds, 99);
    EXPECT_EQ(cells(2, Add), QStringList({"Off", "Off", "Off", "Off"}));
    EXPECT_EQ(reverted.count(), 0);

    prompt.answerConfirm(true);
    frame->cmdRevert2_Click();
    EXPECT_EQ(reverted.count(), 1);
    EXPECT_EQ(session.bank.ArithOps[2], "+-x/");
    EXPECT_EQ(session.bank.ArithHigh1[2][Add], 12);
    EXPECT_TRUE(session.bank.ArithSwitch[2][SwitchNumbers]);
    EXPECT_EQ(session.bank.Limits[ArithmeticSubject].Seconds, 30);
    EXPECT_EQ(cells(2, Add), QStringList({"6", "12", "6", "12"}));
    EXPECT_EQ(grid()->currentIndex().row(), 5);
    EXPECT_EQ(grid()->currentIndex().column(), 0);
    EXPECT_TRUE(child<QRadioButton>("optOn0")->isChecked());
    EXPECT_EQ(list("cmbHigh1_0")->currentText(), "12");

    EXPECT_EQ(session.bank.Limits[SpellingSubject].Seconds, 45);
    EXPECT_EQ(session.bank.QuestionBank[SpellingSubject].Items[0][0].Text, "Edited");
}

} // namespace
