// The question frame of the Tests screen: the grid, the edit boxes, adding,
// deleting, moving and reverting questions.
#include "QuestionEditor.h"

#include "TestsScreenFixture.h"
#include "core/TestsFile.h"
#include "ui/FileText.h"

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
        return grid()->model()->index(row, column).data().toString();
    }
    int rows() const { return grid()->model()->rowCount(); }
    int currentRow() const { return grid()->currentIndex().row(); }
    void clickRow(int row) const { grid()->setCurrentIndex(grid()->model()->index(row, 2)); }

    const Question &question(int subject, int lvl, int slot) const
    {
        return session.bank.QuestionBank[subject].Items[lvl][slot];
    }
};

TEST_F(QuestionEditorTest, GridListsEveryQuestionLevelByLevel)
{
    open(1);
    const QAbstractItemModel *model = grid()->model();
    const QStringList headings = {"Level",         "Question",      "Right Answer",
                                  "Wrong Answer1", "Wrong Answer2", "Wrong Answer3"};
    ASSERT_EQ(model->columnCount(), 6);
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(model->headerData(column, Qt::Horizontal).toString(), headings[column]);

    ASSERT_EQ(rows(), 156);
    EXPECT_EQ(currentRow(), 0);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("An animal that meows"));
    EXPECT_EQ(cell(0, 0), QStringLiteral("K"));
    EXPECT_EQ(cell(0, 4), QStringLiteral("kat"));
    EXPECT_EQ(cell(6, 1), QStringLiteral("Not hot, but"));
    EXPECT_EQ(cell(12, 0), QStringLiteral("1"));
    EXPECT_EQ(cell(12, 1), QStringLiteral("When you say something"));
    EXPECT_EQ(cell(155, 0), QStringLiteral("12"));
    EXPECT_EQ(cell(155, 2), QStringLiteral("mediocre"));

    // Clicking a row shows its level and texts in the fields below.
    clickRow(24);
    EXPECT_EQ(level()->currentText(), QStringLiteral("2"));
    EXPECT_EQ(txt(1)->text(), QString());
    EXPECT_EQ(txt(2)->text(), QStringLiteral("surprise"));
    EXPECT_EQ(txt(5)->text(), QStringLiteral("surpris"));

    // A subject with gaps: Geography has six questions at every level.
    control<QComboBox>(QStringLiteral("cmbSubject"))->setCurrentIndex(2);
    EXPECT_EQ(rows(), 78);
    EXPECT_EQ(cell(9, 0), QStringLiteral("1"));
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

    // No more than a 16-bit byte count can describe.
    txt(1)->setText(QString());
    txt(1)->insert(QString(70000, QLatin1Char('a')));
    EXPECT_EQ(txt(1)->text().size(), FileTextMaxLength);
    EXPECT_EQ(question(1, 1, 1).Text.size(), static_cast<std::size_t>(FileTextMaxLength));

    // Other questions are untouched.
    EXPECT_EQ(question(1, 1, 0).Answer, "talk");
}

TEST_F(QuestionEditorTest, AddingToAFullLevelGrowsEverySubjectsSlots)
{
    open(1);
    clickRow(3); // level K holds QuestionMax + 1 = 12 questions
    ASSERT_EQ(session.bank.QuestionMax, 11);
    control<QPushButton>(QStringLiteral("cmdAdd"))->click();

    EXPECT_EQ(session.bank.QuestionMax, 12);
    for (const SubjectQuestions &subject : session.bank.QuestionBank)
        for (const auto &items : subject.Items)
            EXPECT_EQ(items.size(), 13u);
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[0], 12);
    EXPECT_EQ(rows(), 157);
    EXPECT_EQ(currentRow(), 12);
    EXPECT_EQ(cell(12, 0), QStringLiteral("K"));
    EXPECT_EQ(cell(13, 1), QStringLiteral("When you say something"));
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(txt(i)->text().isEmpty()) << i;

    // Typing now fills the new question, and the next add at level 3 fits.
    QTest::keyClicks(txt(1), QStringLiteral("new"));
    EXPECT_EQ(question(1, 0, 12).Text, "new");
    clickRow(37); // the first question of level 3
    control<QPushButton>(QStringLiteral("cmdAdd"))->click();
    EXPECT_EQ(session.bank.QuestionMax, 12);
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[3], 12);
    EXPECT_EQ(level()->currentText(), QStringLiteral("3"));
}

TEST_F(QuestionEditorTest, TheLastQuestionOfASubjectCannotBeDeleted)
{
    open(1);
    prompt.answerInput(QStringLiteral("Poetry"));
    control<QPushButton>(QStringLiteral("cmdAddSubject"))->click();
    prompt.clear();
    ASSERT_EQ(rows(), 1);

    control<QPushButton>(QStringLiteral("cmdDelete"))->click();
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Unable to Delete Question"));
    EXPECT_EQ(prompt.last()->text,
              QStringLiteral("Each Subject must contain at least one Question."));
    EXPECT_EQ(session.bank.Limits[6].LastQuestion[0], 0);
    EXPECT_EQ(rows(), 1);
}

TEST_F(QuestionEditorTest, DeletingAQuestionMovesTheLaterOnesUp)
{
    open(1);
    prompt.answerInput(QStringLiteral("Poetry"));
    control<QPushButton>(QStringLiteral("cmdAddSubject"))->click();
    const QStringList texts = {"one", "two", "three", "four"};
    QTest::keyClicks(txt(1), texts[0]);
    for (int i = 1; i < texts.size(); ++i) {
        control<QPushButton>(QStringLiteral("cmdAdd"))->click();
        QTest::keyClicks(txt(1), texts[i]);
    }
    ASSERT_EQ(rows(), 4);

    clickRow(1);
    prompt.answerConfirm(false);
    control<QPushButton>(QStringLiteral("cmdDelete"))->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->kind, Kind::Confirm);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Confirm Delete Question"));
    EXPECT_EQ(prompt.last()->text,
              QStringLiteral("Are you sure you want to Delete this Question?"));
    EXPECT_EQ(rows(), 4);

    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdDelete"))->click();
    EXPECT_EQ(session.bank.Limits[6].LastQuestion[0], 2);
    EXPECT_EQ(question(6, 0, 1).Text, "three");
    EXPECT_EQ(question(6, 0, 2).Text, "four");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(currentRow(), 1);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("three"));

    // Deleting the last row leaves the new last row selected.
    clickRow(2);
    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdDelete"))->click();
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
    EXPECT_EQ(atK.Text, moved.Text);
    EXPECT_EQ(atK.Answer, moved.Answer);
    EXPECT_EQ(atK.Wrong1, moved.Wrong1);
    EXPECT_EQ(atK.Wrong2, moved.Wrong2);
    EXPECT_EQ(atK.Wrong3, moved.Wrong3);
    EXPECT_EQ(currentRow(), 6);
    EXPECT_EQ(cell(6, 0), QStringLiteral("K"));
    EXPECT_EQ(cell(6, 1), QString::fromStdString(moved.Text));
    EXPECT_EQ(cell(6, 5), QString::fromStdString(moved.Wrong3));
    EXPECT_EQ(txt(2)->text(), QString::fromStdString(moved.Answer));
    EXPECT_EQ(rows(), 78);
}

TEST_F(QuestionEditorTest, RevertingSpellingBringsBackItsDefaults)
{
    open(1);
    clickRow(0);
    txt(1)->setText(QStringLiteral("changed"));
    control<QPushButton>(QStringLiteral("cmdAdd"))->click();
    auto *adjacent = control<QCheckBox>(QStringLiteral("chkAdjacentLevels"));
    adjacent->setChecked(false);
    EXPECT_FALSE(session.bank.Subjects[1].AdjacentLevels);

    prompt.answerConfirm(false);
    control<QPushButton>(QStringLiteral("cmdRevert"))->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Confirm: Revert to Original, Default Subject"));
    EXPECT_EQ(prompt.last()->text,
              QStringLiteral("Are you sure you want to Revert to the Original, Default Subject?"));
    EXPECT_EQ(question(1, 0, 0).Text, "changed");

    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdRevert"))->click();
    EXPECT_EQ(question(1, 0, 0).Text, "An animal that meows");
    EXPECT_EQ(session.bank.Limits[1].LastQuestion[0], 11);
    EXPECT_TRUE(session.bank.Subjects[1].AdjacentLevels);
    EXPECT_TRUE(adjacent->isChecked());
    EXPECT_EQ(rows(), 156);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("An animal that meows"));
    // Geography was not touched.
    EXPECT_EQ(session.bank.Limits[2].LastQuestion[0], 5);
}

TEST_F(QuestionEditorTest, InsertAndDeleteKeysOnTheGridAddAndDelete)
{
    open(3);
    clickRow(8); // level 1
    QTest::keyClick(grid(), Qt::Key_Insert);
    EXPECT_EQ(session.bank.Limits[3].LastQuestion[1], 6);
    EXPECT_EQ(rows(), 79);
    EXPECT_EQ(currentRow(), 12);

    grid()->setFocus();
    prompt.answerConfirm(false);
    QTest::keyClick(grid(), Qt::Key_Delete);
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Confirm Delete Question"));
    EXPECT_EQ(rows(), 79);
    prompt.answerConfirm(true);
    QTest::keyClick(grid(), Qt::Key_Delete);
    EXPECT_EQ(rows(), 78);
    EXPECT_EQ(session.bank.Limits[3].LastQuestion[1], 5);
}

TEST_F(QuestionEditorTest, TheCurrentRowIsKeptInView)
{
    TestsScreen &shown = open(1);
    shown.show();
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
}

TEST_F(QuestionEditorTest, ALargeSubjectIsListedAndEditedCellByCell)
{
    ResizeQuestionSlots(session.bank, 999);
    for (int lvl = 0; lvl < LevelCount; ++lvl) {
        session.bank.Limits[5].LastQuestion[lvl] = 999;
        session.bank.QuestionBank[5].Items[lvl][999].Text = "last of " + LevelText(lvl);
    }
    open(5);
    ASSERT_EQ(rows(), 13000);
    EXPECT_EQ(cell(12999, 1), QStringLiteral("last of 12"));
    clickRow(12999);
    QSignalSpy resets(grid()->model(), &QAbstractItemModel::modelReset);
    QTest::keyClicks(txt(2), QStringLiteral("abc"));
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(cell(12999, 2), QStringLiteral("abc"));
}

TEST_F(QuestionEditorTest, AnEditMadeOnTheScreenIsInTheTestsFileAfterClosing)
{
    TestsScreen &shown = open(1);
    shown.show();
    clickRow(14); // level 1, third question
    txt(4)->selectAll();
    QTest::keyClicks(txt(4), QStringLiteral("edited wrong answer"));
    level()->setCurrentIndex(12); // and moved to level 12
    control<QPushButton>(QStringLiteral("cmdClose"))->click();

    TestBank loaded;
    ASSERT_EQ(LoadTests(loaded, session.paths.TestsPath).status, LoadResult::Status::Loaded);
    EXPECT_EQ(loaded.Limits[1].LastQuestion[1], 10);
    EXPECT_EQ(loaded.Limits[1].LastQuestion[12], 12);
    EXPECT_EQ(loaded.QuestionMax, 12);
    EXPECT_EQ(loaded.QuestionBank[1].Items[12][12].Wrong2, "edited wrong answer");
}

} // namespace
