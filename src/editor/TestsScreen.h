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

    void PopulateSubjectList();
    // Keeps the current subject in range, writes both files and refills the list.
    void DoSaveAndPopulate();

    void cmbSubject_Click();
    void cmdAddSubject_Click();
    void cmdEditSubject_Click();
    void cmdDeleteSubject_Click();
    void txtDuration_LostFocus();
    void cmdRevertAll_Click();
    void cmdHelp_Click();
    void cmdClose_Click();
    // Runs on every way of closing: stores a typed test length and writes the Tests file.
    void Form_QueryUnload();

    // Every close (the Close button, the close box, Esc) ends here.
    void done(int result) override;

private:
    void Form_Load();
    QLayout *buildSubjectBar();
    QLayout *buildFrames();
    QLayout *buildCommandBar();
    void centreOnScreen();

    Session &m_session;
    HelpOpener m_helpOpener;
    QComboBox *m_cmbSubject = nullptr;
    QLineEdit *m_txtDuration = nullptr;
    QPushButton *m_cmdAddSubject = nullptr;
    QPushButton *m_cmdEditSubject = nullptr;
    QPushButton *m_cmdDeleteSubject = nullptr;
    QPushButton *m_cmdRevertAll = nullptr;
    QPushButton *m_cmdHelp = nullptr;
    QPushButton *m_cmdClose = nullptr;
    QStackedLayout *m_frames = nullptr;
    ArithmeticSettings *m_fraMath = nullptr;
    QuestionEditor *m_fraMulti = nullptr;
    bool m_populating = false;
};
