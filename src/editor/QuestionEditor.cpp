#include "QuestionEditor.h"

#include "QuestionGridModel.h"
#include "core/DefaultBank.h"
#include "ui/FileText.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Rows below the top row that still count as in view before the grid scrolls.
constexpr int RowsBelowTop = 19;

constexpr std::array<const char *, 5> FieldLabels = {
    "Question:", "Answer:", "Wrong Answer #1:", "Wrong Answer #2:", "Wrong Answer #3:",
};

// Grid column widths in characters of the grid's font: level, question, four answers.
constexpr std::array<int, QuestionGridModel::ColumnCount> ColumnChars = {6, 40, 17, 17, 17, 17};

using RebuildSubject = void (*)(TestBank &);

// The routine that rebuilds a built-in multiple-choice subject, or none.
RebuildSubject defaultsOf(int subject)
{
    switch (subject) {
    case 1:
        return defaultSpelling;
    case 2:
        return defaultGeography;
    case 3:
        return defaultHistory;
    case 4:
        return defaultMusic;
    case 5:
        return defaultScience;
    default:
        return nullptr;
    }
}

} // namespace

QuestionEditor::QuestionEditor(Session &session, QWidget *parent)
    : QGroupBox(parent), m_session(session)
{
    setObjectName(QStringLiteral("fraMulti"));

    auto *hint = new QLabel(
        QStringLiteral(
            "TO EDIT A TEST: Click a Row on the Grid (above), and Edit the Fields (below)"),
        this);
    hint->setObjectName(QStringLiteral("lblHint"));
    hint->setAlignment(Qt::AlignCenter);
    QFont bold = hint->font();
    bold.setBold(true);
    hint->setFont(bold);

    // The grid is built first, so that Tab visits it before the fields below it.
    QWidget *grid = buildGrid();
    buildProblemLine(bold);
    auto *editing = new QHBoxLayout;
    editing->addWidget(buildFields(), 1);
    editing->addSpacing(12);
    editing->addWidget(buildButtons());

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(grid, 1);
    layout->addWidget(m_problemLine);
    layout->addWidget(hint);
    layout->addLayout(editing);
}

QuestionEditor::~QuestionEditor() = default;

QWidget *QuestionEditor::buildGrid()
{
    m_model = new QuestionGridModel(m_session.bank, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("Grid1"));
    m_grid->setAccessibleName(QStringLiteral("Questions"));
    // The arrow keys move within the grid; Tab goes on to the fields below it.
    m_grid->setTabKeyNavigation(false);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setWordWrap(false);
    m_grid->setAlternatingRowColors(true);
    m_grid->verticalHeader()->hide();
    // Fixed row heights keep a subject of thousands of questions instant.
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    QHeaderView *columns = m_grid->horizontalHeader();
    columns->setHighlightSections(false);
    const int charWidth = m_grid->fontMetrics().averageCharWidth();
    for (int column = 0; column < QuestionGridModel::ColumnCount; ++column)
        columns->resizeSection(column, ColumnChars[column] * charWidth);
    columns->setSectionResizeMode(1, QHeaderView::Stretch);
    int width = 0;
    for (const int chars : ColumnChars)
        width += chars * charWidth;
    m_grid->setMinimumSize(width + 24, 12 * m_grid->verticalHeader()->defaultSectionSize());
    m_grid->installEventFilter(this);

    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &QuestionEditor::chooseQuestion);
    return m_grid;
}

void QuestionEditor::buildProblemLine(const QFont &font)
{
    m_problemLine = new QLabel(this);
    m_problemLine->setObjectName(QStringLiteral("lblQuestionProblems"));
    m_problemLine->setWordWrap(true);
    m_problemLine->setTextFormat(Qt::PlainText);
    m_problemLine->setFont(font);
    QPalette warning = m_problemLine->palette();
    warning.setColor(QPalette::WindowText, QColor(160, 0, 0));
    m_problemLine->setPalette(warning);
    m_problemLine->hide();
    connect(m_model, &QuestionGridModel::problemsChanged, this, &QuestionEditor::showProblemCount);
}

QWidget *QuestionEditor::buildFields()
{
    auto *fields = new QWidget(this);
    auto *layout = new QGridLayout(fields);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(1, 1);

    auto *levelLabel = new QLabel(QStringLiteral("Level:"), fields);
    levelLabel->setObjectName(QStringLiteral("lblLevel"));
    m_levelList = new QComboBox(fields);
    m_levelList->setObjectName(QStringLiteral("cmbLevel"));
    for (int level = 0; level < LevelCount; ++level)
        m_levelList->addItem(QString::fromStdString(levelText(level)));
    levelLabel->setBuddy(m_levelList);
    layout->addWidget(levelLabel, 0, 0, Qt::AlignRight);
    layout->addWidget(m_levelList, 0, 1, Qt::AlignLeft);
    connect(m_levelList, &QComboBox::currentIndexChanged, this,
            &QuestionEditor::moveQuestionToLevel);

    for (int i = 0; i < 5; ++i) {
        auto *label = new QLabel(QString::fromLatin1(FieldLabels[i]), fields);
        label->setObjectName(QStringLiteral("lblField%1").arg(i + 1));
        QLineEdit *box = new QLineEdit(fields);
        m_fieldBoxes[i] = box;
        box->setObjectName(QStringLiteral("txt%1").arg(i + 1));
        box->setMaxLength(FileTextMaxLength);
        box->setValidator(new FileTextValidator(box));
        label->setBuddy(box);
        layout->addWidget(label, i + 1, 0, Qt::AlignRight);
        layout->addWidget(box, i + 1, 1);
        connect(box, &QLineEdit::textChanged, this, [this, i] { editQuestionField(i + 1); });
    }
    return fields;
}

QWidget *QuestionEditor::buildButtons()
{
    auto *buttons = new QWidget(this);
    auto *layout = new QVBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);

    m_addButton = new QPushButton(QStringLiteral("Add Question"), buttons);
    m_addButton->setObjectName(QStringLiteral("cmdAdd"));
    m_deleteButton = new QPushButton(QStringLiteral("Delete Question"), buttons);
    m_deleteButton->setObjectName(QStringLiteral("cmdDelete"));
    m_adjacentLevelsBox =
        new QCheckBox(QStringLiteral("Use Adjacent Levels (during Test)"), buttons);
    m_adjacentLevelsBox->setObjectName(QStringLiteral("chkAdjacentLevels"));
    m_revertButton = new QPushButton(QStringLiteral("Revert this Subject to Default"), buttons);
    m_revertButton->setObjectName(QStringLiteral("cmdRevert"));
    for (QPushButton *button : {m_addButton, m_deleteButton, m_revertButton})
        button->setAutoDefault(false);

    layout->addWidget(m_addButton);
    layout->addWidget(m_deleteButton);
    layout->addSpacing(8);
    layout->addWidget(m_adjacentLevelsBox);
    layout->addStretch(1);
    layout->addWidget(m_revertButton);

    connect(m_addButton, &QPushButton::clicked, this, &QuestionEditor::addQuestion);
    connect(m_deleteButton, &QPushButton::clicked, this, &QuestionEditor::deleteQuestion);
    connect(m_adjacentLevelsBox, &QCheckBox::toggled, this, &QuestionEditor::storeAdjacentLevels);
    connect(m_revertButton, &QPushButton::clicked, this, &QuestionEditor::revertToDefaults);
    return buttons;
}

int QuestionEditor::currentRow() const
{
    return m_grid->currentIndex().row();
}

void QuestionEditor::showSubject()
{
    fillGrid();
    selectRow(0);
    keepInView();
    m_populating = true;
    const int subject = m_session.records.currentSubject;
    m_adjacentLevelsBox->setChecked(m_session.bank.subjects.at(subject).adjacentLevels);
    m_populating = false;
}

void QuestionEditor::setRevertVisible(bool visible)
{
    m_revertButton->setVisible(visible);
}

void QuestionEditor::fillGrid()
{
    m_model->populate(m_session.records.currentSubject);
}

void QuestionEditor::removeSelectedQuestion()
{
    const int row = currentRow();
    if (row < 0)
        return;
    const int level = m_model->levelOf(row);
    const int slot = m_model->slotOf(row);
    LevelSlots &items = m_session.bank.questionBank[m_model->subject()].items()[level];
    int32_t &last = m_session.bank.limits[m_model->subject()].lastQuestion[level];
    for (int j = slot; j < last; ++j)
        items[j] = std::move(items[j + 1]);
    // The freed slot is outside the level's questions; emptying it keeps deleted
    // text out of the file.
    items[last] = Question{};
    --last;
}

void QuestionEditor::selectRow(int row)
{
    if (row < 0 || row >= m_model->rowCount()) {
        m_grid->setCurrentIndex(QModelIndex());
        chooseQuestion();
        return;
    }
    const QModelIndex cell = m_model->index(row, 0);
    if (m_grid->currentIndex() == cell) {
        chooseQuestion();
        return;
    }
    // The keep-in-view step decides the scrolling, not the view's own minimal scroll.
    const bool autoScroll = m_grid->hasAutoScroll();
    m_grid->setAutoScroll(false);
    m_grid->setCurrentIndex(cell);
    m_grid->setAutoScroll(autoScroll);
}

void QuestionEditor::keepInView()
{
    const int row = currentRow();
    if (row < 0)
        return;
    const int top = m_grid->rowAt(0);
    // A grid shorter than twenty rows may hide the current row sooner.
    const bool belowView =
        m_grid->rowViewportPosition(row) + m_grid->rowHeight(row) > m_grid->viewport()->height();
    if (row - RowsBelowTop > top || row < top || belowView)
        m_grid->scrollTo(m_model->index(row, 0), QAbstractItemView::PositionAtTop);
}

void QuestionEditor::chooseQuestion()
{
    if (m_populating)
        return;
    m_populating = true;
    const int row = currentRow();
    if (row >= 0) {
        m_levelList->setCurrentIndex(m_model->levelOf(row));
        m_editedLevel = m_levelList->currentIndex();
    }
    for (int i = 0; i < 5; ++i) {
        m_fieldBoxes[i]->setText(row >= 0 ? m_model->data(m_model->index(row, i + 1)).toString()
                                          : QString());
        m_fieldBoxes[i]->setEnabled(row >= 0);
    }
    m_populating = false;
}

void QuestionEditor::editQuestionField(int field)
{
    if (m_populating)
        return;
    const int row = currentRow();
    if (row < 0)
        return;
    Question &question = m_session.bank.questionBank[m_model->subject()]
                             .items()[m_model->levelOf(row)][m_model->slotOf(row)];
    questionField(question, field) = m_fieldBoxes[field - 1]->text().toStdString();
    m_model->fieldChanged(row, field);
}

void QuestionEditor::moveQuestionToLevel()
{
    if (m_populating)
        return;
    WaitCursor wait;
    std::array<QString, 5> texts;
    for (int i = 0; i < 5; ++i)
        texts[i] = m_fieldBoxes[i]->text();
    removeSelectedQuestion();
    m_editedLevel = m_levelList->currentIndex();
    // The focus stays on the list: the next key typed there chooses a level
    // again (keys typed quickly spell one, as "1" then "2" does 12) and never
    // lands in the question's text.
    appendQuestion();
    for (int i = 0; i < 5; ++i)
        m_fieldBoxes[i]->setText(texts[i]);
}

void QuestionEditor::addQuestion()
{
    appendQuestion();
    m_fieldBoxes[0]->setFocus();
}

void QuestionEditor::appendQuestion()
{
    WaitCursor wait;
    TestBank &bank = m_session.bank;
    const int subject = m_session.records.currentSubject;
    const int32_t slot = bank.limits[subject].lastQuestion[m_editedLevel] + 1;
    // The slot bound is shared, so one long level grows every subject's table.
    if (slot > bank.questionMax)
        resizeQuestionSlots(bank, bank.questionMax + 1);
    bank.questionBank[subject].items()[m_editedLevel][slot] = Question{};
    bank.limits[subject].lastQuestion[m_editedLevel] = slot;

    fillGrid();
    selectRow(m_model->lastRowOfLevel(m_levelList->currentIndex()));
    keepInView();
}

void QuestionEditor::deleteQuestion()
{
    if (m_model->rowCount() <= 1) {
        m_session.prompt.stop(this, QStringLiteral("Unable to Delete Question"),
                              QStringLiteral("Each Subject must contain at least one Question."));
        return;
    }
    const int row = currentRow();
    if (row < 0)
        return;
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Delete Question"),
                                  QStringLiteral("Are you sure you want to Delete this Question?")))
        return;
    WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Tests}, this);
    removeSelectedQuestion();
    fillGrid();
    selectRow(qMin(row, m_model->rowCount() - 1));
    keepInView();
}

void QuestionEditor::storeAdjacentLevels()
{
    if (m_populating)
        return;
    m_session.bank.subjects.at(m_session.records.currentSubject).adjacentLevels =
        m_adjacentLevelsBox->isChecked();
}

void QuestionEditor::revertToDefaults()
{
    const int subject = m_session.records.currentSubject;
    const auto restoreDefaults = defaultsOf(subject);
    if (restoreDefaults == nullptr)
        return;
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm: Revert to Original, Default Subject"),
            QStringLiteral("Are you sure you want to Revert to the Original, Default Subject?")))
        return;
    WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Tests}, this);
    restoreDefaults(m_session.bank);
    m_session.bank.subjects[subject].adjacentLevels = true;
    emit reverted();
}

void QuestionEditor::showProblemCount()
{
    QStringList lines;
    if (const int incomplete = m_model->incompleteCount(); incomplete == 1)
        lines << QStringLiteral(
            "1 question is incomplete: children would see an empty question or answer.");
    else if (incomplete > 1)
        lines << QStringLiteral(
                     "%1 questions are incomplete: children would see empty questions or answers.")
                     .arg(incomplete);
    if (const int repeated = m_model->repeatedCount(); repeated == 1)
        lines << QStringLiteral(
            "1 question repeats an answer: children would see two buttons alike.");
    else if (repeated > 1)
        lines << QStringLiteral(
                     "%1 questions repeat an answer: children would see two buttons alike.")
                     .arg(repeated);
    m_problemLine->setText(lines.join(QLatin1Char('\n')));
    m_problemLine->setVisible(!lines.isEmpty());
}

bool QuestionEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_grid && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Insert) {
            addQuestion();
            return true;
        }
        if (key == Qt::Key_Delete) {
            deleteQuestion();
            return true;
        }
    }
    return QGroupBox::eventFilter(watched, event);
}
