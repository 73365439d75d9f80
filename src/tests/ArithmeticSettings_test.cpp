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
const QStringList Off = {"Off", "Off", "Off", "Off"};

class ArithmeticSettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        BuildDefaultTests(session.bank);
        frame = std::make_unique<ArithmeticSettings>(session);
        frame->PopulateGrid2();
    }

    template <typename T = QComboBox> T *child(const QString &name) const
    {
        T *widget = frame->findChild<T *>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
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
        for (int k = 1; k <= 4; ++k)
            texts << cell(level + 3, 4 * operation + k);
        return texts;
    }
    bool hidden(const QString &name) const { return child<QWidget>(name)->isHidden(); }
    bool checked(const QString &name) const { return child<QRadioButton>(name)->isChecked(); }
    // Picks an entry as the user does, then runs the list's handler.
    template <typename Handler> void pick(const QString &name, const QString &text, Handler run)
    {
        child(name)->setCurrentText(text);
        ASSERT_EQ(child(name)->currentText(), text);
        run();
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    std::unique_ptr<ArithmeticSettings> frame;
};

TEST_F(ArithmeticSettingsTest, GridShowsEveryLevelAndOffOperationsPlainly)
{
    ASSERT_EQ(grid()->model()->rowCount(), 16);
    ASSERT_EQ(grid()->model()->columnCount(), 19);
    // Subtraction and division are asked backwards: their first pair is the 2nd number.
    EXPECT_EQ((QStringList{cell(1, 1), cell(1, 3), cell(1, 5), cell(1, 7), cell(1, 13)}),
              (QStringList{"Number 1", "Number 2", "2nd Number", "Result", "2nd Number"}));
    EXPECT_EQ(cell(3, 0), "K");
    EXPECT_EQ(cell(15, 0), "12");
    // Level K asks addition only; its ranges are emphasised, the rest read "Off" plainly.
    EXPECT_EQ(cells(0, Add), QStringList({"0", "1", "0", "4"}));
    EXPECT_TRUE(bold(3, 2));
    EXPECT_EQ(cells(0, Sub), Off);
    EXPECT_FALSE(bold(3, 5));
    EXPECT_EQ(cells(0, Div), Off);
    EXPECT_EQ((QStringList{cell(3, 17), cell(3, 18), cell(4, 17), cell(4, 18)}),
              (QStringList{"No", "No", "Yes", "Yes"}));
    EXPECT_EQ(cells(12, Mul), QStringList({"12", "12", "2", "12"}));
}

TEST_F(ArithmeticSettingsTest, ChoosingALevelShowsItsSettingsAndWritesNothing)
{
    frame->showLevel(0);
    EXPECT_TRUE(hidden("optOn0") && hidden("optOff0")) << "addition cannot be switched off at K";
    EXPECT_TRUE(checked("optOn0") && checked("optOff2"));
    EXPECT_FALSE(hidden("fraMathSub2_0"));
    EXPECT_TRUE(hidden("fraMathSub2_2"));
    EXPECT_EQ(child("cmbHigh2_0")->currentText(), "4");

    // The level list moves the grid and shows the chosen level at once.
    QTest::keyClicks(child("cmbLevel2"), "6");
    EXPECT_EQ(grid()->currentIndex().row(), 9);
    EXPECT_EQ(session.records.CurrentLevel, 6);
    EXPECT_FALSE(hidden("optOn0"));
    EXPECT_TRUE(checked("optOff0") && hidden("fraMathSub2_0"));
    EXPECT_EQ(child("cmbLow1_2")->currentText(), "6");
    EXPECT_EQ(child("cmbLow2_2")->currentText(), "2");

    // A click on a heading row is refused; on a level row it chooses that level.
    frame->show();
    QTableView *view = grid();
    const auto clickAt = [view](int row, int column) {
        const QPoint centre = view->visualRect(view->model()->index(row, column)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, centre);
    };
    clickAt(1, 6);
    EXPECT_EQ(view->currentIndex().row(), 9);
    clickAt(10, 3);
    EXPECT_EQ(view->currentIndex().row(), 10);
    EXPECT_EQ(child("cmbLevel2")->currentText(), "7");
    EXPECT_EQ(session.records.CurrentLevel, 7);

    // Filling the controls for every level must not write anything back.
    const TestBank before = session.bank;
    for (int l = 0; l < LevelCount; ++l)
        frame->showLevel(l);
    EXPECT_TRUE(session.bank.ArithOps == before.ArithOps &&
                session.bank.ArithLow1 == before.ArithLow1 &&
                session.bank.ArithHigh1 == before.ArithHigh1 &&
                session.bank.ArithLow2 == before.ArithLow2 &&
                session.bank.ArithHigh2 == before.ArithHigh2 &&
                session.bank.ArithSwitch == before.ArithSwitch);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(ArithmeticSettingsTest, HighBelowLowIsRefusedAndTheLowListStartsAgain)
{
    frame->showLevel(2); // addition 6..12, 6..12
    pick("cmbLow1_0", "7", [this] { frame->cmbLow1_Click(Add); });
    EXPECT_EQ(session.bank.ArithLow1[2][Add], 7);
    EXPECT_EQ(cell(5, 1), "7");
    EXPECT_TRUE(prompt.shown().empty());

    pick("cmbHigh1_0", "5", [this] { frame->cmbHigh1_Click(Add); });
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_EQ(prompt.last()->title, "Invalid Number");
    EXPECT_TRUE(prompt.last()->text.endsWith("(You might have to change the Low number first.)"));
    EXPECT_EQ(child("cmbLow1_0")->currentText(), "0");
    EXPECT_EQ(session.bank.ArithLow1[2][Add], 7);
    EXPECT_EQ(session.bank.ArithHigh1[2][Add], 12);

    // A Low above its High gets the other hint; the Number 2 pair is checked on its own.
    pick("cmbLow2_1", "13", [this] { frame->cmbLow2_Click(Sub); });
    EXPECT_TRUE(prompt.last()->text.endsWith("(You might have to change the High number first.)"));
    EXPECT_EQ(child("cmbLow2_1")->currentText(), "0");
    EXPECT_EQ(session.bank.ArithLow2[2][Sub], 6);

    // Division has no 0: its Low list goes back to the stored low.
    pick("cmbLow1_3", "5", [this] { frame->cmbLow1_Click(Div); });
    EXPECT_EQ(prompt.shown().size(), 3u);
    EXPECT_EQ(child("cmbLow1_3")->currentText(), "1");
    EXPECT_EQ(session.bank.ArithLow1[2][Div], 1);

    // Equal ends are accepted; here picked with the keyboard, as a user would.
    pick("cmbLow2_2", "4", [this] { frame->cmbLow2_Click(Mul); });
    QTest::keyClick(child("cmbHigh2_2"), Qt::Key_Up);
    EXPECT_EQ(child("cmbHigh2_2")->currentText(), "4");
    EXPECT_EQ(session.bank.ArithHigh2[2][Mul], 4);
    EXPECT_EQ(cells(2, Mul), QStringList({"0", "5", "4", "4"}));
    EXPECT_EQ(prompt.shown().size(), 3u);
}

TEST_F(ArithmeticSettingsTest, SwitchingOperationsOnAndOffEditsTheLevelText)
{
    session.bank.ArithOps[1] = "+-";
    frame->showLevel(1);
    EXPECT_EQ(cells(1, Mul), Off);

    child<QRadioButton>("optOn2")->click();
    EXPECT_EQ(session.bank.ArithOps[1], "+-x");
    EXPECT_FALSE(hidden("fraMathSub2_2"));
    EXPECT_EQ(cells(1, Mul), QStringList({"0", "2", "0", "2"}));
    EXPECT_TRUE(bold(4, 9));

    child<QRadioButton>("optOff1")->click();
    EXPECT_EQ(session.bank.ArithOps[1], "+x");
    EXPECT_TRUE(hidden("fraMathSub2_1"));
    EXPECT_EQ(cells(1, Sub), Off);
    // The ranges of a switched-off operation are kept for later.
    EXPECT_EQ(session.bank.ArithHigh1[1][Sub], 5);

    // On appends without looking; Off removes one copy, and nothing when none is left.
    frame->showLevel(3); // "x/"
    frame->optOn_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "x/x");
    frame->optOff_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "/x");
    EXPECT_EQ(cells(3, Mul), QStringList({"5", "10", "5", "10"}));
    frame->optOff_Click(Mul);
    frame->optOff_Click(Mul);
    EXPECT_EQ(session.bank.ArithOps[3], "/");
    EXPECT_EQ(cells(3, Mul), Off);
}

TEST_F(ArithmeticSettingsTest, SwitchesStoreYesAsTrue)
{
    frame->showLevel(1);
    QTest::keyClick(child("cmbSwitchNumbers"), Qt::Key_Down);
    EXPECT_EQ(child("cmbSwitchNumbers")->currentText(), "No");
    EXPECT_FALSE(session.bank.ArithSwitch[1][SwitchNumbers]);
    EXPECT_TRUE(session.bank.ArithSwitch[1][SwitchBlanks]);
    EXPECT_EQ(cell(4, 17), "No");
    EXPECT_EQ(cell(4, 18), "Yes");

    frame->showLevel(0);
    pick("cmbSwitchBlanks", "Yes", [this] { frame->cmbSwitchBlanks_Click(); });
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
    frame->PopulateGrid2();
    QSignalSpy reverted(frame.get(), &ArithmeticSettings::reverted);

    frame->cmdRevert2_Click(); // no answer scripted: Cancel
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->title, "Confirm: Revert to Original, Default Subject");
    EXPECT_EQ(session.bank.ArithOps[2], "/");
    EXPECT_EQ(session.bank.Limits[ArithmeticSubject].Seconds, 99);
    EXPECT_EQ(cells(2, Add), Off);
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
    EXPECT_TRUE(checked("optOn0"));
    EXPECT_EQ(child("cmbHigh1_0")->currentText(), "12");
    // Other subjects keep their edits.
    EXPECT_EQ(session.bank.Limits[SpellingSubject].Seconds, 45);
}

} // namespace
