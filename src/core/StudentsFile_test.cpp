#include "core/StudentsFile.h"

#include "core/AtomicFile.h"
#include "core/CoreFixtures_test.h"

#include <gtest/gtest.h>

namespace {

// Records that a failed load must leave exactly as they were.
StudentRecords sentinel()
{
    StudentRecords records;
    records.students.push_back(newStudent(5));
    records.students[0].name = "untouched";
    records.currentSubject = 3;
    records.currentSubjectName = "History";
    return records;
}

// Refused as damaged at offset, or anywhere up to it when orBefore is set.
void expectDamagedAt(const std::filesystem::path &path, const TestBank &bank, std::size_t offset,
                     bool orBefore = false)
{
    StudentRecords records = sentinel();
    const LoadResult result = loadStudents(records, bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    ASSERT_TRUE(result.error->offset);
    EXPECT_TRUE(orBefore ? *result.error->offset <= offset : *result.error->offset == offset)
        << result.error->message();
    EXPECT_EQ(result.error->path, path.string());
    expectSameRecords(records, sentinel());
    EXPECT_EQ(records.currentSubjectName, "History");
}

} // namespace

TEST(StudentsFile, FirstRunWritesOneNamelessStudentInTheFilesLayout)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    StudentRecords records;
    records.currentSubject = 3;
    records.showByStudent = false;
    const LoadResult result = loadStudents(records, defaultTestBank(), path);
    EXPECT_EQ(result.status, LoadResult::Status::Missing);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(records.currentSubject, 0);
    EXPECT_TRUE(records.showByStudent);
    EXPECT_EQ(records.currentSubjectName, "Arithmetic");
    ASSERT_EQ(records.students.size(), 1u);
    EXPECT_TRUE(records.students[0].current);
    EXPECT_EQ(hex(readBytes(path)),
              hex(fromHex("FF FF  00 00 00 00  00 00 00 00" // showByStudent, subject, studentMax
                          "00 00  00 00"                    // empty name, level K
                          "01 00  06 00 00 00  00 00 00 00" // one dimension, 6 subjects from 0
                          ) +
                  std::string(6 * 52, '\0') + fromHex("FF FF"))); // zeroed results, current

    // Each subject's 13 Last scores, then its 13 High scores, in two's complement.
    records.students[0].name = "Ann";
    records.students[0].level = 3;
    records.students[0].results[1].last[2] = -3;
    records.students[0].results[1].high[2] = 300;
    ASSERT_FALSE(saveStudents(records, path));
    const std::string bytes = readBytes(path);
    ASSERT_EQ(bytes.size(), 341u);
    EXPECT_EQ(hex(bytes.substr(10, 7)), "03 00 41 6E 6E 03 00");
    EXPECT_EQ(hex(bytes.substr(27 + 52 + 2 * 2, 2)), "FD FF");
    EXPECT_EQ(hex(bytes.substr(27 + 52 + 26 + 2 * 2, 2)), "2C 01");

    // A first run whose save fails reports it.
    const auto unsaved = dir / "Other.dat";
    const InjectedSaveFault fault({SaveStep::Create, EACCES, 0});
    StudentRecords fresh;
    const LoadResult failed = loadStudents(fresh, defaultTestBank(), unsaved);
    EXPECT_EQ(failed.status, LoadResult::Status::Failed);
    ASSERT_TRUE(failed.error);
    EXPECT_EQ(failed.error->kind, FileError::Kind::Unwritable);
    EXPECT_FALSE(std::filesystem::exists(unsaved));
}

TEST(StudentsFile, DamagedFilesAreRefusedWhereTheDamageIs)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = defaultTestBank();
    ASSERT_FALSE(saveStudents(sampleRoster(5), path));
    const std::string good = readBytes(path);

    // Cut one byte at a time from the end, the cheapest way to get every prefix on disk.
    for (std::size_t length = good.size(); length-- > 0 && !HasFailure();) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        expectDamagedAt(path, bank, length, true);
    }
    const std::size_t entry = 10 + 2 + 3; // first entry, after its name "Zoë"
    const struct {
        std::size_t offset;
        const char *hex;
        std::size_t refusedAt;
    } damages[] = {
        {2, "06 00 00 00", 2},                 // current subject beyond every record
        {2, "FF FF FF FF", 2},                 // negative current subject
        {6, "FF FF FF FF", 6},                 // no students at all
        {6, "FF FF FF 7F", 6},                 // far more students than the file holds
        {6, "05 00 00 00", good.size()},       // one student more than the file holds
        {10, "FF FF", 12},                     // a name longer than what is left
        {entry, "0D 00", entry},               // level 13
        {entry, "FF FF", entry},               // level -1
        {entry + 2, "02 00", entry + 2},       // two-dimensional results
        {entry + 4, "FF FF FF FF", entry + 4}, // a negative number of results
        {entry + 4, "FF FF FF 7F", entry + 4}, // more results than the file holds
        {entry + 8, "01 00 00 00", entry + 8}, // results not starting at subject 0
    };
    for (const auto &damage : damages) {
        SCOPED_TRACE(damage.hex);
        std::string bytes = good;
        bytes.replace(damage.offset, fromHex(damage.hex).size(), fromHex(damage.hex));
        writeBytes(path, bytes);
        expectDamagedAt(path, bank, damage.refusedAt);
    }
}

TEST(StudentsFile, RecordsKeepTheWidthTheirBankGaveThem)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank defaults = defaultTestBank();
    TestBank wide = defaultTestBank();
    for (int s = 6; s <= 18; ++s) {
        addSubject(wide, "Subject " + std::to_string(s));
    }
    // Saved while the bank had 19 subjects, after a test in subject 10.
    StudentRecords full = sampleRoster(18);
    full.currentSubject = 10;
    for (Student &student : full.students) {
        for (int s = 0; s <= 18; ++s) {
            student.results[s].high[1] = static_cast<int16_t>(100 + s);
        }
    }
    ASSERT_FALSE(saveStudents(full, path));
    const std::string original = readBytes(path);

    // Read with the six default subjects (the Tests file went missing): the class
    // is not locked out; the screens see six subjects, the other 13 are kept.
    StudentRecords records;
    ASSERT_EQ(loadStudents(records, defaults, path).status, LoadResult::Status::Loaded);
    for (const Student &student : records.students) {
        ASSERT_EQ(student.results.size(), 6u);
        ASSERT_EQ(student.extraResults.size(), 13u);
        EXPECT_EQ(student.results[5].high[1], 105);
        EXPECT_EQ(student.extraResults[12].high[1], 118);
    }
    EXPECT_EQ(std::tie(records.currentSubject, records.currentSubjectName),
              std::tie(ArithmeticSubject, defaults.subjects[0].name));
    // Every save writes them back unchanged; only the current subject differs.
    ASSERT_FALSE(saveStudents(records, path));
    std::string expected = original;
    expected.replace(2, 4, fromHex("00 00 00 00"));
    EXPECT_EQ(readBytes(path), expected);
    // When the Tests file is back, so is everything.
    StudentRecords back;
    ASSERT_EQ(loadStudents(back, wide, path).status, LoadResult::Status::Loaded);
    full.currentSubject = ArithmeticSubject;
    expectSameRecords(back, full);
    EXPECT_TRUE(back.students[0].extraResults.empty());

    // A record narrower than the bank gets zeros for the subjects it lacks. Records
    // of different widths may share a file: a student added while the bank was smaller.
    records.students[1].extraResults.clear();
    ASSERT_FALSE(saveStudents(records, path));
    ASSERT_EQ(loadStudents(back, wide, path).status, LoadResult::Status::Loaded);
    ASSERT_EQ(back.students[1].results.size(), 19u);
    EXPECT_EQ(back.students[1].results[5].high[1], 105);
    EXPECT_EQ(back.students[1].results[6].high[1], 0);
    EXPECT_EQ(back.students[0].results[18].high[1], 118);

    // A current subject that no record has results for is damage.
    std::string bytes = original;
    bytes.replace(2, 4, fromHex("13 00 00 00"));
    writeBytes(path, bytes);
    expectDamagedAt(path, defaults, 2);
}

TEST(StudentsFile, RostersRoundTripThroughWindows1252OrAreNotSaved)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = defaultTestBank();
    StudentRecords records = sampleRoster(5);
    // The longest names: the limit counts Windows-1252 bytes, not UTF-8 bytes.
    records.students[2].name = std::string(65535, 'a');
    records.students.push_back(newStudent(5));
    for (int i = 0; i < 30000; ++i) {
        records.students.back().name += "\u20AC";
    }
    records.students.push_back(newStudent(5));
    records.students.back().name = "Kim \U0001F600";
    ASSERT_FALSE(saveStudents(records, path));
    std::string bytes = readBytes(path);
    EXPECT_EQ(hex(bytes.substr(10, 5)), "03 00 5A 6F EB");

    // Read through a window smaller than the file. Blanks around a name are kept;
    // only the screens trim.
    StudentRecords loaded;
    ASSERT_EQ(loadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_EQ(loaded.currentSubjectName, "Music");
    records.students.back().name = "Kim ?";
    expectSameRecords(loaded, records);

    // A name beyond the limit is refused before anything is written.
    records.students[3].name = std::string(65536, 'b');
    const std::optional<FileError> tooLong = saveStudents(records, path);
    ASSERT_TRUE(tooLong);
    EXPECT_EQ(tooLong->kind, FileError::Kind::TooLong);
    EXPECT_NE(tooLong->message().find("student 4"), std::string::npos) << tooLong->message();
    EXPECT_EQ(readBytes(path), bytes);

    // Bytes after the data are not read, however far into the file they start;
    // a file too short for its counts is still refused.
    StudentRecords whole;
    ASSERT_EQ(loadStudents(whole, bank, path).status, LoadResult::Status::Loaded);
    for (const std::string &after : {std::string(1, '\0'), std::string(70000, '\xFF')}) {
        writeBytes(path, bytes + after);
        ASSERT_EQ(loadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
        expectSameRecords(loaded, whole);
    }
    writeBytes(path, bytes.substr(0, bytes.size() - 1));
    expectDamagedAt(path, bank, bytes.size() - 2, true);
    // Damage found after the first window is named by its offset in the file.
    const std::size_t lastLevel = bytes.size() - (2 + 10 + 6 * 52 + 2);
    ASSERT_GT(lastLevel, 65536u);
    std::string badLevel = bytes;
    badLevel[lastLevel] = 13;
    writeBytes(path, badLevel);
    expectDamagedAt(path, bank, lastLevel);

    // A nonzero boolean other than -1 still reads as true.
    bytes[0] = 1;
    bytes[1] = 0;
    writeBytes(path, bytes);
    ASSERT_EQ(loadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_TRUE(loaded.showByStudent);
}
