// The results side of the Students screen: the grid of Last and High scores,
// the choice between one student's and one subject's scores, and the resets.
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QRadioButton;
class QTableView;
class ResultsModel;
struct Session;

class ResultsPanel : public QWidget {
    Q_OBJECT
public:
    explicit ResultsPanel(Session &session, QWidget *parent = nullptr);

    // Checks the mode button that matches the stored mode, as the screen loads.
    void selectMode(bool byStudent);

    // Rebuilds the grid for the selected student (list index) and the current
    // subject, highlights the current item and scrolls it into view.
    void fill(int student);
    // The student's name was edited: the heading and the grid show the new name.
    void studentRenamed(int student);

    // Column widths, row heights and the fixed header row of a freshly reset grid.
    void shapeGrid();
    // Scrolls the current row to the top only when it lies outside the rows
    // that follow the top row.
    void keepCurrentRowInView();

    // The two mode buttons: one student's scores in every subject, or every
    // student's scores in the current subject.
    void showByStudent();
    void showBySubject();
    // Both ask first, then set Last and High to 0.
    void resetStudentTotals();
    void resetAllTotals();

signals:
    // The scores or the mode changed: the screen reruns its selecting step.
    void refreshRequested();

private:
    QWidget *buildHeading();
    void buildGrid();
    QWidget *buildResetButtons();
    void showHeading();
    // The first row in view below the header.
    int topRow() const;

    Session &m_session;
    ResultsModel *m_model = nullptr;
    int m_student = -1;

    QLabel *m_heading = nullptr;
    QRadioButton *m_byStudentButton = nullptr;
    QRadioButton *m_bySubjectButton = nullptr;
    QTableView *m_grid = nullptr;
    QPushButton *m_resetStudentButton = nullptr;
    QPushButton *m_resetAllButton = nullptr;
};
