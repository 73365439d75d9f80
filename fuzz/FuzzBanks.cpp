#include "FuzzBanks.h"

#include "core/DefaultBank.h"

#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

TestBank defaultBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    return bank;
}

TestBank grownBank()
{
    TestBank bank = defaultBank();
    for (const char *name : {"Fran\u00E7ais", "\u20AC & \u00BD"}) {
        addSubject(bank, name);
        bank.subjects.back().adjacentLevels = true;
        bank.limits.back().seconds = 45;
    }
    resizeQuestionSlots(bank, 12);
    bank.questionBank[7].items()[3][12] = {"Caf\u00E9?", "oui", "non", "\u00BF", ""};
    bank.limits[7].lastQuestion[3] = 12;
    return bank;
}

StudentRecords roster(int32_t subjectMax)
{
    StudentRecords records;
    records.showByStudent = false;
    records.currentSubject = subjectMax;
    for (const char *name : {"Zo\u00EB", " \u00C5ngstr\u00F6m ", "", "Ann"}) {
        records.students.push_back(newStudent(subjectMax));
        records.students.back().name = name;
    }
    records.students[1].level = 12;
    records.students[1].current = true;
    records.students[2].results[subjectMax].high[12] = 32767;
    records.students[3].results[0].last[0] = -32768;
    return records;
}

namespace {

// A directory of this process's own, removed with its files when the run ends.
class ScratchDirectory {
public:
    ScratchDirectory()
        : m_path(std::filesystem::temp_directory_path() /
                 ("tavrino-fuzz-" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(m_path);
    }
    ~ScratchDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;

    const std::filesystem::path &path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace

std::filesystem::path onDisk(std::string_view bytes, const char *name)
{
    static const ScratchDirectory dir;
    const std::filesystem::path path = dir.path() / name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}
