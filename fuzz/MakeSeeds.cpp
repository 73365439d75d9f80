// Writes the fuzzers' seed files into <dir>/tests and <dir>/students: valid files
// of every shape the program makes, so that fuzzing starts from deep inside them.
#include "FuzzBanks.h"

#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <filesystem>
#include <iostream>
#include <optional>

namespace {

bool written(const std::optional<FileError> &error)
{
    if (error) {
        std::cerr << error->message() << '\n';
    }
    return !error;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " <corpus dir>\n";
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    std::filesystem::create_directories(dir / "tests");
    std::filesystem::create_directories(dir / "students");

    const TestBank defaults = defaultBank();
    const TestBank grown = grownBank();
    TestBank small = defaults;
    resizeQuestionSlots(small, 0);
    for (SubjectLimits &limits : small.limits) {
        limits.lastQuestion.fill(-1);
    }
    StudentRecords firstRun;
    firstRun.students.push_back(newStudent(defaults.subjectMax));
    firstRun.students.front().current = true;

    const bool ok =
        written(saveTests(defaults, dir / "tests" / "default.dat")) &&
        written(saveTests(grown, dir / "tests" / "grown.dat")) &&
        written(saveTests(small, dir / "tests" / "small.dat")) &&
        written(saveStudents(firstRun, dir / "students" / "first-run.dat")) &&
        written(saveStudents(roster(defaults.subjectMax), dir / "students" / "roster.dat")) &&
        written(saveStudents(roster(grown.subjectMax), dir / "students" / "roster-grown.dat"));
    return ok ? 0 : 1;
}
