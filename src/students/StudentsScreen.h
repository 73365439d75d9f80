// The Students screen: choose the current student, keep the roster, see
// everyone's results, and take them away as a printed report or a CSV file.
#pragma once

#include "reports/ReportPreview.h"

#include <QDialog>

#include <functional>

class BackupsDialog;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QScrollArea;
class AddClassDialog;
class LevelButtons;
class ResultsPanel;
struct ClassReport;
struct Session;

class StudentsScreen : public QDialog {
    Q_OBJECT
public:
    explicit StudentsScreen(Session &session, QWidget *parent = nullptr);
    ~StudentsScreen() override;

    // Loads the roster (or starts the first one) and fills the screen. False
    // when the Students file could not be read; the user has been told why.
    bool loadRoster();
    // Sizes the screen to its content within this much room on the display
    // (loading the roster fits it to the display it is on), and centres it.
    void fitInto(const QSize &room);

    // Opens the Students help page; tests replace it so that nothing blocks.
    using HelpOpener = std::function<void(QWidget *parent)>;
    void setHelpOpener(HelpOpener openHelp);
    // Shows the class report; tests replace the print preview so that nothing blocks.
    void setReportPreviewer(ReportPreviewer previewer);
    // Runs the Add Class dialog in place of showing it; true for Add. Tests set
    // it to fill the dialog in and answer without blocking.
    using AddClassRunner = std::function<bool(AddClassDialog &dialog)>;
    void setAddClassRunner(AddClassRunner runAddClass);
    // Shows the Backups dialog; the default runs it modally, tests drive it instead.
    using BackupsShower = std::function<void(BackupsDialog &dialog)>;
    void setBackupsShower(BackupsShower showBackups);

    // What the user does on the screen; public so that tests can drive it.
    // Shows the student selected in the list: name, level and results.
    void selectStudent();
    // The Delete key on the list deletes the selected student.
    void onStudentListKey(Qt::Key key);
    // The name box was edited: the selected student takes the new name.
    void renameStudent();
    void addStudent();
    // Adds the students of a pasted or read class list at the end of the roster.
    void addClass();
    // Asks first; the last student is never deleted.
    void deleteStudent();
    void chooseLevel(int level);
    void chooseSubject();
    void showHelp();
    // The class report of the roster as it stands, in a print preview; one of
    // more than MaxPreviewPages pages is offered as a PDF file instead.
    void showReport();
    static constexpr int MaxPreviewPages = 100;
    // Asks for a file and writes every student's results to it as CSV.
    void exportResults();
    // The Backups dialog; a restored file shows on the screen at once.
    void openBackups();
    void closeScreen();
    // The close step, run on every way of closing: the selected student becomes
    // the current one and the roster is saved.
    void saveOnClose();
    // Enables the levels that can give questions in the current subject.
    void enableLevelButtons();

    // Every way of closing the dialog (Close, Enter, Esc, the window's close
    // button) passes through here.
    void done(int result) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildRoster(QWidget *parent);
    QWidget *buildStudentDetails(QWidget *parent);
    QWidget *buildFooter(QWidget *parent);

    void fillControls();
    void askFirstName();
    void selectCurrentSubject();
    void saveLongReport(const ClassReport &report, int pages);
    int selectedStudent() const;

    Session &m_session;
    HelpOpener m_openHelp;
    ReportPreviewer m_previewReport = previewClassReport;
    AddClassRunner m_runAddClass;
    BackupsShower m_showBackups;
    bool m_busy = false;   // the screen is filling its own controls
    bool m_loaded = false; // the roster was read, so closing may save it

    QScrollArea *m_scrollArea = nullptr;
    QListWidget *m_studentList = nullptr;
    QLineEdit *m_nameBox = nullptr;
    LevelButtons *m_levels = nullptr;
    QComboBox *m_subjectList = nullptr;
    QPushButton *m_addButton = nullptr;
    QPushButton *m_addClassButton = nullptr;
    QPushButton *m_deleteButton = nullptr;
    QPushButton *m_reportButton = nullptr;
    QPushButton *m_exportButton = nullptr;
    QPushButton *m_backupsButton = nullptr;
    QPushButton *m_helpButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    ResultsPanel *m_results = nullptr;
};
