// Damaged files: valid Tests and Students files mangled in many seeded ways must
// either load, and then survive a save and a second load unchanged, or be refused
// as damaged at an offset inside the file. Runs on bytes in memory; a sample of
// the cases also goes through the disk.
#include "core/ByteIO.h"
#include "core/CoreTesting.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr std::uint32_t Seed = 20240611;

const std::filesystem::path TestsPath = "/school/data/Tavrino_Tests.dat";
const std::filesystem::path StudentsPath = "/school/data/Tavrino_Students.dat";

// Two added subjects and two more question slots than the defaults.
TestBank GrownBank()
{
    TestBank bank = DefaultTestBank();
    for (const char *name : {"Fran\u00E7ais", "\u20AC & \u00BD"}) {
        AddSubject(bank, name);
        bank.Subjects.back().AdjacentLevels = true;
        bank.Limits.back().Seconds = 45;
    }
    ResizeQuestionSlots(bank, 13);
    for (int slot = 0; slot <= 13; ++slot) {
        bank.QuestionBank[6].Items()[slot % LevelCount][slot] = {
            "Caf\u00E9 " + std::to_string(slot) + "?", "oui", "non", "\u00BF", ""};
    }
    bank.Limits[6].LastQuestion[0] = 13;
    bank.Limits[7].Seconds = 1;
    return bank;
}

StudentRecords Roster(int32_t subjectMax)
{
    StudentRecords records;
    records.ShowByStudent = false;
    records.CurrentSubject = subjectMax;
    for (const char *name : {"Zo\u00EB", " \u00C5ngstr\u00F6m ", "", "\u20AC\u2122", "Ann"}) {
        records.Students.push_back(NewStudent(subjectMax));
        records.Students.back().Name = name;
    }
    records.Students[1].Level = 12;
    records.Students[3].Current = true;
    records.Students[2].Results[subjectMax].High[12] = 32767;
    records.Students[4].Results[0].Last[0] = -32768;
    records.Students[0].Results[3].Last[7] = 17;
    return records;
}

bool SameRecords(const StudentRecords &a, const StudentRecords &b)
{
    const auto key = [](const Student &s) { return std::tie(s.Name, s.Level, s.Current); };
    if (std::tie(a.ShowByStudent, a.CurrentSubject, a.CurrentSubjectName) !=
            std::tie(b.ShowByStudent, b.CurrentSubject, b.CurrentSubjectName) ||
        a.Students.size() != b.Students.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.Students.size(); ++i) {
        const std::vector<SubjectResults> &x = a.Students[i].Results;
        const std::vector<SubjectResults> &y = b.Students[i].Results;
        if (key(a.Students[i]) != key(b.Students[i]) || x.size() != y.size()) {
            return false;
        }
        for (std::size_t s = 0; s < x.size(); ++s) {
            if (x[s].Last != y[s].Last || x[s].High != y[s].High) {
                return false;
            }
        }
    }
    return true;
}

// Where a valid file keeps its 32-bit counts and bounds and its 16-bit counts.
struct CountFields {
    std::vector<std::size_t> wide;
    std::vector<std::size_t> narrow;
};

// Reads a valid file field by field, noting where its counts are.
struct FieldWalk {
    explicit FieldWalk(const std::string &bytes) : in(bytes) {}
    int32_t count32()
    {
        fields.wide.push_back(in.offset());
        return in.int32();
    }
    int16_t count16()
    {
        fields.narrow.push_back(in.offset());
        return in.int16();
    }
    void text()
    {
        fields.narrow.push_back(in.offset());
        in.text();
    }

    ByteReader in;
    CountFields fields;
};

CountFields TestsCountFields(const std::string &bytes)
{
    FieldWalk walk(bytes);
    const int32_t subjectMax = walk.count32();
    for (int32_t s = 0; s <= subjectMax; ++s) {
        walk.text();
        walk.in.bool16();
    }
    const int32_t questionMax = walk.count32();
    for (int32_t s = 0; s <= subjectMax; ++s) {
        walk.count16();
        for (int i = 0; i < 4; ++i) {
            walk.count32();
        }
        for (int32_t t = 0; t < (questionMax + 1) * LevelCount * 5; ++t) {
            walk.text();
        }
    }
    for (int32_t i = 0; i < (subjectMax + 1) * (LevelCount + 1); ++i) {
        walk.count32();
    }
    for (int i = 0; i < 4 * RangeRowCount * OperationCount; ++i) {
        walk.in.int32();
    }
    for (int level = 0; level < LevelCount; ++level) {
        walk.text();
    }
    return walk.fields;
}

CountFields StudentsCountFields(const std::string &bytes)
{
    FieldWalk walk(bytes);
    walk.in.bool16();
    walk.count32();
    const int32_t studentMax = walk.count32();
    for (int32_t i = 0; i <= studentMax; ++i) {
        walk.text();
        walk.count16();
        walk.count16();
        const int32_t subjects = walk.count32();
        walk.count32();
        for (int32_t k = 0; k < subjects * 2 * LevelCount; ++k) {
            walk.in.int16();
        }
        walk.in.bool16();
    }
    return walk.fields;
}

struct Sample {
    std::string bytes;
    CountFields fields;
};

// Applies one to three damages of the kinds a disk, a copy or a bad program cause.
class Mutator {
public:
    explicit Mutator(std::vector<std::string> donors) : m_rng(Seed), m_donors(std::move(donors)) {}

    std::string damage(const Sample &sample)
    {
        std::string bytes = sample.bytes;
        for (std::size_t n = 1 + below(3); n-- > 0;) {
            damageOnce(bytes, sample.fields);
        }
        return bytes;
    }

private:
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_rng() % bound; }

    // A little-endian value of width bytes, as far as the file reaches.
    static void write(std::string &bytes, std::size_t at, std::uint32_t value, std::size_t width)
    {
        for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i) {
            bytes[at + i] = static_cast<char>(value >> (8 * i));
        }
    }

    void damageOnce(std::string &bytes, const CountFields &fields)
    {
        static constexpr std::array<std::uint32_t, 7> HugeCounts = {
            0x7FFFFFFF, 0xFFFFFFFF, 0x80000000, 0x40000000, 0xFFFFFFFE, 0x00010000, 0x0000FFFF};
        const std::size_t at = below(bytes.size());
        const std::string &donor = m_donors[below(m_donors.size())];
        switch (below(7)) {
        case 0: // flipped bits
            if (!bytes.empty()) {
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
            }
            break;
        case 1: // an overwritten byte, often with a value at an edge
            if (!bytes.empty()) {
                static constexpr std::array<char, 4> Edges = {'\0', '\xFF', '\x7F', '\x80'};
                bytes[at] = below(2) ? Edges[below(4)] : static_cast<char>(m_rng());
            }
            break;
        case 2: // cut short
            bytes.resize(at);
            break;
        case 3: { // a piece of another file spliced over or into this one
            const std::size_t from = below(donor.size());
            const std::string piece = donor.substr(from, 1 + below(donor.size() - from));
            if (below(2)) {
                bytes.replace(at, piece.size(), piece);
            } else {
                bytes = bytes.substr(0, at) + donor.substr(from);
            }
            break;
        }
        case 4: { // a range written twice
            const std::size_t length = 1 + below(std::min<std::size_t>(bytes.size() - at, 600));
            bytes.insert(below(bytes.size() + 1), bytes.substr(at, length));
            break;
        }
        case 5: // a 32-bit count or bound made huge or negative
            if (!fields.wide.empty()) {
                const std::size_t field = fields.wide[below(fields.wide.size())];
                write(bytes, field,
                      below(4) ? HugeCounts[below(HugeCounts.size())]
                               : static_cast<std::uint32_t>(m_rng()),
                      4);
            }
            break;
        default: // a 16-bit count, at most 64 KiB too large
            if (!fields.narrow.empty()) {
                const std::size_t field = fields.narrow[below(fields.narrow.size())];
                write(bytes, field, below(2) ? 0xFFFF : m_rng() & 0xFFFF, 2);
            }
            break;
        }
    }

    std::mt19937 m_rng;
    std::vector<std::string> m_donors;
};

void ExpectDamageInside(const LoadResult &result, const std::filesystem::path &path,
                        std::size_t size)
{
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    EXPECT_EQ(result.error->path, path.string());
    ASSERT_TRUE(result.error->offset);
    EXPECT_LE(*result.error->offset, size);
    EXPECT_NE(result.error->message().find(path.string()), std::string::npos);
}

// Loads the bytes; a file that loads is saved and loaded again and must come back equal.
bool CheckTests(const std::string &bytes)
{
    TestBank bank;
    bank.Subjects.push_back({"untouched", false});
    const LoadResult result = DecodeTestsFile(bank, bytes, TestsPath);
    if (result.status != LoadResult::Status::Loaded) {
        ExpectDamageInside(result, TestsPath, bytes.size());
        EXPECT_EQ(bank.Subjects.size(), 1u);
        EXPECT_EQ(bank.Subjects[0].Name, "untouched");
        return false;
    }
    // Decoded, the questions are encoded anew rather than copied as they were read.
    for (const SubjectQuestions &questions : bank.QuestionBank) {
        questions.Items();
    }
    std::string saved;
    EXPECT_FALSE(EncodeTestsFile(bank, TestsPath, saved));
    // Texts come back byte for byte, so only nonzero booleans other than -1 change.
    EXPECT_EQ(saved.size(), bytes.size());
    TestBank again;
    EXPECT_EQ(DecodeTestsFile(again, saved, TestsPath).status, LoadResult::Status::Loaded);
    ExpectSameBank(again, bank);
    return true;
}

bool CheckStudents(const std::string &bytes, const TestBank &bank)
{
    StudentRecords records;
    records.CurrentSubjectName = "untouched";
    const LoadResult result = DecodeStudentsFile(records, bank, bytes, StudentsPath);
    if (result.status != LoadResult::Status::Loaded) {
        ExpectDamageInside(result, StudentsPath, bytes.size());
        EXPECT_TRUE(records.Students.empty());
        EXPECT_EQ(records.CurrentSubjectName, "untouched");
        return false;
    }
    std::string saved;
    EXPECT_FALSE(EncodeStudentsFile(records, StudentsPath, saved));
    EXPECT_EQ(saved.size(), bytes.size());
    StudentRecords again;
    EXPECT_EQ(DecodeStudentsFile(again, bank, saved, StudentsPath).status,
              LoadResult::Status::Loaded);
    EXPECT_TRUE(SameRecords(again, records));
    return true;
}

std::string Encoded(const TestBank &bank)
{
    std::string bytes;
    EXPECT_FALSE(EncodeTestsFile(bank, TestsPath, bytes));
    return bytes;
}

std::string Encoded(const StudentRecords &records)
{
    std::string bytes;
    EXPECT_FALSE(EncodeStudentsFile(records, StudentsPath, bytes));
    return bytes;
}

void ExpectSameOutcome(const LoadResult &fromMemory, const LoadResult &fromDisk)
{
    ASSERT_EQ(fromMemory.status, fromDisk.status);
    if (fromMemory.error) {
        ASSERT_TRUE(fromDisk.error);
        EXPECT_EQ(fromMemory.error->offset, fromDisk.error->offset);
        EXPECT_EQ(fromMemory.error->cause, fromDisk.error->cause);
    }
}

// The loaders read a file through buffers of their own rather than whole: the
// same bytes from the disk must give the same bank, records or error.
void ExpectSameFromDisk(const std::string &bytes, const TestBank *studentsBank,
                        const ScratchDir &dir)
{
    if (studentsBank) {
        const auto path = dir / "Tavrino_Students.dat";
        WriteBytes(path, bytes);
        StudentRecords fromMemory;
        StudentRecords fromDisk;
        ExpectSameOutcome(DecodeStudentsFile(fromMemory, *studentsBank, bytes, path),
                          LoadStudents(fromDisk, *studentsBank, path));
        EXPECT_TRUE(SameRecords(fromMemory, fromDisk));
        return;
    }
    const auto path = dir / "Tavrino_Tests.dat";
    WriteBytes(path, bytes);
    TestBank fromMemory;
    TestBank fromDisk;
    ExpectSameOutcome(DecodeTestsFile(fromMemory, bytes, path), LoadTests(fromDisk, path));
    ExpectSameBank(fromMemory, fromDisk);
}

} // namespace

TEST(FileMutation, DamagedFilesLoadWholeOrAreRefusedWithTheOffset)
{
    const TestBank defaults = DefaultTestBank();
    const TestBank grown = GrownBank();
    TestBank small = defaults;
    ResizeQuestionSlots(small, 0);
    for (SubjectLimits &limits : small.Limits) {
        limits.LastQuestion.fill(0);
    }
    const std::vector<std::string> valid = {Encoded(defaults), Encoded(grown), Encoded(small),
                                            Encoded(Roster(defaults.SubjectMax)),
                                            Encoded(Roster(grown.SubjectMax))};
    const struct {
        Sample sample;
        const TestBank *studentsBank; // null for a Tests file
        int cases;                    // fewer for the files that take longer to load
    } kinds[] = {
        {{valid[0], TestsCountFields(valid[0])}, nullptr, 15000},
        {{valid[1], TestsCountFields(valid[1])}, nullptr, 10000},
        {{valid[2], TestsCountFields(valid[2])}, nullptr, 20000},
        {{valid[3], StudentsCountFields(valid[3])}, &defaults, 30000},
        {{valid[4], StudentsCountFields(valid[4])}, &grown, 30000},
    };
    // The walks must have found every count of the samples, or the huge counts miss them.
    ASSERT_EQ(kinds[0].sample.fields.wide.size(), 2u + 6 * 4 + 6 * 14);
    ASSERT_EQ(kinds[4].sample.fields.wide.size(), 2u + 5 * 2);

    const ScratchDir dir;
    Mutator mutator(valid);
    for (const auto &kind : kinds) {
        int loaded = 0;
        for (int i = 0; i < kind.cases && !HasFailure(); ++i) {
            const std::string bytes = mutator.damage(kind.sample);
            const bool ok =
                kind.studentsBank ? CheckStudents(bytes, *kind.studentsBank) : CheckTests(bytes);
            loaded += ok ? 1 : 0;
            if (i % 40 == 0) {
                ExpectSameFromDisk(bytes, kind.studentsBank, dir);
            }
            if (HasFailure()) {
                ADD_FAILURE() << "case " << i << " of seed " << Seed << ", " << bytes.size()
                              << " bytes from a valid file of " << kind.sample.bytes.size();
            }
        }
        // Both ways out must be taken often, or the damages are too tame or too wild.
        EXPECT_GT(loaded, kind.cases / 20) << kind.sample.bytes.size();
        EXPECT_LT(loaded, kind.cases - kind.cases / 20) << kind.sample.bytes.size();
    }
}
