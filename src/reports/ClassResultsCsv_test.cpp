// The class-results CSV: the bytes a spreadsheet reads (mark, header, quoting,
// line ends), the order of the rows, and Students files wider or narrower than
// the bank.
#include "reports/ClassResultsCsv.h"

#include "core/StudentsFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

TestBank bankOf(const std::vector<std::string> &names)
{
    TestBank bank;
    for (const std::string &name : names)
        bank.subjects.push_back(Subject{name, false});
    bank.subjectMax = static_cast<int32_t>(names.size()) - 1;
    return bank;
}

// A student whose Last at (subject, level) is subject * 100 + level and whose
// High is 1000 more, for subjectCount subjects.
Student studentOf(const std::string &name, std::size_t subjectCount)
{
    Student student;
    student.name = name;
    student.results.resize(subjectCount);
    for (std::size_t s = 0; s < subjectCount; ++s)
        for (int level = 0; level < LevelCount; ++level) {
            student.results[s].last[level] = static_cast<int16_t>(s * 100 + level);
            student.results[s].high[level] = static_cast<int16_t>(1000 + s * 100 + level);
        }
    return student;
}

// The students as the bank reads them back from a Students file they were saved to.
std::vector<Student> readThrough(const TestBank &bank, std::vector<Student> students)
{
    StudentRecords saved;
    saved.students = std::move(students);
    std::string bytes;
    EXPECT_FALSE(encodeStudentsFile(saved, "Tavrino_Students.dat", bytes).has_value());
    StudentRecords read;
    EXPECT_TRUE(decodeStudentsFile(read, bank, bytes, "Tavrino_Students.dat").ok());
    return read.students;
}

std::string csvOf(const TestBank &bank, const StudentRecords &records)
{
    std::ostringstream out;
    EXPECT_TRUE(writeClassResultsCsv(out, bank, records));
    return out.str();
}

// The records between CR LF line ends, the mark before the header removed.
std::vector<std::string> rowsOf(const std::string &csv)
{
    std::vector<std::string> rows;
    std::size_t start = csv.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0;
    for (std::size_t end; (end = csv.find("\r\n", start)) != std::string::npos; start = end + 2)
        rows.push_back(csv.substr(start, end - start));
    EXPECT_EQ(start, csv.size()) << "the last row ends with CR LF";
    return rows;
}

} // namespace

TEST(ClassResultsCsv, MarkHeaderAndRowsInRosterBankAndLevelOrder)
{
    const TestBank bank = bankOf({"Arithmetic", "Spelling"});
    StudentRecords records;
    records.students = {studentOf("  Zoë  ", 2), studentOf("Al", 2)};
    records.students[1].results[1].last[12] = -3;

    const std::string csv = csvOf(bank, records);
    ASSERT_EQ(csv.substr(0, 3), "\xEF\xBB\xBF");
    const std::vector<std::string> rows = rowsOf(csv);
    ASSERT_EQ(rows.size(), 1u + 2 * 2 * LevelCount);
    EXPECT_EQ(rows[0], "Student,Subject,Level,Last,High");
    // Student, then subject, then level; names as shown, trimmed, in UTF-8.
    EXPECT_EQ(rows[1], "Zoë,Arithmetic,K,0,1000");
    EXPECT_EQ(rows[2], "Zoë,Arithmetic,1,1,1001");
    EXPECT_EQ(rows[13], "Zoë,Arithmetic,12,12,1012");
    EXPECT_EQ(rows[14], "Zoë,Spelling,K,100,1100");
    EXPECT_EQ(rows[27], "Al,Arithmetic,K,0,1000");
    EXPECT_EQ(rows[52], "Al,Spelling,12,-3,1112");
}

TEST(ClassResultsCsv, QuotesNamesWithCommasQuotesAndLineBreaks)
{
    const TestBank bank = bankOf({"Maths, mental"});
    StudentRecords records;
    records.students = {studentOf("Ann \"Nan\" Lee", 1), studentOf("Bo\r\nSmith", 1),
                        studentOf("Cy, Jr", 1), studentOf("Dee's", 1)};
    const std::string csv = csvOf(bank, records);

    const std::vector<std::string> expected = {
        "\"Ann \"\"Nan\"\" Lee\",\"Maths, mental\",K,0,1000",
        // The line break inside a quoted name is kept as it is.
        "\"Bo\r\nSmith\",\"Maths, mental\",K,0,1000",
        "\"Cy, Jr\",\"Maths, mental\",K,0,1000",
        "Dee's,\"Maths, mental\",K,0,1000",
    };
    for (const std::string &row : expected)
        EXPECT_NE(csv.find("\r\n" + row + "\r\n"), std::string::npos) << row;
}

TEST(ClassResultsCsv, WritesTheBanksSubjectsWhateverTheStudentsFileHolds)
{
    const TestBank bank = bankOf({"Arithmetic", "Spelling"});
    StudentRecords records;
    // A file wider than the bank keeps results of a subject the bank no longer
    // has; one narrower has none yet for the bank's last subject.
    records.students = readThrough(bank, {studentOf("Wide", 3)});
    ASSERT_EQ(records.students[0].extraResults.size(), 1u);
    records.students.push_back(readThrough(bank, {studentOf("Narrow", 1)}).at(0));
    const std::vector<std::string> rows = rowsOf(csvOf(bank, records));

    ASSERT_EQ(rows.size(), 1u + 2 * 2 * LevelCount);
    for (std::size_t i = 1; i < rows.size(); ++i)
        EXPECT_EQ(rows[i].find(",Arithmetic,") != std::string::npos ||
                      rows[i].find(",Spelling,") != std::string::npos,
                  true)
            << rows[i];
    EXPECT_EQ(rows[26], "Wide,Spelling,12,112,1112");
    EXPECT_EQ(rows[27], "Narrow,Arithmetic,K,0,1000");
    EXPECT_EQ(rows[40], "Narrow,Spelling,K,0,0");
    EXPECT_EQ(rows[52], "Narrow,Spelling,12,0,0");
}

TEST(ClassResultsCsv, AClassWithoutStudentsIsTheHeaderAlone)
{
    EXPECT_EQ(csvOf(bankOf({"Arithmetic"}), StudentRecords()),
              "\xEF\xBB\xBFStudent,Subject,Level,Last,High\r\n");
}

TEST(ClassResultsCsv, SavesTheSameBytesOrNamesTheFileThatFailed)
{
    const TestBank bank = bankOf({"Arithmetic"});
    StudentRecords records;
    records.students = {studentOf("Ann", 1)};
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("tavrino-csv-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);

    const std::filesystem::path file = dir / "class.csv";
    {
        std::ofstream(file) << "an older export, much longer than the new one will be......";
    }
    ASSERT_FALSE(saveClassResultsCsv(file, bank, records).has_value());
    std::ifstream in(file, std::ios::binary);
    const std::string saved((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(saved, csvOf(bank, records));

    const std::filesystem::path nowhere = dir / "no such folder" / "class.csv";
    const std::optional<FileError> error = saveClassResultsCsv(nowhere, bank, records);
    ASSERT_TRUE(error.has_value());
    EXPECT_NE(error->message().find(nowhere.string()), std::string::npos) << error->message();
    std::filesystem::remove_all(dir);
}
