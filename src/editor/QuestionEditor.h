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
class QFont;
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

    void fillGrid();
    // Removes the selected question from its level; the grid is not refilled.
    void removeSelectedQuestion();
    // Makes the row current and shows it in the edit boxes.
    void selectRow(int row);
    // Puts the current row at the top when it has left the visible part.
    void keepInView();

    // What the user does in the frame; public so that tests can drive it.
    // Shows the question on the grid's current row in the edit boxes.
    void chooseQuestion();
    // Edit box 1..5 changed: the question's text, answer or a wrong answer.
    void editQuestionField(int field);
    // The level list changed: the question moves to the end of that level.
    void moveQuestionToLevel();
    // An empty question at the end of the edited level.
    void addQuestion();
    // Asks first; a subject's last question is never deleted.
    void deleteQuestion();
    void storeAdjacentLevels();
    // Asks first, then restores a built-in subject's questions.
    void revertToDefaults();
    // The line under the grid that counts the questions a child could not
    // answer fairly; hidden when there are none.
    void showProblemCount();

signals:
    // A built-in subject's defaults were restored; the screen shows the subject anew.
    void reverted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *buildGrid();
    void buildProblemLine(const QFont &font);
    QWidget *buildFields();
    QWidget *buildButtons();
    int currentRow() const;
    // An empty question at the end of the edited level, selected.
    void appendQuestion();

    Session &m_session;
    QuestionGridModel *m_model = nullptr;
    QTableView *m_grid = nullptr;
    QLabel *m_problemLine = nullptr;
    QComboBox *m_levelList = nullptr;
    std::array<QLineEdit *, 5> m_fieldBoxes{}; // the question's five texts
    QCheckBox *m_adjacentLevelsBox = nullptr;
    QPushButton *m_addButton = nullptr;
    QPushButton *m_deleteButton = nullptr;
    QPushButton *m_revertButton = nullptr;
    int m_editedLevel = 0;
    bool m_populating = false;
};
