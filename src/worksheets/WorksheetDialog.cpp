#include "worksheets/WorksheetDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSpinBox>
#include <QVBoxLayout>

#include <limits>

namespace {

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

// A multiple-choice sheet longer than the questions it can draw from repeats
// them, as a test does; the teacher is told how many there are.
QString questionsNote(const TestBank &bank, int subject, int level)
{
    if (subject == ArithmeticSubject)
        return QString();
    const int distinct = distinctQuestions(bank, subject, level);
    return distinct == 1 ? QStringLiteral("There is 1 question to draw from; a sheet repeats it.")
                         : QStringLiteral("There are %1 different questions to draw from; a longer "
                                          "sheet repeats them.")
                               .arg(distinct);
}

} // namespace

WorksheetDialog::WorksheetDialog(const TestBank &bank, int subject, int level, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmWorksheet"));
    setWindowTitle(QStringLiteral("Worksheet"));

    auto *heading = new QLabel(
        text(worksheetHeading(bank.subjects.at(static_cast<std::size_t>(subject)).name, level)),
        this);
    heading->setObjectName(QStringLiteral("lblWorksheet"));
    heading->setTextFormat(Qt::PlainText);
    QFont bold = heading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.25);
    heading->setFont(bold);

    m_count = new QSpinBox(this);
    m_count->setObjectName(QStringLiteral("txtCount"));
    m_count->setRange(FewestProblems, MaxWorksheetCount);
    m_count->setValue(DefaultWorksheetCount);
    m_count->setAccessibleName(QStringLiteral("Number of problems"));

    m_answerKey = new QCheckBox(QStringLiteral("&Answer key on a page of its own"), this);
    m_answerKey->setObjectName(QStringLiteral("chkAnswerKey"));
    m_answerKey->setChecked(true);

    m_seed = new QLineEdit(this);
    m_seed->setObjectName(QStringLiteral("txtSeed"));
    m_seed->setPlaceholderText(QStringLiteral("empty for a new sheet"));
    m_seed->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,10}")), m_seed));
    m_seed->setAccessibleName(QStringLiteral("Seed"));
    const QString seedHelp = QStringLiteral("The seed is printed at the foot of every sheet: "
                                            "type it here to print the same sheet again.");
    m_seed->setAccessibleDescription(seedHelp);

    auto *form = new QFormLayout;
    auto *countCaption = new QLabel(QStringLiteral("Number of &problems:"), this);
    countCaption->setBuddy(m_count);
    form->addRow(countCaption, m_count);
    form->addRow(QString(), m_answerKey);
    auto *seedCaption = new QLabel(QStringLiteral("&Seed:"), this);
    seedCaption->setBuddy(m_seed);
    form->addRow(seedCaption, m_seed);

    auto *note = new QLabel(seedHelp, this);
    note->setObjectName(QStringLiteral("lblSeedNote"));
    note->setWordWrap(true);
    auto *questions = new QLabel(questionsNote(bank, subject, level), this);
    questions->setObjectName(QStringLiteral("lblQuestionsNote"));
    questions->setWordWrap(true);
    questions->setVisible(!questions->text().isEmpty());

    auto *buttons = new QDialogButtonBox(this);
    m_preview = buttons->addButton(QStringLiteral("&Preview\u2026"), QDialogButtonBox::AcceptRole);
    m_preview->setObjectName(QStringLiteral("cmdPreview"));
    m_preview->setDefault(true);
    QPushButton *cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_seed, &QLineEdit::textChanged, this, &WorksheetDialog::checkSeed);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(form);
    layout->addWidget(note);
    layout->addWidget(questions);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

// Ten digits may still be more than a seed holds; Preview waits for one that fits.
void WorksheetDialog::checkSeed()
{
    const QString seed = m_seed->text();
    bool fits = true;
    if (!seed.isEmpty())
        fits = seed.toULongLong() <= std::numeric_limits<std::uint32_t>::max();
    m_preview->setEnabled(fits);
}

WorksheetSettings WorksheetDialog::settings() const
{
    WorksheetSettings settings;
    settings.count = m_count->value();
    settings.answerKey = m_answerKey->isChecked();
    if (!m_seed->text().isEmpty())
        settings.seed = static_cast<std::uint32_t>(m_seed->text().toULongLong());
    return settings;
}

std::optional<WorksheetSettings> askWorksheetSettings(QWidget *parent, const TestBank &bank,
                                                      int subject, int level)
{
    WorksheetDialog dialog(bank, subject, level, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.settings();
}
