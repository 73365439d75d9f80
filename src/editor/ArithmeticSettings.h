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
    void refreshGrid();
    // Makes the level's row current and shows its settings, as a click on the row does.
    void showLevel(int level);

    // Shows the range lists of an operation with the edited level's values.
    void showRanges(int operation);

    // What the user does in the frame; public so that tests can drive it.
    // Shows the settings of the level on the grid's current row.
    void showSelectedLevel();
    // The level list was used: its level is shown as a click on its row does.
    void chooseLevel();
    // The operation is asked at the edited level, or no longer.
    void switchOperationOn(int operation);
    void switchOperationOff(int operation);
    void chooseSwitchNumbers();
    void chooseSwitchBlanks();
    // Asks first, then restores the built-in Arithmetic settings.
    void revertToDefaults();

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
    QComboBox *m_levelList = nullptr;
    QComboBox *m_switchNumbersList = nullptr;
    QComboBox *m_switchBlanksList = nullptr;
    std::array<OperationControls, OperationCount> m_operations;
    // True while the frame fills its own controls, so their handlers stay quiet.
    bool m_populating = false;
    // The level the range lists and On/Off buttons change.
    int m_level = 0;
};
