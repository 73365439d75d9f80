// The results side of the Students screen: the grid of Last and High scores,
// the choice between one student's and one subject's scores, and the resets.
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QRadioButton;
class ResultsModel;
class ResultsView;
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
    // Scrolls the current item's Last row to the top only when the grid does not
    // show both of its rows.
    void keepCurrentRowInView();

    // The grid shows nine items (eighteen rows) unless the screen is too small
    // for them; then fewer, but never fewer than MinItemsInView.
    static constexpr int ItemsInView = 9;
    static constexpr int MinItemsInView = 3;
    void setItemsInView(int items);
    // The height one item's two rows take.
    int itemHeight() const;

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
    // The name column takes the longest name, within a limit beyond which names
    // are cut in the middle; the grid's width follows.
    void fitNameColumn();
    int gridWidth(int nameColumnWidth) const;

    Session &m_session;
    ResultsModel *m_model = nullptr;
    int m_student = -1;

    QLabel *m_heading = nullptr;
    QRadioButton *m_byStudentButton = nullptr;
    QRadioButton *m_bySubjectButton = nullptr;
    ResultsView *m_grid = nullptr;
    QPushButton *m_resetStudentButton = nullptr;
    QPushButton *m_resetAllButton = nullptr;
};
