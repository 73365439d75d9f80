// Add Class on the Students screen: the button and its dialog, a pasted class
// added and saved on close, Cancel, the first run, names kept as the name box
// keeps them, and a class list read from a file.
#include "AddClassDialog.h"

#include "StudentsScreenFixture_test.h"
#include "classlist/ClassListFile.h"
#include "testsupport/ScreenAccess.h"
#include "testsupport/ShownText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <fstream>

namespace {

using Names = std::vector<std::string>;
using Kind = ScriptedPrompt::Shown::Kind;

// What a test does in the dialog, in place of the user; its answer is the
// dialog's own: true only when Add closed it.
using DialogSteps = std::function<void(AddClassDialog &)>;

template <typename Widget> Widget *in(AddClassDialog &dialog, const char *name)
{
    Widget *widget = dialog.findChild<Widget *>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

void paste(AddClassDialog &dialog, const QString &text)
{
    in<QPlainTextEdit>(dialog, "txtNames")->insertPlainText(text);
}

QString liveLine(AddClassDialog &dialog)
{
    return in<QLabel>(dialog, "lblSummary")->text();
}

} // namespace

class AddClassTest : public StudentsScreenTest {
protected:
    // Opens the dialog from the screen's button; steps play the user's part.
    void addClass(StudentsScreen &screen, const DialogSteps &steps)
    {
        screen.setAddClassRunner([&](AddClassDialog &dialog) {
            ++dialogsShown;
            steps(dialog);
            return dialog.result() == QDialog::Accepted;
        });
        child<QPushButton>(screen, "cmdAddClass")->click();
    }

    int dialogsShown = 0;
};

TEST_F(AddClassTest, TheButtonOpensTheDialogBesideAddStudentAndFromTheKeyboard)
{
    writeRoster({"Ann"});
    auto screen = openScreen();
    screen->show();
    screen->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    auto *button = child<QPushButton>(*screen, "cmdAddClass");
    EXPECT_EQ(shownText(*button), QStringLiteral("Add Class\u2026"));
    EXPECT_EQ(spokenName(*button), "Add Class");
    const QRect addStudent = child(*screen, "cmdAddStudent")->geometry();
    EXPECT_EQ(button->geometry().top(), addStudent.top());
    EXPECT_GT(button->geometry().left(), addStudent.right());
    screen->setAddClassRunner([&](AddClassDialog &dialog) {
        ++dialogsShown;
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Add Class"));
        EXPECT_EQ(spokenName(*in<QPlainTextEdit>(dialog, "txtNames")), "Names");
        EXPECT_EQ(in<QComboBox>(dialog, "cmbLevel")->currentText(), QStringLiteral("K"));
        EXPECT_EQ(shownText(*in<QCheckBox>(dialog, "chkAddKnownNames")),
                  QStringLiteral("Also add names already on the roster"));
        EXPECT_EQ(shownText(*in<QPushButton>(dialog, "cmdFromFile")),
                  QStringLiteral("From File\u2026"));
        EXPECT_FALSE(in<QPushButton>(dialog, "cmdAdd")->isEnabled()) << "nothing to add yet";
        EXPECT_EQ(liveLine(dialog), QStringLiteral("No students will be added."));
        return false;
    });
    // A mnemonic clicks the button as the eye can follow, a moment later.
    QTest::keyClick(screen.get(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialogsShown == 1; }));
}

TEST_F(AddClassTest, APastedClassGoesToTheEndOnceAndIsSavedWhenTheScreenCloses)
{
    writeRoster({"Ann Lee", "Bob Cruz"}, 1);
    auto screen = openScreen();
    screen->show();
    // Thirty lines: two names on the roster already, one blank line.
    QString pasted = QStringLiteral("ann lee\r\n");
    for (int i = 1; i <= 27; ++i)
        pasted += QStringLiteral("Pupil %1\r\n").arg(i);
    pasted += QStringLiteral("\r\n  Bob Cruz \r\nZo\u00EB Ng\r\n");
    addClass(*screen, [&](AddClassDialog &dialog) {
        paste(dialog, pasted);
        EXPECT_EQ(liveLine(dialog), QStringLiteral("28 students will be added; 2 already on the "
                                                   "roster are skipped; 1 blank line ignored."));
        in<QComboBox>(dialog, "cmbLevel")->setCurrentIndex(3);
        in<QPushButton>(dialog, "cmdAdd")->click();
    });

    Names expected = {"Ann Lee", "Bob Cruz"};
    for (int i = 1; i <= 27; ++i)
        expected.push_back("Pupil " + std::to_string(i));
    expected.push_back("Zo\u00EB Ng");
    EXPECT_EQ(lines(*screen), expected);
    // The class starts at the selected line, shown at the top of the list; every
    // student is made as Add Student makes one.
    auto *list = child<QListWidget>(*screen, "List1");
    EXPECT_EQ(list->currentRow(), 2);
    EXPECT_EQ(list->indexAt(QPoint(1, 1)).row(), 2);
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("Pupil 1"));
    EXPECT_TRUE(child<QRadioButton>(*screen, "optLevel3")->isChecked());
    for (std::size_t i = 2; i < expected.size(); ++i) {
        const Student &student = session.records.students[i];
        EXPECT_EQ(student.level, 3);
        EXPECT_FALSE(student.current);
        ASSERT_EQ(student.results.size(), session.bank.subjects.size());
        EXPECT_EQ(student.results.back().high, SubjectResults{}.high);
    }
    EXPECT_EQ(session.records.students[1].results[2].high[5], scoreOf(1, 2, 5, true));

    // Nothing is written until the screen closes, as for every change on it.
    EXPECT_EQ(saved().students.size(), 2u);
    child<QPushButton>(*screen, "cmdClose")->click();
    const StudentRecords file = saved();
    ASSERT_EQ(file.students.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(file.students[i].name, expected[i]);
        EXPECT_EQ(file.students[i].current, i == 2);
    }

    // The same list pasted again adds nobody, unless asked to.
    auto again = openScreen();
    addClass(*again, [&](AddClassDialog &dialog) {
        paste(dialog, pasted);
        EXPECT_TRUE(liveLine(dialog).startsWith(QStringLiteral("No students will be added; 30 "
                                                               "already on the roster")));
        in<QPushButton>(dialog, "cmdAdd")->click();
        EXPECT_EQ(dialog.result(), QDialog::Rejected) << "Add does nothing without names";
        in<QCheckBox>(dialog, "chkAddKnownNames")->click();
        EXPECT_TRUE(liveLine(dialog).startsWith(QStringLiteral("30 students will be added")));
        in<QPushButton>(dialog, "cmdAdd")->click();
    });
    EXPECT_EQ(lines(*again).size(), 60u);
}

TEST_F(AddClassTest, CancelChangesNothing)
{
    writeRoster({"Ann", "Bob"}, 1);
    const std::vector<unsigned char> before = readFileBytes(session.paths.studentsPath);
    auto screen = openScreen();
    addClass(*screen, [&](AddClassDialog &dialog) {
        paste(dialog, QStringLiteral("Cy\nDee\n"));
        in<QPushButton>(dialog, "cmdCancel")->click();
    });
    EXPECT_EQ(dialogsShown, 1);
    EXPECT_EQ(lines(*screen), (Names{"Ann", "Bob"}));
    EXPECT_EQ(child<QListWidget>(*screen, "List1")->currentRow(), 1);
    EXPECT_EQ(session.records.students.size(), 2u);
    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(readFileBytes(session.paths.studentsPath), before);
}

TEST_F(AddClassTest, OnTheFirstRunTheFirstNameTakesTheNamelessStudentsPlace)
{
    prompt.answerInput(QString()); // the welcome box cancelled
    auto screen = openScreen();
    ASSERT_EQ(lines(*screen), Names{""});
    addClass(*screen, [&](AddClassDialog &dialog) {
        paste(dialog, QStringLiteral("Ann\nBob\n"));
        in<QComboBox>(dialog, "cmbLevel")->setCurrentIndex(1);
        in<QPushButton>(dialog, "cmdAdd")->click();
    });
    EXPECT_EQ(lines(*screen), (Names{"Ann", "Bob"}));
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("Ann"));
    EXPECT_TRUE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    child<QPushButton>(*screen, "cmdClose")->click();
    const StudentRecords file = saved();
    ASSERT_EQ(file.students.size(), 2u);
    EXPECT_EQ(file.students[0].name, "Ann");
    EXPECT_EQ(file.students[0].level, 1);
    EXPECT_TRUE(file.students[0].current);
    EXPECT_EQ(session.records.currentStudentName, "Ann");
}

TEST_F(AddClassTest, NamesAreKeptExactlyAsTheNameBoxKeepsThem)
{
    writeRoster({"Ann"});
    auto screen = openScreen();
    const std::vector<QString> typed = {
        QStringLiteral(" \tZo\u00EB Ng\t "),
        QStringLiteral("Ch\u00E2u \U0001F600 \u4E2D"),
        QStringLiteral("\u00A0No-break\u00A0"),
        QStringLiteral("  ") + QString(70000, QLatin1Char('x')),
        QString(MaxNameLength - 1, QLatin1Char('y')) + QStringLiteral("\U0001F600z"),
    };
    QString pasted;
    for (const QString &line : typed)
        pasted += line + '\n';
    addClass(*screen, [&](AddClassDialog &dialog) {
        paste(dialog, pasted);
        EXPECT_TRUE(liveLine(dialog).endsWith(QStringLiteral(
            "\nLines 2 and 5 have characters the Students file cannot hold; each becomes \"?\".")))
            << liveLine(dialog).toStdString();
        in<QPushButton>(dialog, "cmdAdd")->click();
    });
    ASSERT_EQ(session.records.students.size(), 1 + typed.size());

    // Each line pasted into the name box of a student added one at a time.
    auto *nameBox = child<QLineEdit>(*screen, "txtStudent");
    for (std::size_t i = 0; i < typed.size(); ++i) {
        child<QPushButton>(*screen, "cmdAddStudent")->click();
        nameBox->insert(typed[i]);
        const std::vector<Student> &students = session.records.students;
        EXPECT_EQ(students[1 + i].name, students.back().name) << i;
    }
    EXPECT_EQ(session.records.students[2].name, "Ch\u00E2u ? ?");
}

TEST_F(AddClassTest, FromFileReadsAClassListIntoTheBoxOrSaysWhyNot)
{
    writeRoster({"Ann Lee"});
    const std::filesystem::path csv = dir.path() / "class.csv";
    std::ofstream(csv, std::ios::binary)
        << "\xEF\xBB\xBFId,Name\r\n1,\"Lee, Ann\"\r\n2,Ann Lee\r\n3,Zo\xC3\xAB\r\n";
    const std::filesystem::path big = dir.path() / "big.txt";
    std::ofstream(big, std::ios::binary) << std::string(MaxClassListBytes + 1, 'a');

    auto screen = openScreen();
    addClass(*screen, [&](AddClassDialog &dialog) {
        auto *box = in<QPlainTextEdit>(dialog, "txtNames");
        paste(dialog, QStringLiteral("Typed First"));
        // Cancelled, then too large: the box stays as it was.
        prompt.answerOpenFile(QString());
        prompt.answerOpenFile(QString::fromStdString(big.string()));
        prompt.answerOpenFile(QString::fromStdString(csv.string()));
        in<QPushButton>(dialog, "cmdFromFile")->click();
        ASSERT_EQ(prompt.shown().size(), 1u);
        EXPECT_EQ(prompt.last()->kind, Kind::OpenFile);
        dialog.readFromFile();
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Typed First"));
        ASSERT_EQ(prompt.shown().size(), 3u);
        EXPECT_EQ(prompt.last()->kind, Kind::Stop);
        EXPECT_EQ(prompt.last()->title, QStringLiteral("Add Class"));
        EXPECT_TRUE(prompt.last()->text.contains(QStringLiteral("larger than 1 MB")));

        dialog.readFromFile();
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Typed First\nLee, Ann\nAnn Lee\nZo\u00EB\n"));
        EXPECT_EQ(liveLine(dialog), QStringLiteral("3 students will be added; 1 already on the "
                                                   "roster is skipped."));
        in<QPushButton>(dialog, "cmdAdd")->click();
    });
    EXPECT_EQ(lines(*screen), (Names{"Ann Lee", "Typed First", "Lee, Ann", "Zo\u00EB"}));
}
