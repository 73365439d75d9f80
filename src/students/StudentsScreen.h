// The Students screen: choose the current student, keep the roster, and see
// everyone's results.
#pragma once

#include <QDialog>

#include <functional>

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class LevelButtons;
class ResultsPanel;
struct Session;

class StudentsScreen : public QDialog {
    Q_OBJECT
public:
    explicit StudentsScreen(Session &session, QWidget *parent = nullptr);
    ~StudentsScreen() override;

    // Loads the roster (or starts the first one) and fills the screen. False
    // when the Students file could not be read; the user has been told why.
    bool Form_Load();

    // Opens the Students help page; tests replace it so that nothing blocks.
    using HelpOpener = std::function<void(QWidget *parent)>;
    void setHelpOpener(HelpOpener openHelp);

    // Handlers, named after the control and the event.
    void List1_Click();
    void List1_KeyDown(int key);
    void txtStudent_Change();
    void cmdAddStudent_Click();
    void cmdDelete_Click();
    void optLevel_Click(int level);
    void cmbSubject_Click();
    void cmdHelp_Click();
    void cmdClose_Click();
    // The close step, run on every way of closing: the selected student becomes
    // the current one and the roster is saved.
    void Form_QueryUnload();
    // Enables the levels that can give questions in the current subject.
    void EnableLevelButtons();

    // Every way of closing the dialog (Close, Enter, Esc, the window's close
    // button) passes through here.
    void done(int result) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildRoster();
    QWidget *buildStudentDetails();
    QWidget *buildFooter();
    void centreOnScreen();
    void fillControls();
    void askFirstName();
    void selectCurrentSubject();
    int selectedStudent() const;

    Session &m_session;
    HelpOpener m_openHelp;
    bool m_busy = false;   // the screen is filling its own controls
    bool m_loaded = false; // the roster was read, so closing may save it

    QListWidget *m_List1 = nullptr;
    QLineEdit *m_txtStudent = nullptr;
    LevelButtons *m_levels = nullptr;
    QComboBox *m_cmbSubject = nullptr;
    QPushButton *m_cmdAddStudent = nullptr;
    QPushButton *m_cmdDelete = nullptr;
    QPushButton *m_cmdHelp = nullptr;
    QPushButton *m_cmdClose = nullptr;
    ResultsPanel *m_results = nullptr;
};
