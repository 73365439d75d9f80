// The question frame of the Tests screen: the grid, the edit boxes, adding,
// deleting, moving and reverting questions. What odd texts become, the length
// limit and the round trip through the Tests file are in UserInput_test.cpp.
#include "QuestionEditor.h"

#include "TestsScreenFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

// Types each character as one key press carrying it, as a keyboard layout or
// input method delivers characters that have no key of their own.
void typeText(QWidget *box, const QString &text)
{
    for (int i = 0; i < text.size(); ++i) {
        const int units = text.at(i).isHighSurrogate() ? 2 : 1;
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, text.mid(i, units), Qt::NoModifier);
        i += units - 1;
    }
}

class QuestionEditorTest : public TestsScreenFixture {
protected:
    QTableView *grid() const { return control<QTableView>(QStringLiteral("Grid1")); }
    QLineEdit *txt(int index) const
    {
        return control<QLineEdit>(QStringLiteral("txt%1").arg(index));
    }
    QComboBox *level() const { return control<QComboBox>(QStringLiteral("cmbLevel")); }
    QuestionEditor *editor() const { return control<QuestionEditor>(QStringLiteral("fraMulti")); }

    QString cell(int row, int column) const
    {
        return TestsScreenFixture::cell(*grid(), row, column);
    }
    int rows() const { return grid()->model()->rowCount(); }
    int currentRow() const { return grid()->currentIndex().row(); }
    void clickRow(int row) const { grid()->setCurrentIndex(grid()->model()->index(row, 2)); }

    const Question &question(int subject, int lvl, int slot) const
    {
        return session.bank.QuestionBank[subject].Items()[lvl][slot];
    }
};

TEST_F(QuestionEditorTest, GridListsEveryQuestionLevelByLevel)
{
    open(1);
    ASSERT_EQ(rows(), 156);
    EXPECT_EQ(currentRow(), 0);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("An animal that meows"));
    EXPECT_EQ((QStringList{cell(0, 0), cell(0, 4), cell(12, 0), cell(155, 0), cell(155, 2)}),
              (QStringList{"K", "kat", "1", "12", "mediocre"}));

    // Clicking a row shows its level and texts in the fields below.
    clickRow(24);
    EXPECT_EQ(level()->currentText(), QStringLiteral("2"));
    EXPECT_EQ(txt(1)->text(), QString());
    EXPECT_EQ(txt(2)->text(), QStringLiteral("surprise"));
    EXPECT_EQ(txt(5)->text(), QStringLiteral("surpris"));

    // A subject with gaps: Geography has six questions at every level.
    control<QComboBox>(QStringLiteral("cmbSubject"))->setCurrentIndex(2);
    EXPECT_EQ(rows(), 78);
    EXPECT_EQ(cell(9, 4), QStringLiteral("Kansas City"));
    EXPECT_TRUE(control<QCheckBox>(QStringLiteral("chkAdjacentLevels"))->isChecked());
}

TEST_F(QuestionEditorTest, EveryKeystrokeIsStoredAsTheFileWillHoldIt)
{
    open(1);
    clickRow(13); // level 1, second question
    QSignalSpy resets(grid()->model(), &QAbstractItemModel::modelReset);
    QSignalSpy changes(grid()->model(), &QAbstractItemModel::dataChanged);

    txt(2)->setFocus();
    txt(2)->end(false);
    QTest::keyClicks(txt(2), QStringLiteral("s!"));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(resets.count(), 0);
    const std::string answer = question(1, 1, 1).Answer;
    EXPECT_EQ(answer.substr(answer.size() - 2), "s!");
    EXPECT_EQ(cell(13, 2), QString::fromStdString(answer));

    // Characters Windows-1252 lacks show as the "?" the file will hold; the
    // cursor stays after the typed character.
    txt(3)->setText(QStringLiteral("ab"));
    txt(3)->setCursorPosition(1);
    typeText(txt(3), QStringLiteral("Жé"));
    EXPECT_EQ(txt(3)->text(), QStringLiteral("a?éb"));
    EXPECT_EQ(txt(3)->cursorPosition(), 3);
    EXPECT_EQ(QString::fromStdString(question(1, 1, 1).Wrong1), QStringLiteral("a?éb"));
    typeText(txt(3), QStringLiteral("\U0001F600")); // one character, two UTF-16 units
    EXPECT_EQ(txt(3)->text(), QStringLiteral("a?é?b"));
    EXPECT_EQ(txt(3)->cursorPosition(), 4);

    // Other questions are untouched.
    EXPECT_EQ(question(1, 1, 0).Answer, "talk");
}

TEST_F(QuestionEditorTest, AddingToAFullLevelGrowsEverySubjectsSlots)
{
    open(1);
    clickRow(3); // level K holds QuestionMax + 1 = 12 questions
    ASSERT_EQ(session.bank.QuestionMax, 11);
    click(QStringLiteral("cmdAdd"));

    EXPECT_EQ(session.bank.QuestionMax, 12);
    for (const SubjectQuestions &subject : session.bank.QuestionBank)
        for (const auto &items : subject.Items())
            EXPECT_EQ(items.size(), 13u);
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[0], 12);
    EXPECT_EQ(rows(), 157);
    EXPECT_EQ(currentRow(), 12);
    EXPECT_EQ(cell(13, 1), QStringLiteral("When you say something"));
    EXPECT_TRUE(txt(1)->text().isEmpty() && txt(5)->text().isEmpty());

    // Typing now fills the new question, and the next add at level 3 fits.
    QTest::keyClicks(txt(1), QStringLiteral("new"));
    EXPECT_EQ(question(1, 0, 12).Text, "new");
    clickRow(37); // the first question of level 3
    click(QStringLiteral("cmdAdd"));
    EXPECT_EQ(session.bank.QuestionMax, 12);
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[3], 12);
    EXPECT_EQ(level()->currentText(), QStringLiteral("3"));
}

TEST_F(QuestionEditorTest, DeletingAQuestionMovesTheLaterOnesUpButKeepsTheLastOne)
{
    open(1);
    prompt.answerInput(QStringLiteral("Poetry"));
    click(QStringLiteral("cmdAddSubject"));
    ASSERT_EQ(rows(), 1);
    click(QStringLiteral("cmdDelete"));
    EXPECT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Unable to Delete Question"));
    EXPECT_EQ(rows(), 1);

    // Added with the button and with Insert on the grid.
    QTest::keyClicks(txt(1), QStringLiteral("one"));
    click(QStringLiteral("cmdAdd"));
    QTest::keyClicks(txt(1), QStringLiteral("two"));
    for (const char *text : {"three", "four"}) {
        QTest::keyClick(grid(), Qt::Key_Insert);
        QTest::keyClicks(txt(1), QString::fromLatin1(text));
    }
    ASSERT_EQ(rows(), 4);

    clickRow(1);
    click(QStringLiteral("cmdDelete")); // Cancel
    EXPECT_TRUE(askedToConfirm(QStringLiteral("Confirm Delete Question")));
    grid()->setFocus();
    QTest::keyClick(grid(), Qt::Key_Delete); // Cancel
    EXPECT_EQ(prompt.shown().size(), 4u);
    EXPECT_EQ(rows(), 4);

    prompt.answerConfirm(true);
    QTest::keyClick(grid(), Qt::Key_Delete);
    EXPECT_EQ(session.bank.Limits[6].LastQuestion[0], 2);
    EXPECT_EQ(question(6, 0, 1).Text, "three");
    EXPECT_EQ(question(6, 0, 2).Text, "four");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(currentRow(), 1);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("three"));

    // Deleting the last row leaves the new last row selected.
    clickRow(2);
    prompt.answerConfirm(true);
    click(QStringLiteral("cmdDelete"));
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(currentRow(), 1);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("three"));
}

TEST_F(QuestionEditorTest, ChangingTheLevelMovesTheQuestionToTheEndOfThatLevel)
{
    open(2); // Geography: six questions per level
    const Question moved = question(2, 2, 0);
    const Question next = question(2, 2, 1);
    clickRow(12); // level 2, first question
    ASSERT_EQ(level()->currentText(), QStringLiteral("2"));

    level()->setCurrentIndex(0);

    const SubjectLimits &limits = session.bank.Limits[2];
    EXPECT_EQ(limits.LastQuestion[2], 4);
    EXPECT_EQ(limits.LastQuestion[0], 6);
    EXPECT_EQ(question(2, 2, 0).Text, next.Text);
    const Question &atK = question(2, 0, 6);
    EXPECT_EQ((std::vector<std::string>{atK.Text, atK.Answer, atK.Wrong1, atK.Wrong2, atK.Wrong3}),
              (std::vector<std::string>{moved.Text, moved.Answer, moved.Wrong1, moved.Wrong2,
                                        moved.Wrong3}));
    EXPECT_EQ(currentRow(), 6);
    EXPECT_EQ(cell(6, 5), QString::fromStdString(moved.Wrong3));
    EXPECT_EQ(txt(2)->text(), QString::fromStdString(moved.Answer));
}

TEST_F(QuestionEditorTest, RevertingSpellingBringsBackItsDefaults)
{
    open(1);
    clickRow(0);
    txt(1)->setText(QStringLiteral("changed"));
    click(QStringLiteral("cmdAdd"));
    auto *adjacent = control<QCheckBox>(QStringLiteral("chkAdjacentLevels"));
    adjacent->setChecked(false);
    EXPECT_FALSE(session.bank.Subjects[1].AdjacentLevels);

    click(QStringLiteral("cmdRevert")); // Cancel
    EXPECT_TRUE(askedToConfirm(QStringLiteral("Confirm: Revert to Original, Default Subject")));
    EXPECT_EQ(question(1, 0, 0).Text, "changed");

    prompt.answerConfirm(true);
    click(QStringLiteral("cmdRevert"));
    EXPECT_EQ(question(1, 0, 0).Text, "An animal that meows");
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[0], 11);
    EXPECT_TRUE(session.bank.Subjects[1].AdjacentLevels && adjacent->isChecked());
    EXPECT_EQ(rows(), 156);
    // Geography was not touched.
    EXPECT_EQ(session.bank.Limits[2].LastQuestion[0], 5);
}

TEST_F(QuestionEditorTest, ALargeSubjectIsListedEditedCellByCellAndKeptInView)
{
    ResizeQuestionSlots(session.bank, 999);
    for (int lvl = 0; lvl < LevelCount; ++lvl) {
        session.bank.Limits[5].LastQuestion[lvl] = 999;
        session.bank.QuestionBank[5].Items()[lvl][999].Text = "last of " + LevelText(lvl);
    }
    open(5).show();
    ASSERT_EQ(rows(), 13000);
    EXPECT_EQ(cell(12999, 1), QStringLiteral("last of 12"));
    QTableView *view = grid();
    ASSERT_EQ(view->rowAt(0), 0);
    const auto select = [&](int row) {
        editor()->selectRow(row);
        editor()->keepInView();
        return view->rowAt(0);
    };
    EXPECT_EQ(select(60), 60); // far below: becomes the top row
    EXPECT_EQ(select(61), 60); // just below the top: stays put
    EXPECT_EQ(select(59), 59); // above the top: becomes the top row
    EXPECT_EQ(select(100), 100);

    clickRow(12999);
    QSignalSpy resets(view->model(), &QAbstractItemModel::modelReset);
    QTest::keyClicks(txt(2), QStringLiteral("abc"));
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(cell(12999, 2), QStringLiteral("abc"));
}

} // namespace
