// Writes the fuzzers' seed files into <dir>/tests and <dir>/students: valid files
// of every shape the program makes, so that fuzzing starts from deep inside them.
#include "FuzzBanks.h"

#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <filesystem>
#include <iostream>
#include <optional>

namespace {

bool Written(const std::optional<FileError> &error)
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

    const TestBank defaults = DefaultBank();
    const TestBank grown = GrownBank();
    TestBank small = defaults;
    ResizeQuestionSlots(small, 0);
    for (SubjectLimits &limits : small.Limits) {
        limits.LastQuestion.fill(-1);
    }
    StudentRecords firstRun;
    firstRun.Students.push_back(NewStudent(defaults.SubjectMax));
    firstRun.Students.front().Current = true;

    const bool ok =
        Written(SaveTests(defaults, dir / "tests" / "default.dat")) &&
        Written(SaveTests(grown, dir / "tests" / "grown.dat")) &&
        Written(SaveTests(small, dir / "tests" / "small.dat")) &&
        Written(SaveStudents(firstRun, dir / "students" / "first-run.dat")) &&
        Written(SaveStudents(Roster(defaults.SubjectMax), dir / "students" / "roster.dat")) &&
        Written(SaveStudents(Roster(grown.SubjectMax), dir / "students" / "roster-grown.dat"));
    return ok ? 0 : 1;
}
