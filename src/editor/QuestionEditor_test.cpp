// The question frame of the Tests screen: the grid, edits and odd texts, adding,
// deleting, moving and reverting questions, the marks on questions a child
// could not answer, and the level list typed into.
#include "TestsScreenFixture_test.h"

#include <QApplication>
#include <QLabel>

namespace {

TEST_F(QuestionEditorTest, TypedAndPastedTextsAreStoredAsTheFileWillHoldThem)
{
    open(1);
    ASSERT_EQ(rows(), 156);
    EXPECT_EQ(currentRow(), 0);
    // Every keystroke is stored, and only its cell is repainted.
    clickRow(13); // level 1, second question
    QSignalSpy resets(grid()->model(), &QAbstractItemModel::modelReset);
    QSignalSpy changes(grid()->model(), &QAbstractItemModel::dataChanged);
    txt(2)->setFocus();
    txt(2)->end(false);
    QTest::keyClicks(txt(2), QStringLiteral("s!"));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(resets.count(), 0);
    const std::string answer = question(1, 1, 1).answer;
    EXPECT_EQ(answer.substr(answer.size() - 2), "s!");
    EXPECT_EQ(cell(13, 2), QString::fromStdString(answer));
    EXPECT_EQ(question(1, 1, 0).answer, "talk") << "other questions are untouched";

    // Characters Windows-1252 lacks show as the "?" the file will hold; the
    // cursor stays after the typed character. Each is one key press carrying it,
    // as an input method delivers them; the emoji is two UTF-16 units.
    txt(3)->setText(QStringLiteral("ab"));
    txt(3)->setCursorPosition(1);
    for (const QString &typed :
         {QStringLiteral("Ж"), QStringLiteral("é"), QStringLiteral("\U0001F600")})
        QTest::sendKeyEvent(QTest::Click, txt(3), Qt::Key_unknown, typed, Qt::NoModifier);
    EXPECT_EQ(txt(3)->text(), QStringLiteral("a?é?b"));
    EXPECT_EQ(txt(3)->cursorPosition(), 4);
    EXPECT_EQ(QString::fromStdString(question(1, 1, 1).wrong1), QStringLiteral("a?é?b"));

    // Pasted texts in all five boxes of a question.
    const struct {
        QString typed;
        QString kept; // as the screen shows it and the file holds it
    } cases[] = {
        {QStringLiteral("Art \U0001F3A8"), QStringLiteral("Art ?")},
        {QStringLiteral("A\tB\nC\x01\x7f"), QStringLiteral("A\tB\nC\x01\x7f")},
        {QStringLiteral("<b>Art</b> & <i>Craft</i>"), QStringLiteral("<b>Art</b> & <i>Craft</i>")},
        {QString(70000, QLatin1Char('q')), QString(FileTextMaxLength, QLatin1Char('q'))},
    };
    for (int c = 0; c < static_cast<int>(std::size(cases)); ++c) {
        clickRow(5 * c);
        for (int field = 1; field <= 5; ++field) {
            txt(field)->selectAll();
            // The longest text is set: a line edit files a paste into its undo
            // history character by character, which under AddressSanitizer takes
            // minutes at that length. The box cuts set text all the same.
            if (cases[c].typed.size() > FileTextMaxLength)
                txt(field)->setText(cases[c].typed);
            else
                txt(field)->insert(cases[c].typed);
            EXPECT_EQ(utf8(txt(field)->text()), utf8(cases[c].kept)) << c << " " << field;
            EXPECT_EQ(utf8(cell(5 * c, field)), utf8(cases[c].kept)) << c << " " << field;
        }
    }
    // The bank holds what the grid shows.
    EXPECT_EQ(question(1, 0, 5).wrong3, "A\tB\nC\x01\x7f");
    EXPECT_EQ(question(1, 1, 3).text.size(), std::size_t{FileTextMaxLength});
}

TEST_F(QuestionEditorTest, AddingToAFullLevelGrowsEverySubjectsSlots)
{
    open(1);
    clickRow(3); // level K holds questionMax + 1 = 12 questions
    ASSERT_EQ(session.bank.questionMax, 11);
    click("cmdAdd");

    EXPECT_EQ(session.bank.questionMax, 12);
    for (const SubjectQuestions &subject : session.bank.questionBank)
        for (const auto &items : subject.items())
            EXPECT_EQ(items.size(), 13u);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[0], 12);
    EXPECT_EQ(rows(), 157);
    EXPECT_EQ(currentRow(), 12);
    EXPECT_EQ(cell(13, 1), QStringLiteral("When you say something"));
    EXPECT_TRUE(txt(1)->text().isEmpty() && txt(5)->text().isEmpty());

    // Typing now fills the new question, and the next add at level 3 fits.
    QTest::keyClicks(txt(1), QStringLiteral("new"));
    EXPECT_EQ(question(1, 0, 12).text, "new");
    clickRow(37); // the first question of level 3
    click("cmdAdd");
    EXPECT_EQ(session.bank.questionMax, 12);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[3], 12);
    EXPECT_EQ(control<QComboBox>("cmbLevel")->currentText(), QStringLiteral("3"));
}

TEST_F(QuestionEditorTest, DeletingAQuestionMovesTheLaterOnesUpButKeepsTheLastOne)
{
    open(1);
    addSubject(QStringLiteral("Poetry"));
    ASSERT_EQ(rows(), 1);
    click("cmdDelete");
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
    EXPECT_EQ(rows(), 1);

    // Added with the button and with Insert on the grid.
    QTest::keyClicks(txt(1), QStringLiteral("one"));
    click("cmdAdd");
    QTest::keyClicks(txt(1), QStringLiteral("two"));
    for (const char *text : {"three", "four"}) {
        QTest::keyClick(grid(), Qt::Key_Insert);
        QTest::keyClicks(txt(1), QString::fromLatin1(text));
    }
    ASSERT_EQ(rows(), 4);

    clickRow(1);
    click("cmdDelete"); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm Delete Question");
    prompt.answerConfirm(true);
    QTest::keyClick(grid(), Qt::Key_Delete);
    EXPECT_EQ(session.bank.limits[6].lastQuestion[0], 2);
    EXPECT_EQ(question(6, 0, 1).text + question(6, 0, 2).text, "threefour");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(currentRow(), 1);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("three"));

    // Deleting the last row leaves the new last row selected.
    clickRow(2);
    prompt.answerConfirm(true);
    click("cmdDelete");
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(currentRow(), 1);
    EXPECT_EQ(txt(1)->text(), QStringLiteral("three"));
}

TEST_F(QuestionEditorTest, ChangingTheLevelMovesTheQuestionToTheEndOfThatLevel)
{
    open(1); // every level of Spelling is full
    const Question moved = question(1, 2, 0);
    const std::string next = question(1, 2, 1).text;
    clickRow(24); // level 2, first question
    control<QComboBox>("cmbLevel")->setCurrentIndex(0);

    // Level K outgrows the slots, so every subject grows one.
    EXPECT_EQ(session.bank.questionMax, 12);
    EXPECT_EQ(session.bank.questionBank[4].items()[7].size(), 13u);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[2], 10);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[0], 12);
    EXPECT_EQ(question(1, 2, 0).text, next);
    const Question &atK = question(1, 0, 12);
    EXPECT_EQ((std::vector<std::string>{atK.text, atK.answer, atK.wrong1, atK.wrong2, atK.wrong3}),
              (std::vector<std::string>{moved.text, moved.answer, moved.wrong1, moved.wrong2,
                                        moved.wrong3}));
    EXPECT_EQ(currentRow(), 12);
    EXPECT_EQ(txt(2)->text(), QString::fromStdString(moved.answer));
}

TEST_F(QuestionEditorTest, RevertingSpellingBringsBackItsQuestionsAndFlagAndRowsScrollIntoView)
{
    open(1).show();
    txt(1)->setText(QStringLiteral("changed"));
    click("cmdAdd");
    auto *adjacent = control<QCheckBox>("chkAdjacentLevels");
    adjacent->setChecked(false);
    EXPECT_FALSE(session.bank.subjects[1].adjacentLevels);

    click("cmdRevert"); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm: Revert to Original, Default Subject");
    EXPECT_EQ(question(1, 0, 0).text, "changed");

    prompt.answerConfirm(true);
    click("cmdRevert");
    EXPECT_EQ(question(1, 0, 0).text, "An animal that meows");
    EXPECT_EQ(session.bank.limits[1].lastQuestion[0], 11);
    EXPECT_TRUE(session.bank.subjects[1].adjacentLevels && adjacent->isChecked());
    EXPECT_EQ(rows(), 156);
    EXPECT_EQ(session.bank.limits[2].lastQuestion[0], 5) << "Geography was not touched";

    // A selected row is scrolled to the top only when it is out of view.
    auto *editor = control<QuestionEditor>("fraMulti");
    ASSERT_EQ(grid()->rowAt(0), 0);
    const std::pair<int, int> rowAndTop[] = {{60, 60}, {61, 60}, {59, 59}};
    for (const auto &[row, top] : rowAndTop) {
        editor->selectRow(row);
        editor->keepInView();
        EXPECT_EQ(grid()->rowAt(0), top) << row;
    }
    EXPECT_EQ(txt(1)->text(), QString::fromStdString(question(1, 4, 11).text));
}

TEST_F(QuestionEditorTest, QuestionsAChildCouldNotAnswerAreMarkedAndCountedAndSavedAsTyped)
{
    open(2).show(); // Geography: every built-in question is complete
    auto *line = control<QLabel>("lblQuestionProblems");
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->isHidden());
    const auto marked = [this](int row) {
        return grid()->model()->index(row, 3).data(Qt::BackgroundRole).isValid();
    };
    const auto tip = [this](int row) {
        return utf8(grid()->model()->index(row, 0).data(Qt::ToolTipRole).toString());
    };
    EXPECT_FALSE(marked(0));

    // A new question is empty: its row is marked, says why, and is counted.
    clickRow(0);
    click("cmdAdd");
    const int added = currentRow();
    EXPECT_TRUE(marked(added) && !marked(added - 1));
    EXPECT_NE(tip(added).find("The question is empty"), std::string::npos) << tip(added);
    EXPECT_NE(tip(added).find("All four answers are empty"), std::string::npos) << tip(added);
    EXPECT_FALSE(line->isHidden());
    EXPECT_EQ(utf8(line->text()),
              "1 question is incomplete: children would see an empty question or answer.");

    // Filled in with a wrong answer like the right one, it is counted apart.
    const char *const typed[] = {"Capital of Peru", "Lima", "Lima ", "Quito", "Cusco"};
    for (int field = 1; field <= 5; ++field)
        QTest::keyClicks(txt(field), QString::fromLatin1(typed[field - 1]));
    EXPECT_TRUE(marked(added));
    EXPECT_EQ(tip(added),
              "Wrong answer 1 is the same as the right answer: children would see two buttons "
              "alike.");
    EXPECT_EQ(utf8(line->text()),
              "1 question repeats an answer: children would see two buttons alike.");

    // Two incomplete questions and the twin: both counts, in the plural too.
    click("cmdAdd");
    click("cmdAdd");
    EXPECT_EQ(utf8(line->text()),
              "2 questions are incomplete: children would see empty questions or answers.\n"
              "1 question repeats an answer: children would see two buttons alike.");
    // Mended, a question is no longer marked; the last one gone, the line goes.
    clickRow(added);
    txt(3)->setText(QStringLiteral("Bogota"));
    EXPECT_FALSE(marked(added));
    for (const int row : {added + 1, added + 1}) {
        clickRow(row);
        prompt.answerConfirm(true);
        click("cmdDelete");
    }
    EXPECT_TRUE(line->isHidden());

    // The file holds what was typed, blanks and all, and nothing more.
    clickRow(added);
    txt(3)->setText(QStringLiteral("Lima "));
    click("cmdAdd");
    click("cmdClose");
    const TestBank saved = loadedTests();
    const Question &twin = saved.questionBank[2].items()[0][6];
    EXPECT_EQ(twin.answer + "|" + twin.wrong1, "Lima|Lima ");
    EXPECT_EQ(saved.limits[2].lastQuestion[0], 7);
    EXPECT_TRUE(saved.questionBank[2].items()[0][7].text.empty());
}

TEST_F(QuestionEditorTest, KeysTypedInTheLevelListChooseTheLevelAndStayThere)
{
    QWidget &screen = open(1);
    screen.show();
    screen.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    clickRow(36); // level 3, the first question
    const Question moved = question(1, 3, 0);
    const Question atLevel1 = question(1, 1, 11);
    auto *levels = control<QComboBox>("cmbLevel");
    levels->setFocus();

    // Typed quickly, "1" then "2" chooses level 12; each key goes where the
    // focus is, as on a real keyboard.
    for (const char key : {'1', '2'})
        QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_EQ(QApplication::focusWidget(), levels);
    EXPECT_EQ(levels->currentText(), QStringLiteral("12"));
    EXPECT_EQ(session.bank.limits[1].lastQuestion[3], 10);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[12], 12);
    const Question &atLevel12 = question(1, 12, 12);
    EXPECT_EQ((std::vector<std::string>{atLevel12.text, atLevel12.answer, atLevel12.wrong1,
                                        atLevel12.wrong2, atLevel12.wrong3}),
              (std::vector<std::string>{moved.text, moved.answer, moved.wrong1, moved.wrong2,
                                        moved.wrong3}));
    EXPECT_EQ(utf8(txt(1)->text()), moved.text);
    // No level passed through on the way keeps anything of it.
    for (int level = 0; level < 12; ++level)
        EXPECT_EQ(session.bank.limits[1].lastQuestion[level], level == 3 ? 10 : 11) << level;
    EXPECT_EQ(question(1, 1, 11).text, atLevel1.text);

    // The arrow keys choose a level the same way; Tab then leaves the list.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(session.bank.limits[1].lastQuestion[11], 12);
    EXPECT_EQ(QApplication::focusWidget(), levels);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), txt(1));
}

} // namespace
