#include "ArithmeticSettings.h"

#include "core/DefaultBank.h"
#include "editor/ArithmeticGridModel.h"
#include "ui/Accessibility.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int HeadingRows = ArithmeticGridModel::HeadingRows;

const char *const OperationNames[OperationCount] = {"Addition", "Subtraction", "Multiplication",
                                                    "Division"};

// Labels of the four lists; subtraction and division are generated backwards
// from the second number and the result.
const char *const ForwardLabels[4] = {"Number 1 - Low", "Number 1 - High", "Number 2 - Low",
                                      "Number 2 - High"};
const char *const BackwardLabels[4] = {"2nd Number - Low", "2nd Number - High", "Result - Low",
                                       "Result - High"};
const char *const ListPrefixes[4] = {"cmbLow1_", "cmbHigh1_", "cmbLow2_", "cmbHigh2_"};
const char *const LabelPrefixes[4] = {"lblLow1_", "lblHigh1_", "lblLow2_", "lblHigh2_"};

constexpr int Division = 3;

QString numbered(const char *prefix, int index)
{
    return QString::fromLatin1(prefix) + QString::number(index);
}

QLabel *newLabel(const QString &name, const QString &text, QWidget *buddy, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setBuddy(buddy);
    return label;
}

QComboBox *newYesNoList(const QString &name, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->setObjectName(name);
    list->addItems({QStringLiteral("Yes"), QStringLiteral("No")});
    return list;
}

// Hidden controls keep their place, so the frame does not jump between levels.
void keepPlaceWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

} // namespace

ArithmeticSettings::ArithmeticSettings(Session &session, QWidget *parent)
    : QGroupBox(parent), m_session(session), m_model(new ArithmeticGridModel(session.bank, this))
{
    setObjectName(QStringLiteral("fraMath"));
    // Only the family is set, so sizes still follow the screen.
    setFont(QFont(QStringLiteral("Arial")));

    // Built from the top down, the order in which Tab visits the controls.
    QTableView *grid = buildGrid();
    QLayout *levelRow = buildLevelRow();
    auto *operations = new QHBoxLayout;
    for (int operation = 0; operation < OperationCount; ++operation) {
        operations->addWidget(buildOperationFrame(operation));
    }
    operations->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(grid, 0, Qt::AlignLeft);
    layout->addSpacing(6);
    layout->addLayout(levelRow);
    layout->addSpacing(6);
    layout->addLayout(operations);
    layout->addStretch();
}

ArithmeticSettings::~ArithmeticSettings() = default;

QTableView *ArithmeticSettings::buildGrid()
{
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("Grid2"));
    m_grid->setAccessibleName(QStringLiteral("Arithmetic levels"));
    // The arrow keys move within the grid; Tab goes on to the level row below it.
    m_grid->setTabKeyNavigation(false);
    m_grid->setModel(m_model);
    shapeArithmeticGrid(*m_grid);

    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ArithmeticSettings::gridRowChanged);
    return m_grid;
}

QLayout *ArithmeticSettings::buildLevelRow()
{
    m_levelList = new QComboBox(this);
    m_levelList->setObjectName(QStringLiteral("cmbLevel2"));
    for (int level = 0; level < LevelCount; ++level) {
        m_levelList->addItem(QString::fromStdString(levelText(level)));
    }
    m_switchNumbersList = newYesNoList(QStringLiteral("cmbSwitchNumbers"), this);
    m_switchBlanksList = newYesNoList(QStringLiteral("cmbSwitchBlanks"), this);
    auto *revert = new QPushButton(QStringLiteral("Revert this Subject to Default"), this);
    revert->setObjectName(QStringLiteral("cmdRevert2"));
    // Enter closes the screen from here too, as from every other button on it.
    revert->setAutoDefault(false);

    connect(m_levelList, &QComboBox::activated, this, &ArithmeticSettings::chooseLevel);
    connect(m_switchNumbersList, &QComboBox::activated, this,
            &ArithmeticSettings::chooseSwitchNumbers);
    connect(m_switchBlanksList, &QComboBox::activated, this,
            &ArithmeticSettings::chooseSwitchBlanks);
    connect(revert, &QPushButton::clicked, this, &ArithmeticSettings::revertToDefaults);

    auto *row = new QHBoxLayout;
    row->addWidget(
        newLabel(QStringLiteral("lblLevel2"), QStringLiteral("Level:"), m_levelList, this));
    row->addWidget(m_levelList);
    row->addSpacing(24);
    row->addWidget(newLabel(QStringLiteral("lblSwitchNumbers"),
                            QStringLiteral("Alternate (switch) Positions of Numbers?"),
                            m_switchNumbersList, this));
    row->addWidget(m_switchNumbersList);
    row->addSpacing(24);
    row->addWidget(newLabel(QStringLiteral("lblSwitchBlanks"),
                            QStringLiteral("Alternate Position of 'Blank box'?"),
                            m_switchBlanksList, this));
    row->addWidget(m_switchBlanksList);
    row->addStretch();
    row->addWidget(revert);
    return row;
}

QGroupBox *ArithmeticSettings::buildOperationFrame(int operation)
{
    OperationControls &controls = m_operations[operation];
    controls.frame = new QGroupBox(QString::fromLatin1(OperationNames[operation]), this);
    controls.frame->setObjectName(numbered("fraMathSub", operation));

    controls.on = new QRadioButton(QStringLiteral("On"), controls.frame);
    controls.on->setObjectName(numbered("optOn", operation));
    controls.off = new QRadioButton(QStringLiteral("Off"), controls.frame);
    controls.off->setObjectName(numbered("optOff", operation));
    keepPlaceWhenHidden(controls.on);
    keepPlaceWhenHidden(controls.off);
    tabToCheckedButton({controls.on, controls.off});
    connect(controls.on, &QRadioButton::toggled, this, [this, operation](bool checked) {
        if (checked) {
            switchOperationOn(operation);
        }
    });
    connect(controls.off, &QRadioButton::toggled, this, [this, operation](bool checked) {
        if (checked) {
            switchOperationOff(operation);
        }
    });

    controls.ranges = new QFrame(controls.frame);
    controls.ranges->setObjectName(numbered("fraMathSub2_", operation));
    keepPlaceWhenHidden(controls.ranges);
    auto *grid = new QGridLayout(controls.ranges);
    grid->setContentsMargins(0, 0, 0, 0);
    const bool backward = operation == 1 || operation == Division;
    const int first = operation == Division ? 1 : 0;
    QStringList numbers;
    for (int n = first; n <= 30; ++n) {
        numbers << QString::number(n);
    }
    for (int list = 0; list < RangeListCount; ++list) {
        auto *box = new QComboBox(controls.ranges);
        box->setObjectName(numbered(ListPrefixes[list], operation));
        box->addItems(numbers);
        box->setMaxVisibleItems(16);
        controls.lists[list] = box;
        const char *text = backward ? BackwardLabels[list] : ForwardLabels[list];
        grid->addWidget(newLabel(numbered(LabelPrefixes[list], operation),
                                 QString::fromLatin1(text), box, controls.ranges),
                        list, 0);
        grid->addWidget(box, list, 1);
        connect(box, &QComboBox::activated, this,
                [this, operation, list] { changeRange(operation, static_cast<RangeList>(list)); });
    }

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(controls.on);
    buttons->addWidget(controls.off);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(controls.frame);
    layout->addLayout(buttons);
    layout->addWidget(controls.ranges);
    layout->addStretch();
    return controls.frame;
}

void ArithmeticSettings::refreshGrid()
{
    m_model->refresh();
}

void ArithmeticSettings::showLevel(int level)
{
    selectRow(level + HeadingRows);
    showSelectedLevel();
}

void ArithmeticSettings::selectRow(int row)
{
    // Moving the row here is followed by an explicit row click; the grid's own
    // signal must not run it a second time.
    const QScopedValueRollback<bool> populating(m_populating, true);
    m_grid->selectionModel()->setCurrentIndex(
        m_model->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ArithmeticSettings::gridRowChanged()
{
    if (!m_populating) {
        showSelectedLevel();
    }
}

void ArithmeticSettings::showSelectedLevel()
{
    const int row = m_grid->currentIndex().row();
    if (row < HeadingRows) {
        return;
    }
    const WaitCursor wait;
    const int level = row - HeadingRows;
    {
        const QScopedValueRollback<bool> populating(m_populating, true);
        // Addition cannot be switched on or off at level K.
        m_operations[0].on->setVisible(level != 0);
        m_operations[0].off->setVisible(level != 0);

        m_levelList->setCurrentIndex(level);
        m_level = m_levelList->currentIndex();
        m_switchNumbersList->setCurrentText(
            m_model->index(row, ArithmeticGridModel::SwitchNumbersColumn).data().toString());
        m_switchBlanksList->setCurrentText(
            m_model->index(row, ArithmeticGridModel::SwitchBlanksColumn).data().toString());

        const std::string &ops = m_session.bank.arithOps[level];
        for (int operation = 0; operation < OperationCount; ++operation) {
            OperationControls &controls = m_operations[operation];
            if (ops.find(OpSymbols[operation]) != std::string::npos) {
                controls.on->setChecked(true);
                showRanges(operation);
            } else {
                controls.off->setChecked(true);
                controls.ranges->hide();
            }
        }
    }
    m_session.records.currentLevel = level;
    refreshGrid();
}

void ArithmeticSettings::chooseLevel()
{
    if (m_populating) {
        return;
    }
    // The chosen level's settings are shown at once, as a click on its row does.
    showLevel(m_levelList->currentIndex());
}

void ArithmeticSettings::showRanges(int operation)
{
    const QScopedValueRollback<bool> populating(m_populating, true);
    OperationControls &controls = m_operations[operation];
    controls.ranges->show();
    for (int list = 0; list < RangeListCount; ++list) {
        showNumber(controls.lists[list],
                   rangeTable(static_cast<RangeList>(list))[m_level][operation]);
    }
}

void ArithmeticSettings::showNumber(QComboBox *list, int value)
{
    // A value the list does not offer (from an edited file) shows as blank.
    list->setCurrentIndex(list->findText(QString::number(value)));
}

RangeTable &ArithmeticSettings::rangeTable(RangeList list)
{
    TestBank &bank = m_session.bank;
    switch (list) {
    case Low1:
        return bank.arithLow1;
    case High1:
        return bank.arithHigh1;
    case Low2:
        return bank.arithLow2;
    default:
        return bank.arithHigh2;
    }
}

void ArithmeticSettings::changeRange(int operation, RangeList list)
{
    if (m_populating) {
        return;
    }
    const OperationControls &controls = m_operations[operation];
    const bool highChanged = list == High1 || list == High2;
    const RangeList lowList = list == Low1 || list == High1 ? Low1 : Low2;
    const int low = controls.lists[lowList]->currentText().toInt();
    const int high = controls.lists[lowList + 1]->currentText().toInt();

    if (high >= low) {
        const WaitCursor wait;
        rangeTable(list)[m_level][operation] = highChanged ? high : low;
        refreshGrid();
        return;
    }

    m_session.prompt.stop(this, QStringLiteral("Invalid Number"),
                          QStringLiteral("The Low number cannot be greater than the High number.") +
                              QLatin1Char('\r') +
                              (highChanged
                                   ? QStringLiteral("(You might have to change the Low number "
                                                    "first.)")
                                   : QStringLiteral("(You might have to change the High number "
                                                    "first.)")));
    // The Low list starts again from the bottom. Division offers no 0, so its
    // Low list goes back to the low that is still stored.
    const QScopedValueRollback<bool> populating(m_populating, true);
    QComboBox *lowBox = controls.lists[lowList];
    const int zero = lowBox->findText(QStringLiteral("0"));
    if (zero >= 0) {
        lowBox->setCurrentIndex(zero);
    } else {
        showNumber(lowBox, rangeTable(lowList)[m_level][operation]);
    }
}

void ArithmeticSettings::switchOperationOn(int operation)
{
    if (m_populating) {
        return;
    }
    const WaitCursor wait;
    m_session.bank.arithOps[m_level] += OpSymbols[operation];
    showRanges(operation);
    refreshGrid();
}

void ArithmeticSettings::switchOperationOff(int operation)
{
    if (m_populating) {
        return;
    }
    const WaitCursor wait;
    // Only the first occurrence goes; a text without the symbol stays as it is.
    std::string &ops = m_session.bank.arithOps[m_level];
    const std::size_t position = ops.find(OpSymbols[operation]);
    if (position != std::string::npos) {
        ops.erase(position, 1);
    }
    m_operations[operation].ranges->hide();
    refreshGrid();
}

void ArithmeticSettings::chooseSwitchNumbers()
{
    if (m_populating) {
        return;
    }
    const WaitCursor wait;
    m_session.bank.arithSwitch[m_session.records.currentLevel][SwitchNumbers] =
        m_switchNumbersList->currentText() == QLatin1String("Yes");
    refreshGrid();
}

void ArithmeticSettings::chooseSwitchBlanks()
{
    if (m_populating) {
        return;
    }
    const WaitCursor wait;
    m_session.bank.arithSwitch[m_session.records.currentLevel][SwitchBlanks] =
        m_switchBlanksList->currentText() == QLatin1String("Yes");
    refreshGrid();
}

void ArithmeticSettings::revertToDefaults()
{
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm: Revert to Original, Default Subject"),
            QStringLiteral("Are you sure you want to Revert to the Original, Default Subject?"))) {
        return;
    }
    const int row = m_grid->currentIndex().row();
    const WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Tests}, this);
    defaultArithmetic(m_session.bank);
    refreshGrid();
    selectRow(row);
    // The frame shows the restored values itself; the screen then refreshes the
    // rest of the subject (its test length was reset as well).
    showSelectedLevel();
    emit reverted();
}
