#include "commandline/ClassData.h"

#include "core/DataPaths.h"
#include "core/ReadFile.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <system_error>

namespace {

std::string messageOf(const LoadResult &result, const std::filesystem::path &path)
{
    return result.error ? result.error->message()
                        : "The file \"" + path.string() + "\" could not be read.";
}

} // namespace

std::optional<std::string> readBankOnly(const std::filesystem::path &dataDir, TestBank &bank)
{
    std::error_code ec;
    if (!std::filesystem::is_directory(dataDir, ec))
        return "The data folder \"" + dataDir.string() + "\" does not exist.";
    const DataPaths paths = DataPaths::in(dataDir);
    // Unlike start-up, a damaged Tests file is not moved aside: a job only reads.
    const LoadResult tests = loadTests(bank, paths.testsPath);
    if (!tests.ok())
        return messageOf(tests, paths.testsPath);
    return std::nullopt;
}

std::optional<std::string> readClassData(const std::filesystem::path &dataDir, ClassData &data)
{
    if (std::optional<std::string> problem = readBankOnly(dataDir, data.bank))
        return problem;
    const DataPaths paths = DataPaths::in(dataDir);

    // Read here rather than with loadStudents, which starts a first roster
    // and saves it when the file is missing.
    FileReader file(paths.studentsPath);
    if (file.error())
        return file.error()->message();
    data.records = StudentRecords();
    if (file.missing())
        return std::nullopt;
    try {
        const FileBytes bytes(file);
        const LoadResult students =
            decodeStudentsFile(data.records, data.bank, bytes.view(), paths.studentsPath);
        if (!students.ok())
            return messageOf(students, paths.studentsPath);
    } catch (const FileReadFailed &failure) {
        return FileError{
            FileError::Kind::Unreadable, paths.studentsPath.string(), failure.what(), {}}
            .message();
    }
    return std::nullopt;
}
