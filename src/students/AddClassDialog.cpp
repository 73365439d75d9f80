#include "AddClassDialog.h"

#include "classlist/ClassListFile.h"
#include "core/TestBank.h"
#include "ui/Prompt.h"
#include "ui/WaitCursor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

#include <filesystem>

namespace {

const QString Title = QStringLiteral("Add Class");

} // namespace

AddClassDialog::AddClassDialog(const std::vector<Student> &roster, Prompt &prompt, QWidget *parent)
    : QDialog(parent), m_planner(roster), m_prompt(prompt)
{
    setObjectName(QStringLiteral("frmAddClass"));
    setWindowTitle(Title);
    setModal(true);
    setFont(QFont(QStringLiteral("Arial"), 10));

    auto *boxCaption = new QLabel(QStringLiteral("&Names, one per line:"), this);
    m_namesBox = new QPlainTextEdit(this);
    m_namesBox->setObjectName(QStringLiteral("txtNames"));
    m_namesBox->setAccessibleName(QStringLiteral("Names"));
    m_namesBox->setFont(QFont(QStringLiteral("Arial"), 11));
    // Lines are not wrapped, so that line 4 of the live line is the fourth line seen.
    m_namesBox->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_namesBox->setTabChangesFocus(true);
    m_namesBox->setMinimumSize(420, 240);
    boxCaption->setBuddy(m_namesBox);
    connect(m_namesBox, &QPlainTextEdit::textChanged, this, &AddClassDialog::updateSummary);

    m_fromFileButton = new QPushButton(QStringLiteral("&From File\u2026"), this);
    m_fromFileButton->setObjectName(QStringLiteral("cmdFromFile"));
    m_fromFileButton->setAutoDefault(false);
    connect(m_fromFileButton, &QPushButton::clicked, this, &AddClassDialog::readFromFile);

    auto *levelCaption = new QLabel(QStringLiteral("&Level for the new students:"), this);
    m_levelList = new QComboBox(this);
    m_levelList->setObjectName(QStringLiteral("cmbLevel"));
    m_levelList->setAccessibleName(QStringLiteral("Level for the new students"));
    m_levelList->addItem(QStringLiteral("K"));
    for (int level = 1; level < LevelCount; ++level)
        m_levelList->addItem(QString::number(level));
    levelCaption->setBuddy(m_levelList);

    m_addKnownNames = new QCheckBox(QStringLiteral("Also add names already on the &roster"), this);
    m_addKnownNames->setObjectName(QStringLiteral("chkAddKnownNames"));
    connect(m_addKnownNames, &QCheckBox::toggled, this, &AddClassDialog::updateSummary);

    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    // Room for the counts and a warning, so that the box does not jump as they come.
    m_summary->setMinimumHeight(4 * m_summary->fontMetrics().lineSpacing());
    m_summary->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto *buttons = new QDialogButtonBox(this);
    m_addButton = buttons->addButton(QStringLiteral("&Add"), QDialogButtonBox::AcceptRole);
    m_addButton->setObjectName(QStringLiteral("cmdAdd"));
    m_addButton->setDefault(true);
    QPushButton *cancelButton = buttons->addButton(QDialogButtonBox::Cancel);
    cancelButton->setObjectName(QStringLiteral("cmdCancel"));
    connect(m_addButton, &QPushButton::clicked, this, &AddClassDialog::addClass);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);

    auto *options = new QHBoxLayout;
    options->addWidget(m_fromFileButton);
    options->addStretch(1);
    options->addWidget(levelCaption);
    options->addWidget(m_levelList);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    // A live line longer than its room makes the dialog taller, never the controls overlap.
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    layout->addWidget(boxCaption);
    layout->addWidget(m_namesBox, 1);
    layout->addLayout(options);
    layout->addWidget(m_addKnownNames);
    layout->addWidget(m_summary);
    layout->addWidget(buttons);

    updateSummary();
}

AddClassDialog::~AddClassDialog() = default;

int16_t AddClassDialog::level() const
{
    return static_cast<int16_t>(qMax(0, m_levelList->currentIndex()));
}

std::string AddClassDialog::boxText() const
{
    // Block by block rather than toPlainText(), which would turn no-break
    // spaces into spaces that the name box keeps.
    std::string text;
    const QTextDocument *document = m_namesBox->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        if (block != document->begin())
            text += '\n';
        text += block.text().toStdString();
    }
    return text;
}

void AddClassDialog::updateSummary()
{
    const bool addKnownNames = m_addKnownNames->isChecked();
    m_newNames = m_planner.plan(boxText(), addKnownNames);
    QString text = QString::fromStdString(summaryOf(m_newNames, addKnownNames)) + '.';
    const std::string warning = replacedWarningOf(m_newNames);
    if (!warning.empty())
        text += '\n' + QString::fromStdString(warning);
    m_summary->setText(text);
    m_addButton->setEnabled(!m_newNames.names.empty());
}

void AddClassDialog::readFromFile()
{
    const QString path =
        m_prompt.openFileName(this, QStringLiteral("Read Names From a File"),
                              QStringLiteral("Class lists (*.csv *.txt *.tsv);;All files (*)"));
    if (path.isEmpty())
        return;
    ClassList list;
    {
        const WaitCursor wait;
        list = readClassListFile(std::filesystem::path(QFile::encodeName(path).toStdString()));
    }
    if (!list.problem.empty()) {
        m_prompt.stop(this, Title, QString::fromStdString(list.problem));
        return;
    }
    QString lines;
    for (const std::string &name : list.names)
        lines += QString::fromStdString(name) + '\n';
    // Added after what the box holds, starting on a line of its own.
    QTextCursor cursor(m_namesBox->document());
    cursor.movePosition(QTextCursor::End);
    if (!m_namesBox->document()->isEmpty() && !cursor.block().text().isEmpty())
        lines.prepend('\n');
    cursor.insertText(lines);
    m_namesBox->setTextCursor(cursor);
    m_namesBox->setFocus();
}

void AddClassDialog::addClass()
{
    if (!m_newNames.names.empty())
        accept();
}
