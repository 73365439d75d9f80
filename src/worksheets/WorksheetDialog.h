// The small dialog that asks what goes on a worksheet of the current subject
// and level: how many problems, whether the answer key comes with it, and the
// seed of a sheet to print again.
#pragma once

#include "worksheets/Worksheet.h"

#include <QDialog>

#include <functional>
#include <optional>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

class WorksheetDialog : public QDialog {
    Q_OBJECT
public:
    // The dialog's own limits on the number of problems; the command line allows fewer.
    static constexpr int FewestProblems = 10;

    WorksheetDialog(const TestBank &bank, int subject, int level, QWidget *parent = nullptr);

    // What the dialog holds; no seed when the field is empty.
    WorksheetSettings settings() const;

private:
    void checkSeed();

    QSpinBox *m_count = nullptr;
    QCheckBox *m_answerKey = nullptr;
    QLineEdit *m_seed = nullptr;
    QPushButton *m_preview = nullptr;
};

// Asks for a sheet's settings; nothing when the teacher cancels.
using WorksheetAsker = std::function<std::optional<WorksheetSettings>(
    QWidget *parent, const TestBank &bank, int subject, int level)>;

// The dialog, shown modally.
std::optional<WorksheetSettings> askWorksheetSettings(QWidget *parent, const TestBank &bank,
                                                      int subject, int level);
