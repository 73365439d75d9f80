// The Tests screen: the adult's editor of the test bank. It holds the subject
// list, the test length and the revert-all and close commands, and shows the
// Arithmetic settings or the question frame for the chosen subject.
#pragma once

#include <QDialog>

#include <functional>

struct Session;
class ArithmeticSettings;
class QuestionEditor;
class QComboBox;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QStackedLayout;

class TestsScreen : public QDialog {
    Q_OBJECT
public:
    // Builds and fills the screen for the subject last chosen on the main screen.
    explicit TestsScreen(Session &session, QWidget *parent = nullptr);
    ~TestsScreen() override;

    // How the help page is shown; tests replace the modal help screen.
    using HelpOpener = std::function<void(QWidget *parent)>;
    void setHelpOpener(HelpOpener opener);

    // Sizes the screen to its content within this much room on the display (the
    // screen fits itself to its display as it opens), and centres it.
    void fitInto(const QSize &room);

    void fillSubjectList();
    // Keeps the current subject in range, writes the Tests file and, when that
    // worked, the Students file, and refills the list.
    void saveAndRefill();

    // What the user does on the screen; public so that tests can drive it.
    // Shows the chosen subject: the Arithmetic settings or its questions.
    void chooseSubject();
    // Adding, renaming and deleting ask for a name or a confirmation first; only
    // subjects the user added can be renamed or deleted.
    void addSubject();
    void renameSubject();
    void deleteSubject();
    // The typed test length, or the default when it is no number of 5..999 seconds.
    void storeTestLength();
    // Asks first, then restores the built-in bank, dropping every added subject.
    void revertAll();
    void showHelp();
    void closeScreen();
    // Runs on every way of closing: stores a typed test length and writes the Tests file.
    void saveOnClose();

    // Every close (the Close button, the close box, Esc) ends here.
    void done(int result) override;

private:
    void buildScreen();
    QLayout *buildSubjectBar();
    QLayout *buildFrames();
    QLayout *buildCommandBar();

    Session &m_session;
    HelpOpener m_helpOpener;
    QScrollArea *m_scrollArea = nullptr;
    QComboBox *m_subjectList = nullptr;
    QLineEdit *m_secondsBox = nullptr;
    QPushButton *m_addSubjectButton = nullptr;
    QPushButton *m_renameSubjectButton = nullptr;
    QPushButton *m_deleteSubjectButton = nullptr;
    QPushButton *m_revertAllButton = nullptr;
    QPushButton *m_helpButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QStackedLayout *m_frames = nullptr;
    ArithmeticSettings *m_arithmeticSettings = nullptr;
    QuestionEditor *m_questionEditor = nullptr;
    bool m_populating = false;
};
