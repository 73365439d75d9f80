#include "help/HelpPages.h"

#include <QDir>

#include <initializer_list>

namespace {

// The fragments of a page, joined in the order they are read.
QString join(std::initializer_list<const char *> fragments)
{
    QString text;
    for (const char *fragment : fragments)
        text += QString::fromUtf8(fragment);
    return text;
}

constexpr const char *PageStart = "<font face=verdana>";
constexpr const char *PageEnd = "</font>";

// The screens close on Enter; both editing screens warn about it the same way.
constexpr const char *EnterWarning =
    "<p><i>Please note:</i> do not press <b>[Enter]</b> until you are finished "
    "using the screen (as pressing <b>[Enter]</b> causes this screen to Close). "
    "All modifications are then automatically Saved. "
    "When you are finished, press <b>[Esc]</b> or click <b>[Close]</b>.";

// Where this installation really keeps its files, in a sentence of its own.
QString actualDataDirSentence(const QString &dataDir, bool besideProgram)
{
    const QString shown = QDir::toNativeSeparators(dataDir).toHtmlEscaped();
    if (besideProgram)
        return QStringLiteral("On this computer, the <b>data</b> directory is <b>%1</b>. ")
            .arg(shown);
    return QStringLiteral("On this computer, the program's own directory cannot be written to, "
                          "so Tavrino keeps its files in your personal application data "
                          "directory instead: <b>%1</b>. ")
        .arg(shown);
}

// A paragraph of the classroom mode's own, or nothing in the teacher's copy.
QString classroomNote(ProgramMode mode, const char *text)
{
    if (mode != ProgramMode::Classroom)
        return {};
    return QStringLiteral("<p><i>In this classroom copy of Tavrino,</i> %1")
        .arg(QString::fromUtf8(text));
}

} // namespace

QString mainHelpPage(const QString &dataDir, bool besideProgram, ProgramMode mode)
{
    QString page = join({
        PageStart,
        "<center><u><h3>Help Topics</h3></u></center>",
        "<p><b><u>Overview:</u></b><br>",
        "A general description of the entire Tavrino program.",
        "<p><b><u>Performing a Test:</u></b><br>",
        "How to Start and Stop a <b>Test</b>.",
        "<p><b><u>Students:</u></b><br>",
        "How to manage an entire <b>Class</b>.",
        "<p><b><u>Tests:</u></b><br>",
        "How to select the <b>Subjects</b> and <b>Levels</b> to be performed, and how to "
        "change them.",

        "<hr>",
        "<center><u><h3>Overview</h3></u></center>",
        "<p>The Tavrino program will enable Students to perform <b>Multi-Level Timed Tests</b>. ",
        "Each test lasts a fixed number of seconds, and the Student answers as many questions "
        "as possible before the time runs out.",
        "<p>The questions, and the multiple choices offered for each question, are always "
        "shown in a <i>random</i> sequence. Every question of a Subject and Level is asked "
        "before a new random sequence begins, so a Student does not see the same question "
        "again until all of the others have been used.",
        "<p>Before a test, you can review the answers on the <b>Tests</b> screen. "
        "The <b>Students</b> screen shows each Student's <b>Last</b> and <b>High</b> scores "
        "for every Subject and Level.",
        "<p>Besides the default tests that come with the program, you can add your own "
        "Subjects and tests, and edit them.",
        "<p>All modifications (to the <b>Students</b> and <b>Tests</b> data) are "
        "automatically Saved for you. ",
        "There is no Save command to remember. ",
        "Even so, it is wise to make a backup copy of the <b>data</b> directory from time to "
        "time (for example, onto a memory stick), so that your Class's scores and your own "
        "tests are never lost. ",
        "All of the files used by this program are placed in a directory named "
        "<u><b>data</b></u>, ",
        "which is located directly beneath the program's path. ",
        "For example, if the program is installed in <b>c:\\Program Files\\Tavrino</b>, then "
        "its files are kept in <b>c:\\Program Files\\Tavrino\\data</b>. ",
    });
    page += actualDataDirSentence(dataDir, besideProgram);
    page += join({
        "<hr>",
        "<center><u><h3>Performing a Test</h3></u></center>",
        "<p>First make sure that the right Student is selected: the current Student's name is "
        "shown at the top left of the main screen. Then select a test, by choosing the "
        "<b>Subject</b> from the list and clicking the button of the <b>Level</b>. "
        "To begin, click <b>[Start Test]</b>.",
        "<p>The test runs for the number of seconds shown next to the Subject's name. "
        "For Arithmetic, type the missing number and press <b>[Enter]</b>; for the other "
        "Subjects, "
        "select one of the four answers and press <b>[Enter]</b>. Each answer is checked at "
        "once, and the next question follows. To end a test early, click <b>[Stop Test]</b>.",
        "<p>While the test runs, its status is shown at the top right of the screen: the time "
        "left, the number of <b>Right</b> and <b>Wrong</b> answers, and the <b>Score</b>.",
        "<p>The <u><b>Score</b></u> is determined by subtracting the <b>Wrong</b> answers "
        "from the <b>Right</b> answers. ",
        "For example, a Student with 5 <b>Right</b> answers and 2 <b>Wrong</b> answers has a "
        "<b>Score</b> of 3. ",
        "When the test ends, the Score becomes the Student's <b>Last</b> score for that "
        "Subject and Level, and also the <b>High</b> score when it beats the previous best.",
        "<p>After a test, click <b>[Review]</b> to see every question of the test with its "
        "right answer: the missed ones come first, in red, each with the answer that was "
        "given. <b>[Practise missed]</b> asks the missed questions again, just as they were "
        "shown, without a clock and without a score: a question answered wrong comes back a "
        "little later, until each one has been answered right. Practice never changes the "
        "<b>Last</b> or <b>High</b> score. <b>[Stop Practice]</b> ends it at any time. The "
        "review goes when a new test starts or another Student, Subject or Level is chosen.",
        "<p>For children who cannot read yet, tick <b>Read aloud</b> before the test: each "
        "question, in a test or in practice, is then read out as it shows (in Spelling, the "
        "word to spell). <b>[Say it again]</b> beside the question, or <b>F2</b>, reads it "
        "once more. Where the computer has no sound device or no voice, the box is greyed "
        "out; rest the mouse on it to see why.",

        "<hr>",
        "<center><u><h3>Students</h3></u></center>",
        "<p>The <b>Students</b> screen is always shown when the program starts, so that the "
        "first Student can be selected. (The very first time, the program asks for the first "
        "Student's name.) The name of the current Student is shown at the top left of the "
        "main screen.",
        "<p>After a test, click <b>[Students]</b> to select another Student, to add, rename "
        "or delete Students, or to look at their scores. For more help, click "
        "<b>[Help]</b> on the Students screen.",
    });
    page += classroomNote(mode, "the Students screen is for choosing your own name and looking "
                                "at scores: only the teacher's copy can add, rename or delete "
                                "Students.");
    page += join({
        "<hr>",
        "<center><u><h3>Tests</h3></u></center>",
        "<p>The program comes with these default Subjects:",
        "<ul><li><b>Arithmetic</b><li><b>Spelling</b><li><b>Geography</b>",
        "<li><b>History</b><li><b>Music</b><li><b>Science</b></ul>",
        "<p>The current test is the <b>Subject</b> and <b>Level</b> selected on the main "
        "screen. ",
        "If a Level is not available for a particular Subject, then it's button will be "
        "disabled. ",
        "A Level becomes available as soon as it holds at least one question (for Arithmetic: "
        "as soon as one of its exercises is switched On).",
        "<p>Please note that a <b>Level</b> is <i>not</i> the same as a school grade. "
        "For example, the default Arithmetic Levels 6 - 12 are the multiplication tables "
        "of 6 .. 12.",
        "<p>After a test, click <b>[Tests]</b> to change the Subjects, the length of the "
        "tests, the Arithmetic settings or the questions. For more help, click "
        "<b>[Help]</b> on the Tests screen.",
        "<p>To practise on paper, click <b>[Worksheet\u2026]</b>: it prints problems of the "
        "Subject and Level selected, drawn as a test draws them. Choose how many (10 to "
        "200) and whether the answer key comes with them, on a page of its own. The "
        "<b>seed</b> at the foot of a sheet prints the very same sheet again when typed in; "
        "left empty, a new sheet is drawn. A preview shows the pages before they are "
        "printed or saved as a PDF file.",
    });
    page += classroomNote(mode, "there is no <b>[Tests]</b> or <b>[Worksheet\u2026]</b> button: "
                                "only the teacher's copy can change the tests or print "
                                "worksheets. <b>[Exit]</b> asks before Tavrino closes.");
    page += QString::fromUtf8(PageEnd);
    return page;
}

QString studentsHelpPage(ProgramMode mode)
{
    QString page = join({
        PageStart,
        "<center><u><h3>Students</h3></u></center>",
        "<p>This screen keeps your <b>Class</b>: the list of Students who take the tests, "
        "and the scores each of them has reached. The Student who is selected when this "
        "screen closes is the one who takes the next test.",
    });
    // First, so that a child reading on does not look for the buttons below.
    page += classroomNote(mode, "choose your own name, Subject and Level here and look at the "
                                "scores. Only the teacher's copy can add, rename or delete "
                                "Students, show Progress, Facts or Who Needs Help, reset "
                                "scores or restore backups, so the buttons described for these "
                                "below are not shown.");
    page += join({
        EnterWarning,
        "<p><b><u>Selecting a Student:</u></b><br>",
        "Click a name in the list under <b>Select a Student</b>. The name appears in the "
        "<b>Student</b> box, the Student's <b>Level</b> is selected, and the scores show that "
        "Student's results.",
        "<p><b><u>Editing a Student:</u></b><br>",
        "Select the Student, then change the name in the <b>Student</b> box; the list follows "
        "as you type. To change the Level at which the Student usually works, click one of the "
        "<b>Level</b> buttons.",
        "<p><b><u>Adding a New Student:</u></b><br>",
        "Click <b>[Add Student]</b>. An empty line is added at the end of the list and "
        "selected; type the new Student's name in the <b>Student</b> box.",
        "<p><b><u>Adding a Whole Class:</u></b><br>",
        "Click <b>[Add Class\u2026]</b> and paste the names, one per line (a column copied from "
        "a spreadsheet will do), or click <b>[From File\u2026]</b> to read them from a text or "
        "CSV file (from the column headed <b>Name</b> or <b>Student</b>, otherwise the first "
        "column). Choose the Level of the new Students. The line under the names tells what "
        "will happen: a name already on the list, or twice among the names, is added once, "
        "unless you check <b>Also add names already on the roster</b>. Click <b>[Add]</b> to "
        "add the Students at the end of the list.",
        "<p><b><u>Deleting a Student:</u></b><br>",
        "Select the Student and click <b>[Delete Student]</b> (or press the <b>[Delete]</b> "
        "key in the list), then confirm with <b>[OK]</b>. The Student's scores are deleted as "
        "well, and so is the Student's history (every answer kept since the first test) when "
        "this screen closes. Just before the delete Tavrino backs up both the Students data "
        "and the history (see below): restoring the two copies made then brings the Student, "
        "the scores and the history back, for as long as those copies are kept. Restoring "
        "the Students copy alone brings the Student and the scores back without the history. "
        "The last remaining Student cannot be deleted.",
        "<p><b><u>Progress:</u></b><br>",
        "Tavrino keeps every answer of every test. Click <b>[Progress…]</b> (Alt+P) to "
        "see the selected Student's score in each test over time, in the Subject chosen under "
        "<b>Current Subject</b> and at the Level selected; the red dashed line is the Student's "
        "<b>High</b>. Choose the last month, the last year or all tests in the <b>Show</b> list. "
        "The table beside the chart holds the same figures. Practice rounds are kept but "
        "never scored, so they are not shown.",
        "<p>When the Students file was replaced from outside Tavrino (a copy from another "
        "computer, say), history whose Student is no longer in the list is kept as <b>not "
        "matched</b>. <b>[Not matched…]</b> in Progress lists it: give each to the "
        "Student it belongs to, or delete it.",
        "<p><b><u>Facts:</u></b><br>",
        "Click <b>[Facts…]</b> (Alt+F) to see which Arithmetic facts the selected Student "
        "knows: a grid for each operation, one square per fact (7 \u00D7 8 is the same fact "
        "whichever box was blank). A fact is <b>known</b> (green, \u2713) when at least 90 % "
        "of its last five answers were right and they took 3 seconds or less on average (6 "
        "seconds at Levels K to 2); <b>not yet</b> (red, \u2717) when more than a quarter were "
        "wrong; <b>learning</b> (amber, ~) in between; white until tried. Point at a square, or "
        "move to it with the arrow keys, to read the fact's answers in words. In a "
        "subtraction or division grid the row is the number taken away or divided by, and the "
        "column the answer. <b>Questions Missed</b> lists the multiple-choice questions the "
        "Student misses most. <b>[Print…]</b> and <b>[Save as PDF…]</b> take it away.",
        "<p><b><u>Who Needs Help:</u></b><br>",
        "Click <b>[Who Needs Help…]</b> (Alt+W) for the whole class: for each Student and "
        "Subject, whether the scores are going up, level or down (the mean of the last five "
        "tests against the five before), how many facts are not yet known, and the date of the "
        "last test. Choose a column in <b>Sort by</b>, or click its heading. The class report "
        "(<b>[Report…]</b>) prints the same table, and the questions the class misses most in "
        "each Subject and Level.",
        "<p><b><u>Practising weak facts:</u></b><br>",
        "After an Arithmetic test, the review offers <b>[Practise weak facts]</b>: up to 20 "
        "facts of the Level without a clock, those not yet known first, then those being "
        "learnt, then new ones. A fact answered wrong comes back a little later. The round is "
        "kept in the history as practice and never changes a score.",

        "<hr>",
        "<center><u><h3>Scores</h3></u></center>",
        "<p>The grid shows the scores in one of two ways, chosen by the buttons to the right "
        "of the <b>SCORES FOR</b> heading:",
        "<p><b><u>Show Scores for one Student:</u></b><br>",
        "Every Subject, with the selected Student's scores at each Level. The current Subject "
        "is highlighted in yellow.",
        "<p><b><u>Show Scores for one Subject:</u></b><br>",
        "Every Student, with their scores in the Subject chosen under <b>Current Subject</b>. "
        "The selected Student is highlighted in yellow.",
        "<p>Each Subject (or Student) takes two rows: the upper row is the <b>Last</b> "
        "(most recent) score at each Level, and the lower row, in red, is the <b>High</b> "
        "(Highest) score. The column of the Student's own Level is shown in bold.",
        "<p>To look through a long grid from the keyboard, press <b>[Tab]</b> until the grid "
        "is reached, then use the arrow keys, <b>[Page Up]</b>, <b>[Page Down]</b>, "
        "<b>[Home]</b> and <b>[End]</b>.",
        "<p><b><u>Resetting Scores</u></b><br>",
        "To start again from zero (for example, at the beginning of a new school year), use "
        "one of these buttons; each asks you to confirm first:",
        "<ul><li><b>[Reset This Student's Totals]</b> sets every score of the selected Student "
        "back to zero.",
        "<li><b>[Reset ALL Student Totals]</b> sets every score of every Student back to "
        "zero.</ul>",
        "<p>The Students' names and Levels are kept, and so is their history.",

        "<hr>",
        "<center><u><h3>Backups</h3></u></center>",
        "<p>Tavrino keeps dated copies of the <b>Students</b> and <b>Tests</b> data in the "
        "<b>backups</b> folder inside the <b>data</b> directory: one when the program first "
        "saves each of them, and one just before every reset, every deleted Student, Subject "
        "or question and every revert to the defaults. The newest 30 copies of each are kept, "
        "and the newest of each of the last 30 days on which one was made. The history of "
        "answers is backed up too, just before a Student is deleted and before history that "
        "matches no Student is given or deleted.",
        "<p>Click <b>[Backups\u2026]</b> to see them, newest first, with what each holds. Choose "
        "one and click <b>[Restore]</b> to bring that data back, for example after a reset "
        "by mistake. The data as it is now is kept as a backup first, so a restore can be "
        "undone the same way. Each is restored on its own: restoring the <b>Students</b> data "
        "leaves the history as it is, and restoring the history leaves the Students and Tests "
        "data as they are.",
        PageEnd,
    });
    return page;
}

QString testsHelpPage()
{
    return join({
        PageStart,
        "<center><u><h3>Tests</h3></u></center>",
        "<p>This screen is where you look at and change the tests. Choose a Subject in the "
        "<b>Subject</b> list: for Arithmetic the screen shows the settings of every Level, "
        "for any other Subject it shows all of the Subject's questions.",
        EnterWarning,
        "<p>In the question grid, every question is listed with its Level, its "
        "<b>Right Answer</b> and three <b>Wrong Answers</b>. To edit a question, click its row "
        "on the grid and change the fields below it; every change is stored as you type.",
        "<p><b><u>Add Question:</u></b><br>",
        "Click a question at the Level you want, then click <b>[Add Question]</b> (or press "
        "<b>[Insert]</b> on the grid). An empty question is added at the end of that Level: "
        "type the question, the right answer and the three wrong answers.",
        "<p>A question that a child could not answer fairly is shaded red: one without a "
        "question (Spelling may go without), with an empty answer, or with the same answer "
        "twice. Point at it to see why; the line under the grid counts them. Such a question "
        "is kept as it is until you mend it.",
        "<p><b><u>Delete Question:</u></b><br>",
        "Click the question, then click <b>[Delete Question]</b> (or press <b>[Delete]</b> on "
        "the grid) and confirm. Every Subject must keep at least one question.",
        "<p><b><u>Changing a Level:</u></b><br>",
        "To move a question to another Level, click it and choose the new Level in the "
        "<b>Level</b> list. The question moves to the end of its new Level with all of its "
        "answers.",
        "<p><b><u>Use Adjacent Levels (during Test):</u></b><br>",
        "When this box is checked, a test also asks questions from the Levels just below and "
        "just above the chosen one: a Level 3 test, for example, also uses questions of "
        "Levels 2 and 4. This gives more variety when a Level holds only a few questions.",
        "<p><b>[Revert this Subject to Default]</b> puts back the original questions of a "
        "built-in Subject.",

        "<hr>",
        "<center><u><h3>Subjects</h3></u></center>",
        "<p><b>[Add Subject]</b> adds a new Subject (its name may be up to 20 characters "
        "long), which starts with one empty question at Level K. <b>[Edit Subject]</b> renames "
        "and <b>[Delete Subject]</b> deletes a Subject that you added; the six built-in "
        "Subjects cannot be renamed or deleted.",
        "<p><b>Time (in Seconds)</b> is the length of the Subject's test, from 5 to 999 "
        "seconds; any other number is replaced by 30.",
        "<p><b>[Revert ALL to Default]</b> restores all of the built-in Subjects with their "
        "original questions and settings, and deletes the Subjects you added. The Students' "
        "scores in the built-in Subjects are kept.",

        "<hr>",
        "<center><u><h3>Arithmetic</h3></u></center>",
        "<p>Arithmetic questions are not stored: the program makes them up during the test "
        "from the settings of each Level. Click a Level's row on the grid to change its "
        "settings, and switch each of the four exercises (<b>Addition</b>, "
        "<b>Subtraction</b>, <b>Multiplication</b> and <b>Division</b>) <b>On</b> or "
        "<b>Off</b>. A Level with every exercise switched Off cannot be chosen for a test.",
        "<p><b><u>Selecting a Range of Numbers:</u></b><br>",
        "Under each of the four exercise headings, select the <b>Low</b> and <b>High</b> "
        "numbers to be used. For Addition and Multiplication these are the ranges of the first "
        "and the second number. Subtraction and Division are built backwards, from the "
        "<b>2nd Number</b> and the <b>Result</b>, so that every answer is a whole number and "
        "never below zero. For example, with Addition and Subtraction switched On and every "
        "range from 1 to 3, a test could ask:",
        "<ul><li><b>3 + 1</b><li><b>3 - 2</b><li><b>2 + 2</b><li><b>5 - 3</b></ul>",
        "<p><b><u>Alternate (switch) Positions of Numbers:</u></b><br>",
        "With <b>Yes</b>, the two numbers change places on every second question, so that the "
        "Student practises both ways round. For example, at Level 3 (where it is <b>Yes</b> "
        "from the start) with the Multiplication ranges set to 7 - 7 for Number 1 and 2 - 10 "
        "for Number 2:",
        "<ul><li><b>4 x 7</b><li><b>7 x 9</b><li><b>2 x 7</b><li><b>7 x 5</b></ul>",
        "<p>With <b>No</b>, the first number always stays first.",
        "<p><b><u>Alternate Position of 'Blank box':</u></b><br>",
        "With <b>Yes</b>, the box that the Student fills in moves from question to question: "
        "sometimes it is the second number, sometimes the answer and sometimes the first "
        "number. For example:",
        "<ul><li><b>3 + ___ = 5</b><li><b>4 + 2 = ___</b><li><b>___ + 1 = 7</b></ul>",
        "<p>With <b>No</b>, the Student always types the answer.",
        "<p><b>[Revert this Subject to Default]</b> puts back the original Arithmetic "
        "settings of every Level.",
        PageEnd,
    });
}
