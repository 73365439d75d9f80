// The Tests screen: adding, renaming and deleting subjects with both files
// written and their history following them, revert all, test lengths, closing,
// the keyboard path, the wheel over its lists, and small displays.
#include "TestsScreenFixture_test.h"

#include "core/History.h"
#include "testsupport/HistoryRows.h"
#include "testsupport/MouseWheel.h"
#include "ui/ClassHistory.h"

#include <QScrollArea>
#include <QScrollBar>

namespace {

TEST_F(TestsScreenTest, AddedSubjectsKeepTwentyCharactersAsTheFileKeepsThemAndCanBeRenamed)
{
    session.records.students[0].results[1].high[3] = 9;
    TestsScreen &screen = open(0);
    auto *edit = control<QPushButton>("cmdEditSubject");
    auto *remove = control<QPushButton>("cmdDeleteSubject");
    auto *revert = control<QPushButton>("cmdRevert");
    click("cmdHelp");
    EXPECT_EQ(helpOpened, 1);
    for (int subject = 0; subject < FirstAddedSubject; ++subject) {
        subjects()->setCurrentIndex(subject);
        EXPECT_FALSE(edit->isEnabled() || remove->isEnabled() || revert->isHidden()) << subject;
        EXPECT_EQ(control("fraMulti")->isHidden(), subject == 0);
    }
    // Called anyway, the handlers leave a built-in subject alone and ask nothing.
    screen.renameSubject();
    screen.deleteSubject();
    EXPECT_TRUE(prompt.shown().empty());
    // Cancelling the input box changes nothing and writes nothing.
    click("cmdAddSubject");
    EXPECT_EQ(session.bank.subjectMax, 5);
    EXPECT_FALSE(std::filesystem::exists(session.paths.testsPath));

    const std::pair<QString, std::string> names[] = {
        {QStringLiteral("Astronomy and Planets"), "Astronomy and Planet"},
        {QStringLiteral("Art \U0001F3A8"), "Art ?"},
        {QStringLiteral("<b>Art</b> & <i>Craft</i>"), "<b>Art</b> & <i>Craf"},
        {QString(70000, QLatin1Char('x')), std::string(20, 'x')},
    };
    for (const auto &[typed, kept] : names) {
        addSubject(typed);
        EXPECT_EQ(utf8(subjects()->currentText()), kept);
    }
    EXPECT_EQ(prompt.shown().size(), std::size(names) + 1) << "no message besides the input boxes";
    // The new subject is shown with its one empty question, and can be changed.
    EXPECT_EQ(control<QTableView>("Grid1")->model()->rowCount(), 1);
    EXPECT_TRUE(edit->isEnabled() && remove->isEnabled() && revert->isHidden());

    // Both files hold the new subjects; the student's results grew and kept the old ones.
    const TestBank saved = loadedTests();
    ASSERT_EQ(saved.subjects.size(), 6 + std::size(names));
    for (std::size_t i = 0; i < std::size(names); ++i)
        EXPECT_EQ(saved.subjects[6 + i].name, names[i].second);
    const StudentRecords records = loadedStudents(saved);
    ASSERT_EQ(records.students.at(0).results.size(), saved.subjects.size());
    EXPECT_EQ(records.students[0].results[1].high[3], 9);
    EXPECT_EQ(records.currentSubject, saved.subjectMax);

    // Renaming offers the current name, converts and cuts the new one as adding
    // does, and is not saved until the screen closes; cancelled, the name stays.
    std::filesystem::remove(session.paths.testsPath);
    prompt.answerInput(QStringLiteral("Tom & Jerry \U0001F431\U0001F42D of the World"));
    edit->click();
    EXPECT_EQ(prompt.last()->defaultText, QString(20, QLatin1Char('x')));
    EXPECT_EQ(utf8(subjects()->currentText()), "Tom & Jerry ?? of th");
    EXPECT_FALSE(std::filesystem::exists(session.paths.testsPath));
    edit->click();
    EXPECT_EQ(session.bank.subjects.back().name, "Tom & Jerry ?? of th");
}

TEST_F(TestsScreenTest, DeletingSubjectsAndRevertingAllKeepResultsInStepInBothFiles)
{
    open(1);
    for (const char *name : {"A", "B", "C"})
        addSubject(QString::fromLatin1(name));
    TestBank &bank = session.bank;
    std::vector<SubjectResults> &results = session.records.students[0].results;
    for (int s = 6; s <= 8; ++s) {
        bank.limits[s].seconds = 100 + s;
        bank.questionBank[s].items()[0][0].text = "question of " + bank.subjects[s].name;
        bank.subjects[s].adjacentLevels = s != 7;
        results[s].last[0] = static_cast<int16_t>(s);
    }
    results[2].last[4] = 6;
    subjects()->setCurrentIndex(6);

    click("cmdDeleteSubject"); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm Delete Subject");
    EXPECT_EQ(bank.subjectMax, 8);

    // Only the names move within subjects: each adjacentLevels flag stays at its index.
    prompt.answerConfirm(true);
    click("cmdDeleteSubject");
    ASSERT_EQ(bank.subjectMax, 7);
    EXPECT_EQ(bank.subjects[6].name + bank.subjects[7].name, "BC");
    EXPECT_TRUE(bank.subjects[6].adjacentLevels && !bank.subjects[7].adjacentLevels);
    ASSERT_EQ(results.size(), 8u);
    for (int s = 6; s <= 7; ++s) {
        EXPECT_EQ(bank.limits[s].seconds, 101 + s);
        EXPECT_EQ(bank.questionBank[s].items()[0][0].text, "question of " + bank.subjects[s].name);
        EXPECT_EQ(results[s].last[0], s + 1);
    }
    // The subject that followed the deleted one is shown; both files were written.
    EXPECT_EQ(control<QLineEdit>("txtDuration")->text(), QStringLiteral("107"));
    TestBank saved = loadedTests();
    EXPECT_EQ(saved.subjectMax, 7);
    EXPECT_EQ(loadedStudents(saved).students[0].results.size(), 8u);

    // Deleting the last subject shows the new last one.
    subjects()->setCurrentIndex(7);
    prompt.answerConfirm(true);
    click("cmdDeleteSubject");
    EXPECT_EQ(session.records.currentSubject, 6);
    EXPECT_EQ(subjects()->currentText(), QStringLiteral("B"));

    // Revert all drops the added subjects and their results, and keeps the rest.
    click("cmdRevertAll"); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm Revert ALL to Default");
    EXPECT_EQ(bank.subjectMax, 6);
    prompt.answerConfirm(true);
    click("cmdRevertAll");
    EXPECT_EQ(bank.subjectMax, 5);
    ASSERT_EQ(results.size(), 6u);
    EXPECT_EQ(results[2].last[4], 6);
    EXPECT_EQ(session.records.currentSubject, 5) << "the last built-in subject is shown";
    saved = loadedTests();
    EXPECT_EQ(saved.subjectMax, 5);
    EXPECT_EQ(loadedStudents(saved).students[0].results.size(), 6u);
}

TEST_F(TestsScreenTest, SubjectChangesWriteTheStudentsFileOnlyOnceTheTestsFileIsSaved)
{
    open(1);
    ASSERT_TRUE(session.saveTests(nullptr) && session.saveStudents(nullptr));
    const std::vector<unsigned char> students = readFileBytes(session.paths.studentsPath);
    const std::vector<unsigned char> tests = readFileBytes(session.paths.testsPath);
    // A folder in the way of a file makes its save fail at the last step.
    const std::filesystem::path blocked = dir.path() / "blocked";
    std::filesystem::create_directories(blocked / "inside");

    // The Tests file fails: the Students file is not written, so the pair on
    // disk stays as it was.
    session.paths.testsPath = blocked;
    addSubject(QStringLiteral("Fractions"));
    EXPECT_EQ(session.bank.subjectMax, 6);
    ASSERT_EQ(prompt.shown().size(), 2u) << "the input box and one stop message";
    EXPECT_TRUE(prompt.last()->text.contains(QString::fromStdString(blocked.string())));
    EXPECT_EQ(readFileBytes(session.paths.studentsPath), students);
    EXPECT_EQ(readFileBytes(dir.paths().testsPath), tests);

    // The Students file fails after the Tests file was saved: the pair on disk
    // still loads, the subjects the older roster lacks starting from zero.
    session.paths = dir.paths();
    session.paths.studentsPath = blocked;
    addSubject(QStringLiteral("Poetry"));
    const TestBank saved = loadedTests();
    ASSERT_EQ(saved.subjectMax, 7);
    StudentRecords onDisk;
    ASSERT_EQ(loadStudents(onDisk, saved, dir.paths().studentsPath).status,
              LoadResult::Status::Loaded);
    ASSERT_EQ(onDisk.students.at(0).results.size(), 8u);
    EXPECT_EQ(onDisk.students[0].results[7].high, SubjectResults{}.high);
}

TEST_F(TestsScreenTest, TestLengthOutsideFiveToNineHundredNinetyNineBecomesThirty)
{
    // A fraction rounds to the nearest second, a half to the even one; a number
    // with an exponent is a number.
    const struct {
        const char *typed;
        int32_t seconds;
    } cases[] = {
        {"4", 30},     {"5", 5},     {"999", 999}, {"1000", 30}, {"", 30},    {"abc", 30},
        {"12abc", 30}, {"10.6", 11}, {"10.5", 10}, {"11.5", 12}, {"5.4", 5},  {"999.4", 30},
        {"999.5", 30}, {" 45 ", 45}, {"-20", 30},  {"1e9", 30},  {"1e1", 10}, {"6.5", 6},
    };
    TestsScreen &screen = open(2);
    auto *box = control<QLineEdit>("txtDuration");
    for (const auto &entry : cases) {
        session.bank.limits[2].seconds = 60;
        box->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(entry.typed));
        screen.storeTestLength();
        EXPECT_EQ(session.bank.limits[2].seconds, entry.seconds) << '"' << entry.typed << '"';
        EXPECT_EQ(box->text(), QString::number(entry.seconds)) << '"' << entry.typed << '"';
    }
    EXPECT_TRUE(prompt.shown().empty()) << "no message for any of them";
    // The length belongs to the subject it was typed for.
    EXPECT_EQ(session.bank.limits[3].seconds, 30);
}

TEST_F(TestsScreenTest, EveryWayOfClosingStoresTheLengthAndWritesTheTestsFile)
{
    for (int way = 0; way < 3; ++way) {
        std::filesystem::remove(session.paths.testsPath);
        TestsScreen &shown = open(3);
        shown.show();
        control<QLineEdit>("txtDuration")->setText(QString::number(40 + way));
        if (way == 0)
            click("cmdClose");
        else if (way == 1)
            QTest::keyClick(&shown, Qt::Key_Escape);
        else
            shown.close(); // the close box
        EXPECT_FALSE(shown.isVisible()) << way;
        EXPECT_EQ(session.bank.limits[3].seconds, 40 + way) << way;
        EXPECT_EQ(loadedTests().limits[3].seconds, 40 + way) << way;
        EXPECT_FALSE(std::filesystem::exists(session.paths.studentsPath)) << way;
    }
}

TEST_F(TestsScreenTest, TabVisitsTheScreenTopDown)
{
    // Level 3 with addition and multiplication on: both show their range lists.
    session.bank.arithOps[3] = "+x";
    session.records.currentLevel = 3;
    TestsScreen &screen = open(ArithmeticSubject);
    screen.show();
    subjects()->setFocus();
    EXPECT_EQ(tabStops(screen),
              std::vector<std::string>(
                  {"cmbSubject",       "cmdAddSubject",   "txtDuration", "Grid2",      "cmbLevel2",
                   "cmbSwitchNumbers", "cmbSwitchBlanks", "cmdRevert2",  "optOn0",     "cmbLow1_0",
                   "cmbHigh1_0",       "cmbLow2_0",       "cmbHigh2_0",  "optOff1",    "optOn2",
                   "cmbLow1_2",        "cmbHigh1_2",      "cmbLow2_2",   "cmbHigh2_2", "optOff3",
                   "cmdRevertAll",     "cmdHelp",         "cmdClose"}));
}

TEST_F(TestsScreenTest, EnterOnAnyButtonClosesTheScreenAndChangesNothingElse)
{
    const std::pair<int, const char *> buttons[] = {
        {ArithmeticSubject, "cmdRevert2"},    {ArithmeticSubject, "cmdRevertAll"},
        {ArithmeticSubject, "cmdAddSubject"}, {SpellingSubject, "cmdRevert"},
        {SpellingSubject, "cmdAdd"},          {SpellingSubject, "cmdHelp"}};
    for (const auto &[subject, name] : buttons) {
        session.bank.arithOps[2] = "/";
        TestsScreen &screen = open(subject);
        screen.show();
        QPushButton *button = control<QPushButton>(name);
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Return);
        EXPECT_FALSE(screen.isVisible()) << name;
        EXPECT_TRUE(prompt.shown().empty()) << name << " asked " << utf8(prompt.last()->title);
        EXPECT_EQ(helpOpened, 0) << name;
        EXPECT_EQ(session.bank.arithOps[2], "/") << name;
        prompt.clear();
    }
}

TEST_F(TestsScreenTest, TheWheelOverAListWithoutTheFocusScrollsTheScreenAndChangesNothing)
{
    TestsScreen &screen = open(ArithmeticSubject);
    screen.fitInto(QSize(900, 420)); // small enough to scroll
    screen.show();
    screen.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    control<ArithmeticSettings>("fraMath")->showLevel(2);
    QScrollBar *screenScroll = control<QScrollArea>("scrScreen")->verticalScrollBar();
    ASSERT_GT(screenScroll->maximum(), 0);
    QWidget *focused = control("txtDuration");
    focused->setFocus();

    // A range, a switch and the question's level, each passed over by the wheel.
    auto *high = control<QComboBox>("cmbHigh1_0");
    rollWheel(*high, -1);
    rollWheel(*control<QComboBox>("cmbSwitchNumbers"), -1);
    EXPECT_EQ(session.bank.arithHigh1[2][Add], 12);
    EXPECT_EQ(high->currentText(), QStringLiteral("12"));
    EXPECT_TRUE(session.bank.arithSwitch[2][SwitchNumbers]);
    EXPECT_EQ(screen.focusWidget(), focused);
    EXPECT_GT(screenScroll->value(), 0) << "the screen scrolled instead";

    subjects()->setCurrentIndex(SpellingSubject);
    control<QTableView>("Grid1")->setCurrentIndex(
        control<QTableView>("Grid1")->model()->index(13, 1)); // level 1
    focused->setFocus();
    rollWheel(*control<QComboBox>("cmbLevel"), -3);
    EXPECT_EQ(session.bank.questionMax, 11);
    EXPECT_EQ(session.bank.limits[SpellingSubject].lastQuestion[1], 11);
    EXPECT_EQ(control<QComboBox>("cmbLevel")->currentText(), QStringLiteral("1"));

    // A list with the focus takes the wheel as before.
    subjects()->setCurrentIndex(ArithmeticSubject);
    control<ArithmeticSettings>("fraMath")->showLevel(2);
    high->setFocus();
    rollWheel(*high, 1);
    EXPECT_EQ(session.bank.arithHigh1[2][Add], 11);
}

TEST_F(TestsScreenTest, OnASmallDisplayTheScreenFitsAndScrollsToEveryControl)
{
    TestsScreen &screen = open(ArithmeticSubject);
    screen.show();
    auto *scrollArea = control<QScrollArea>("scrScreen");
    const QSize frame(16, 48); // a title bar and borders

    // A large display shows the whole screen unscrolled, with room for twenty questions.
    screen.fitInto(QSize(1904, 1032));
    QCoreApplication::processEvents();
    EXPECT_TRUE(screen.width() >= 1000 && screen.height() >= 720);
    EXPECT_EQ(scrollArea->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scrollArea->horizontalScrollBar()->maximum(), 0);

    // 1024 x 600 and 1366 x 768 at 125 %: within the display, and every
    // control of both frames can be scrolled to.
    for (const QSize display : {QSize(1024, 600), QSize(1093, 614)}) {
        const QSize room = display - frame;
        screen.fitInto(room);
        for (const int subject : {ArithmeticSubject, SpellingSubject}) {
            subjects()->setCurrentIndex(subject);
            QCoreApplication::processEvents();
            EXPECT_LE(screen.width(), room.width()) << display.width();
            EXPECT_LE(screen.height(), room.height()) << display.width();
            EXPECT_EQ(scrollArea->horizontalScrollBar()->maximum(), 0) << "only up and down";
            for (const char *name : {"cmbSubject", "txtDuration", "cmbHigh2_3", "cmdRevert2",
                                     "txt5", "cmdRevert", "cmdClose"}) {
                QWidget *widget = control(name);
                if (widget->isHidden() || !widget->isVisibleTo(&screen))
                    continue;
                // Scrolled to, the whole control shows (a line edit would
                // only bring its cursor into view by ensureWidgetVisible).
                const QPoint centre = widget->mapTo(scrollArea->widget(), widget->rect().center());
                scrollArea->ensureVisible(centre.x(), centre.y(), widget->width() / 2 + 1,
                                          widget->height() / 2 + 1);
                QWidget *view = scrollArea->viewport();
                const QRect shown(widget->mapTo(view, QPoint(0, 0)), widget->size());
                EXPECT_TRUE(view->rect().contains(shown)) << name << " at " << display.width();
            }
        }
    }
}

} // namespace

TEST_F(TestsScreenTest, TheHistoryFollowsSubjectsThroughRenamesDeletesAndRevertAll)
{
    openHistory(session);
    History &history = *session.history;
    // One test of Ann's in a subject: a single question named after the subject.
    const auto recordTestIn = [&](int subject) {
        history.recorder().beginTest({0, subject, 1, 30, false});
        history.recorder().recordChoice(
            {"In " + session.bank.subjects[subject].name, {"a", "b", "c", "d"}, 0, 0});
        history.recorder().endTest({1, 1, 0, false});
    };
    const auto testsIn = [&](int subject) { return history.queries().tests(0, subject, 1).size(); };
    const auto subjectsOfAnswers = [&] { return historyColumn(historyRows(history), "Subject"); };

    open(2);
    for (const char *name : {"Astronomy", "Botany"})
        addSubject(QString::fromLatin1(name));
    recordTestIn(2);
    recordTestIn(6);
    recordTestIn(7);
    recordTestIn(7);

    subjects()->setCurrentIndex(6);
    prompt.answerInput(QStringLiteral("Stars"));
    click("cmdEditSubject");
    ASSERT_EQ(session.bank.subjects[6].name, "Stars");
    EXPECT_EQ(subjectsOfAnswers(),
              (std::vector<std::string>{"Geography", "Stars", "Botany", "Botany"}));

    // Botany moves into the deleted subject's place and keeps its tests.
    prompt.answerConfirm(true);
    click("cmdDeleteSubject");
    ASSERT_EQ(session.bank.subjects[6].name, "Botany");
    EXPECT_EQ(testsIn(6), 2u);
    recordTestIn(6);
    EXPECT_EQ(testsIn(6), 3u);

    // A subject added after a delete starts with no history of its own.
    addSubject(QStringLiteral("Chemistry"));
    EXPECT_EQ(testsIn(7), 0u);

    // Reverting drops the added subjects; a built-in subject keeps its history,
    // and a subject added again under an old name does not inherit it.
    prompt.answerConfirm(true);
    click("cmdRevertAll");
    EXPECT_EQ(testsIn(2), 1u);
    addSubject(QStringLiteral("Botany"));
    EXPECT_EQ(testsIn(6), 0u);
}
