// A count that claims more than the file holds must be refused before memory is
// set aside for it, and a file too large for the memory left must be reported,
// not crash the program. This binary replaces the global operator new to count
// what the loaders ask for, so it is kept apart from the other tests.
#include "core/ByteIO.h"
#include "core/CoreFixtures_test.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>

namespace {

bool g_counting = false;
std::size_t g_requested = 0;

std::string int32(int32_t value)
{
    ByteWriter out;
    out.int32(value);
    return out.bytes();
}

#ifndef _WIN32
// The address space the process has mapped, in bytes.
rlim_t addressSpaceInUse()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmSize:", 0) == 0)
            return static_cast<rlim_t>(std::stoull(line.substr(7))) * 1024;
    }
    return 0;
}
#endif

} // namespace

void *operator new(std::size_t size)
{
    if (g_counting) {
        g_requested += size;
    }
    if (void *p = std::malloc(size == 0 ? 1 : size)) {
        return p;
    }
    throw std::bad_alloc();
}

void operator delete(void *p) noexcept
{
    std::free(p);
}

void operator delete(void *p, std::size_t) noexcept
{
    std::free(p);
}

TEST(FileAllocation, CountsBeyondTheFileAreRefusedBeforeAnythingIsAllocated)
{
    const TestBank bank = defaultTestBank();
    // Enough bytes after the counts to pass every check that looks only at the size left.
    const std::string padding(10000, '\0');
    // Six subjects with empty names.
    const std::string questionsHeader = int32(5) + std::string(6 * 4, '\0');

    const struct {
        const char *what;
        bool students;
        std::string bytes;
    } claims[] = {
        {"2^31 students in 30 bytes", true,
         fromHex("FF FF 00 00 00 00 FF FF FF 7F") + std::string(20, '\0')},
        {"2^30 students", true, fromHex("FF FF 00 00 00 00 00 00 00 40") + padding},
        {"a name of 65535 bytes", true,
         fromHex("FF FF 00 00 00 00 00 00 00 00 FF FF") + std::string(300, 'a')},
        {"2^31 subjects", false, int32(0x7FFFFFFF) + padding},
        {"2^31 question slots", false, questionsHeader + int32(0x7FFFFFFF) + padding},
        {"1001 question slots", false, questionsHeader + int32(1000) + padding},
        {"a subject name of 65535 bytes", false, int32(5) + fromHex("FF FF") + padding},
    };
    const ScratchDir dir;
    for (const auto &claim : claims) {
        SCOPED_TRACE(claim.what);
        const auto path = dir / (claim.students ? "Tavrino_Students.dat" : "Tavrino_Tests.dat");
        writeBytes(path, claim.bytes);
        // From memory, and from the disk through the loaders' own reading.
        for (const bool fromDisk : {false, true}) {
            SCOPED_TRACE(fromDisk ? "from the disk" : "from memory");
            LoadResult result;
            StudentRecords records;
            TestBank loaded;
            g_requested = 0;
            g_counting = true;
            if (claim.students) {
                result = fromDisk ? loadStudents(records, bank, path)
                                  : decodeStudentsFile(records, bank, claim.bytes, path);
            } else {
                result =
                    fromDisk ? loadTests(loaded, path) : decodeTestsFile(loaded, claim.bytes, path);
            }
            g_counting = false;
            ASSERT_EQ(result.status, LoadResult::Status::Failed);
            EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
            // The error's texts, a few empty subjects and a copy of the file's
            // bytes: nothing near what was claimed.
            EXPECT_LT(g_requested, 4096 + 2 * claim.bytes.size()) << result.error->message();
        }
    }

    // The counter sees the loaders' allocations at all: a valid file costs far more.
    std::string valid;
    ASSERT_FALSE(encodeTestsFile(bank, "Tavrino_Tests.dat", valid));
    TestBank loaded;
    g_requested = 0;
    g_counting = true;
    const LoadResult result = decodeTestsFile(loaded, valid, "Tavrino_Tests.dat");
    g_counting = false;
    ASSERT_EQ(result.status, LoadResult::Status::Loaded);
    EXPECT_GT(g_requested, valid.size());
}

TEST(FileAllocation, AFileLargerThanTheMemoryLeftIsReportedAsUnreadable)
{
#if defined(_WIN32)
    GTEST_SKIP() << "needs an address-space limit (setrlimit), which Windows does not have";
#else
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's own memory cannot work under an address-space limit";
#endif
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    constexpr std::uintmax_t size = 256u << 20;
    writeBytes(path, "");
    std::filesystem::resize_file(path, size); // sparse: nothing is written to the disk

    // Room for the loader's own small needs, not for the file.
    rlimit previous{};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &previous), 0);
    rlimit limited = previous;
    limited.rlim_cur = addressSpaceInUse() + (32u << 20);
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limited), 0);
    TestBank bank;
    const LoadResult result = loadTests(bank, path);
    ::setrlimit(RLIMIT_AS, &previous);

    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Unreadable);
    const std::string message = result.error->message();
    EXPECT_NE(message.find("not enough memory"), std::string::npos) << message;
    EXPECT_NE(message.find(std::to_string(size)), std::string::npos) << message;
    EXPECT_EQ(bank.subjectMax, -1) << "nothing was loaded";
#endif
}
