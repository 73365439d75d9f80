// Writes the fuzzers' seed files into <dir>/tests and <dir>/students: valid files
// of every shape the program makes, so that fuzzing starts from deep inside them;
// and into <dir>/classlist, class lists of the shapes spreadsheets and editors save.
#include "FuzzBanks.h"

#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <utility>

namespace {

bool written(const std::optional<FileError> &error)
{
    if (error) {
        std::cerr << error->message() << '\n';
    }
    return !error;
}

bool writtenBytes(const std::filesystem::path &path, const std::string &bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    return static_cast<bool>(out);
}

bool classListsWritten(const std::filesystem::path &dir)
{
    std::filesystem::create_directories(dir);
    const std::pair<const char *, std::string> lists[] = {
        {"header.csv", "Id,Name,Grade\r\n1,\"Lee, Ann\",3\r\n2,\"O\"\"Hara\",4\r\n\r\n,,\r\n"},
        {"bom.csv", "\xEF\xBB\xBFsep=;\nStudent;Grade\nZo\xC3\xAB;K\n"},
        {"cp1252.txt", "Names\rAndr\xE9\r\r  Jos\xE9 \r\x8Aimon"},
        {"tabs.txt", "Grade\tStudent\n3\t\"Cruz,\nBob\"\n4\tAnn\u2028Lee\n"},
    };
    bool ok = true;
    for (const auto &[name, bytes] : lists) {
        ok = writtenBytes(dir / name, bytes) && ok;
    }
    return ok;
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
        written(saveStudents(roster(grown.subjectMax), dir / "students" / "roster-grown.dat")) &&
        classListsWritten(dir / "classlist");
    return ok ? 0 : 1;
}
