// Windows only: a data file another program holds open without sharing, and the
// system's error codes in the words the program shows everywhere.
#include "core/WindowsErrors.h"

#include "core/CoreFixtures_test.h"
#include "core/FileSystem.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cerrno>
#include <functional>
#include <string>

namespace fs = std::filesystem;

namespace {

// A handle as another program would hold it: open, shared with no one.
class LockedFile {
public:
    explicit LockedFile(const fs::path &path)
        : m_handle(::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~LockedFile() { release(); }
    LockedFile(const LockedFile &) = delete;
    LockedFile &operator=(const LockedFile &) = delete;

    bool held() const { return m_handle != INVALID_HANDLE_VALUE; }
    void release()
    {
        if (held()) {
            ::CloseHandle(m_handle);
            m_handle = INVALID_HANDLE_VALUE;
        }
    }

private:
    HANDLE m_handle;
};

} // namespace

TEST(WindowsFiles, ADataFileHeldOpenByAnotherProgramIsReportedAndKept)
{
    const ScratchDir scratch;
    const fs::path dir = scratch.path() / fs::u8path("d\u00E9j\u00E0 \u540D");
    ASSERT_TRUE(fs::create_directory(dir));
    const TestBank bank = grownBank();
    const StudentRecords roster = sampleRoster(bank.subjectMax);

    struct DataFile {
        const char *name;
        std::function<std::optional<FileError>(const fs::path &)> save;
        std::function<LoadResult(const fs::path &)> load;
    };
    const DataFile files[] = {
        {"Tavrino_Tests.dat", [&](const fs::path &path) { return saveTests(bank, path); },
         [](const fs::path &path) {
             TestBank loaded;
             return loadTests(loaded, path);
         }},
        {"Tavrino_Students.dat", [&](const fs::path &path) { return saveStudents(roster, path); },
         [&](const fs::path &path) {
             StudentRecords loaded;
             return loadStudents(loaded, bank, path);
         }},
    };
    for (const DataFile &file : files) {
        SCOPED_TRACE(file.name);
        const fs::path path = dir / file.name;
        ASSERT_FALSE(file.save(path));
        const std::string before = readBytes(path);

        LockedFile lock(path);
        ASSERT_TRUE(lock.held());
        const LoadResult loaded = file.load(path);
        EXPECT_EQ(loaded.status, LoadResult::Status::Failed);
        ASSERT_TRUE(loaded.error);
        EXPECT_EQ(loaded.error->kind, FileError::Kind::Unreadable);
        const std::string readMessage = loaded.error->message();
        EXPECT_NE(readMessage.find("in use by another program"), std::string::npos) << readMessage;
        EXPECT_NE(readMessage.find(path.u8string()), std::string::npos) << readMessage;

        const std::optional<FileError> saved = file.save(path);
        ASSERT_TRUE(saved);
        EXPECT_EQ(saved->kind, FileError::Kind::Unwritable);
        EXPECT_NE(saved->message().find("in use by another program"), std::string::npos)
            << saved->message();

        // Once the other program lets go, the file is as it was and no temporary is left.
        lock.release();
        EXPECT_EQ(readBytes(path), before);
        ASSERT_FALSE(file.save(path));
        EXPECT_EQ(file.load(path).status, LoadResult::Status::Loaded);
    }
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(dir)) {
        names.push_back(entry.path().filename().u8string());
    }
    EXPECT_EQ(names.size(), 2u);
}

TEST(WindowsFiles, SystemErrorCodesGetTheProgramsWords)
{
    const std::pair<DWORD, const char *> codes[] = {
        {ERROR_FILE_NOT_FOUND, "No such file or directory"},
        {ERROR_PATH_NOT_FOUND, "No such file or directory"},
        {ERROR_ACCESS_DENIED, "Permission denied"},
        {ERROR_WRITE_PROTECT, "Read-only file system"},
        {ERROR_SHARING_VIOLATION, "the file is in use by another program"},
        {ERROR_LOCK_VIOLATION, "the file is in use by another program"},
        {ERROR_DISK_FULL, "No space left on device"},
        {ERROR_HANDLE_DISK_FULL, "No space left on device"},
    };
    for (const auto &[code, words] : codes) {
        EXPECT_EQ(systemErrorText(errorFromWindows(code)), words) << code;
    }
    // A code without an errno of its own keeps the system's words and its number.
    const int unusual = errorFromWindows(ERROR_INVALID_FUNCTION);
    EXPECT_LT(unusual, 0);
    EXPECT_NE(systemErrorText(unusual).find("Windows error 1)"), std::string::npos)
        << systemErrorText(unusual);
}
