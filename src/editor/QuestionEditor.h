// The question frame of the Tests screen: every stored question of a
// multiple-choice subject in one grid, edited in place, added, deleted, moved
// between levels, and a built-in subject's questions restored.
#pragma once

#include <QGroupBox>

#include <array>

struct Session;
class QuestionGridModel;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

class QuestionEditor : public QGroupBox {
    Q_OBJECT
public:
    explicit QuestionEditor(Session &session, QWidget *parent = nullptr);
    ~QuestionEditor() override;

    // Shows the current subject: its questions with the first one selected and
    // scrolled into view, and its adjacent-levels flag.
    void showSubject();
    // Only the built-in subjects have defaults to go back to.
    void setRevertVisible(bool visible);

    void PopulateGrid();
    // Removes the selected question from its level; the grid is not refilled.
    void DoDeleteQuestion();
    // Makes the row current and shows it in the edit boxes.
    void selectRow(int row);
    // Puts the current row at the top when it has left the visible part.
    void keepInView();

    void Grid1_Click();
    void txt_Change(int index);
    void cmbLevel_Click();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void chkAdjacentLevels_Click();
    void cmdRevert_Click();

signals:
    // A built-in subject's defaults were restored; the screen shows the subject anew.
    void reverted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildGrid();
    QWidget *buildFields();
    QWidget *buildButtons();
    int currentRow() const;

    Session &m_session;
    QuestionGridModel *m_model = nullptr;
    QTableView *m_grid = nullptr;
    QComboBox *m_cmbLevel = nullptr;
    std::array<QLineEdit *, 5> m_txt{}; // txt1..txt5: the question's five texts
    QCheckBox *m_chkAdjacentLevels = nullptr;
    QPushButton *m_cmdAdd = nullptr;
    QPushButton *m_cmdDelete = nullptr;
    QPushButton *m_cmdRevert = nullptr;
    int m_editedLevel = 0;
    bool m_populating = false;
};
