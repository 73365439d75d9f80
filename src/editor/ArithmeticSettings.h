// The Arithmetic settings frame of the Tests screen: per level, which
// operations are asked, the ranges of their numbers and the two switches.
#pragma once

#include "core/TestBank.h"

#include <QGroupBox>

#include <array>

struct Session;
class ArithmeticGridModel;
class QComboBox;
class QFrame;
class QLayout;
class QRadioButton;
class QTableView;

class ArithmeticSettings : public QGroupBox {
    Q_OBJECT
public:
    explicit ArithmeticSettings(Session &session, QWidget *parent = nullptr);
    ~ArithmeticSettings() override;

    // Refills the levels grid from the bank.
    void PopulateGrid2();
    // Makes the level's row current and shows its settings, as a click on the row does.
    void showLevel(int level);

    // Shows the range lists of an operation with the edited level's values.
    void DisplaySubFrame(int operation);

    // What the user's actions run; public so that tests can drive them.
    void Grid2_Click();
    void cmbLevel2_Click();
    void cmbLow1_Click(int operation);
    void cmbHigh1_Click(int operation);
    void cmbLow2_Click(int operation);
    void cmbHigh2_Click(int operation);
    void optOn_Click(int operation);
    void optOff_Click(int operation);
    void cmbSwitchNumbers_Click();
    void cmbSwitchBlanks_Click();
    void cmdRevert2_Click();

signals:
    // The Arithmetic defaults were restored; the screen shows the subject anew.
    void reverted();

private:
    // The four range lists of an operation, in the order of the grid's columns.
    enum RangeList { Low1, High1, Low2, High2, RangeListCount };

    struct OperationControls {
        QGroupBox *frame = nullptr;
        QRadioButton *on = nullptr;
        QRadioButton *off = nullptr;
        QFrame *ranges = nullptr;
        std::array<QComboBox *, RangeListCount> lists{};
    };

    QTableView *buildGrid();
    QLayout *buildLevelRow();
    QGroupBox *buildOperationFrame(int operation);

    void selectRow(int row);
    void gridRowChanged();
    void changeRange(int operation, RangeList list);
    RangeTable &rangeTable(RangeList list);
    void showNumber(QComboBox *list, int value);

    Session &m_session;
    ArithmeticGridModel *m_model;
    QTableView *m_grid = nullptr;
    QComboBox *m_cmbLevel2 = nullptr;
    QComboBox *m_cmbSwitchNumbers = nullptr;
    QComboBox *m_cmbSwitchBlanks = nullptr;
    std::array<OperationControls, OperationCount> m_operations;
    // True while the frame fills its own controls, so their handlers stay quiet.
    bool m_populating = false;
    // The level the range lists and On/Off buttons change.
    int m_level = 0;
};
