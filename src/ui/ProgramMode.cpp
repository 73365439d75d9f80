#include "ui/ProgramMode.h"

#include <QLineEdit>
#include <QStringList>
#include <QWidget>

#include <vector>

namespace {

// What the classroom mode takes away from one screen, by objectName.
struct ClassroomLimits {
    QString screen;
    QStringList hidden;   // the teacher's tools
    QStringList readOnly; // boxes a child may read but not change
};

// Hiding one more of the teacher's tools is one more name here.
const std::vector<ClassroomLimits> &classroomLimits()
{
    static const std::vector<ClassroomLimits> limits = {
        {QStringLiteral("frmMain"),
         {QStringLiteral("cmdTest"), QStringLiteral("cmdWorksheet")},
         {}},
        {QStringLiteral("frmProfiles"),
         {QStringLiteral("cmdAddStudent"), QStringLiteral("cmdAddClass"),
          QStringLiteral("cmdDelete"), QStringLiteral("cmdResetTotals_Student"),
          QStringLiteral("cmdResetTotals_All"), QStringLiteral("cmdBackups"),
          QStringLiteral("cmdProgress"), QStringLiteral("cmdFacts"),
          QStringLiteral("cmdClassView")},
         {QStringLiteral("txtStudent")}},
    };
    return limits;
}

const ClassroomLimits *limitsFor(const QObject &screen)
{
    for (const ClassroomLimits &limits : classroomLimits())
        if (limits.screen == screen.objectName())
            return &limits;
    return nullptr;
}

} // namespace

void applyProgramMode(QWidget &screen, ProgramMode mode)
{
    const ClassroomLimits *limits = limitsFor(screen);
    if (mode != ProgramMode::Classroom || !limits)
        return;
    for (const QString &name : limits->hidden) {
        // Disabled as well as hidden: a hidden button's Alt key does nothing either.
        for (QWidget *control : screen.findChildren<QWidget *>(name)) {
            control->hide();
            control->setEnabled(false);
        }
    }
    for (const QString &name : limits->readOnly)
        for (QLineEdit *box : screen.findChildren<QLineEdit *>(name))
            box->setReadOnly(true);
}

bool hiddenInMode(const QWidget &control, ProgramMode mode)
{
    if (mode != ProgramMode::Classroom)
        return false;
    for (const QObject *owner = control.parent(); owner; owner = owner->parent())
        if (const ClassroomLimits *limits = limitsFor(*owner))
            return limits->hidden.contains(control.objectName());
    return false;
}
