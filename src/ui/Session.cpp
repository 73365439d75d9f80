#include "Session.h"

#include "Prompt.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

namespace {

bool reported(const std::optional<FileError> &error, Prompt &prompt, QWidget *parent)
{
    if (!error)
        return true;
    prompt.stop(parent, QStringLiteral("Tavrino"), QString::fromStdString(error->message()));
    return false;
}

} // namespace

bool Session::saveTests(QWidget *parent)
{
    if (keepTestsFile) {
        prompt.stop(parent, QStringLiteral("Tavrino"),
                    QStringLiteral("The tests were not saved: the file \"%1\" could not be used "
                                   "when Tavrino started and is kept as it is.")
                        .arg(QString::fromStdString(paths.testsPath.string())));
        return false;
    }
    return reported(::saveTests(bank, paths.testsPath), prompt, parent);
}

bool Session::saveStudents(QWidget *parent)
{
    return reported(::saveStudents(records, paths.studentsPath), prompt, parent);
}
