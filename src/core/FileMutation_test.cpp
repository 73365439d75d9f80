// Damaged files: valid Tests and Students files mangled in many seeded ways must
// either load, and then survive a save and a second load unchanged, or be refused
// as damaged at an offset inside the file, leaving what they load into unchanged.
#include "core/ByteIO.h"
#include "core/CoreTesting.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t Seed = 20240611;

// A valid file, and where it keeps its counts and bounds, found by reading it.
struct Sample {
    std::string bytes;
    std::vector<std::size_t> wide;   // 32-bit
    std::vector<std::size_t> narrow; // 16-bit, text lengths among them
};

// Notes where the next value of in starts, among the given fields.
ByteReader &At(ByteReader &in, std::vector<std::size_t> &fields)
{
    fields.push_back(in.offset());
    return in;
}

Sample TestsSample(const TestBank &bank)
{
    Sample sample;
    EXPECT_FALSE(EncodeTestsFile(bank, "", sample.bytes));
    ByteReader in(sample.bytes);
    const int32_t subjectMax = At(in, sample.wide).int32();
    for (int32_t s = 0; s <= subjectMax; ++s) {
        At(in, sample.narrow).text();
        in.bool16();
    }
    const int32_t questionMax = At(in, sample.wide).int32();
    for (int32_t s = 0; s <= subjectMax; ++s) {
        At(in, sample.narrow).int16();
        for (int i = 0; i < 4; ++i) {
            At(in, sample.wide).int32();
        }
        for (int32_t t = 0; t < (questionMax + 1) * LevelCount * 5; ++t) {
            At(in, sample.narrow).text();
        }
    }
    for (int32_t i = 0; i < (subjectMax + 1) * (LevelCount + 1); ++i) {
        At(in, sample.wide).int32();
    }
    for (int i = 0; i < 4 * RangeRowCount * OperationCount; ++i) {
        in.int32();
    }
    for (int level = 0; level < LevelCount; ++level) {
        At(in, sample.narrow).text();
    }
    return sample;
}

Sample StudentsSample(const StudentRecords &records)
{
    Sample sample;
    EXPECT_FALSE(EncodeStudentsFile(records, "", sample.bytes));
    ByteReader in(sample.bytes);
    in.bool16();
    At(in, sample.wide).int32();
    const int32_t studentMax = At(in, sample.wide).int32();
    for (int32_t i = 0; i <= studentMax; ++i) {
        At(in, sample.narrow).text();
        At(in, sample.narrow).int16();
        At(in, sample.narrow).int16();
        const int32_t subjects = At(in, sample.wide).int32();
        At(in, sample.wide).int32();
        for (int32_t k = 0; k < subjects * 2 * LevelCount + 1; ++k) { // scores, then Current
            in.int16();
        }
    }
    return sample;
}

// One to three damages of the kinds a disk, a copy or a bad program cause; donors
// are other files to take pieces from.
std::string Damage(std::mt19937 &rng, const Sample &sample, const std::vector<std::string> &donors)
{
    static constexpr std::array<std::uint32_t, 7> HugeCounts = {
        0x7FFFFFFF, 0xFFFFFFFF, 0x80000000, 0x40000000, 0xFFFFFFFE, 0x00010000, 0x0000FFFF};
    static constexpr std::array<char, 4> Edges = {'\0', '\xFF', '\x7F', '\x80'};
    const auto below = [&](std::size_t bound) { return bound == 0 ? 0 : rng() % bound; };
    std::string bytes = sample.bytes;
    // A little-endian value of width bytes at one of the fields, as far as the file reaches.
    const auto write = [&](const std::vector<std::size_t> &fields, std::uint32_t value,
                           std::size_t width) {
        const std::size_t at = fields[below(fields.size())];
        for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i) {
            bytes[at + i] = static_cast<char>(value >> (8 * i));
        }
    };
    for (std::size_t n = 1 + below(3); n-- > 0;) {
        const std::size_t at = below(bytes.size());
        const std::string &donor = donors[below(donors.size())];
        const std::size_t from = below(donor.size());
        switch (below(7)) {
        case 0: // flipped bits
            if (!bytes.empty()) {
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
            }
            break;
        case 1: // an overwritten byte, often with a value at an edge
            if (!bytes.empty()) {
                bytes[at] = below(2) ? Edges[below(4)] : static_cast<char>(rng());
            }
            break;
        case 2: // cut short
            bytes.resize(at);
            break;
        case 3: // a piece of another file spliced over or into this one
            if (below(2)) {
                const std::string piece = donor.substr(from, 1 + below(donor.size() - from));
                bytes.replace(at, piece.size(), piece);
            } else {
                bytes = bytes.substr(0, at) + donor.substr(from);
            }
            break;
        case 4: // a range written twice
            bytes.insert(
                below(bytes.size() + 1),
                bytes.substr(at, 1 + below(std::min<std::size_t>(bytes.size() - at, 600))));
            break;
        case 5: // a 32-bit count or bound made huge or negative
            write(sample.wide,
                  below(4) ? HugeCounts[below(HugeCounts.size())]
                           : static_cast<std::uint32_t>(rng()),
                  4);
            break;
        default: // a 16-bit count, at most 64 KiB too large
            write(sample.narrow, below(2) ? 0xFFFF : rng() & 0xFFFF, 2);
            break;
        }
    }
    return bytes;
}

// A refused file is refused as damaged, named, with an offset inside it.
void ExpectDamageInside(const LoadResult &result, const std::filesystem::path &path,
                        std::size_t size)
{
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    EXPECT_NE(result.error->message().find(path.string()), std::string::npos);
    ASSERT_TRUE(result.error->offset);
    EXPECT_LE(*result.error->offset, size);
}

// A file that loads is saved and loaded again and must come back equal; one that
// does not leaves the bank as it was. Returns whether it loaded.
bool CheckTests(const std::string &bytes, const std::filesystem::path &path)
{
    TestBank bank;
    bank.Subjects.push_back({"untouched", false});
    const LoadResult result = DecodeTestsFile(bank, bytes, path);
    if (!result.ok()) {
        ExpectDamageInside(result, path, bytes.size());
        EXPECT_EQ(bank.Subjects.size(), 1u);
        EXPECT_EQ(bank.Subjects[0].Name, "untouched");
        return false;
    }
    // Decoded, the questions are encoded anew rather than copied as they were read.
    for (const SubjectQuestions &questions : bank.QuestionBank) {
        questions.Items();
    }
    std::string saved;
    EXPECT_FALSE(EncodeTestsFile(bank, path, saved));
    // Texts come back byte for byte, so only nonzero booleans other than -1 change.
    EXPECT_EQ(saved.size(), bytes.size());
    TestBank again;
    EXPECT_EQ(DecodeTestsFile(again, saved, path).status, LoadResult::Status::Loaded);
    ExpectSameBank(again, bank);
    return true;
}

bool CheckStudents(const std::string &bytes, const TestBank &bank,
                   const std::filesystem::path &path)
{
    StudentRecords records;
    records.CurrentSubjectName = "untouched";
    const LoadResult result = DecodeStudentsFile(records, bank, bytes, path);
    if (!result.ok()) {
        ExpectDamageInside(result, path, bytes.size());
        EXPECT_TRUE(records.Students.empty());
        EXPECT_EQ(records.CurrentSubjectName, "untouched");
        return false;
    }
    std::string saved;
    EXPECT_FALSE(EncodeStudentsFile(records, path, saved));
    EXPECT_EQ(saved.size(), bytes.size());
    StudentRecords again;
    EXPECT_EQ(DecodeStudentsFile(again, bank, saved, path).status, LoadResult::Status::Loaded);
    ExpectSameRecords(again, records);
    EXPECT_EQ(again.CurrentSubjectName, records.CurrentSubjectName);
    return true;
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
    const struct {
        Sample sample;
        const TestBank *studentsBank; // null for a Tests file
        int cases;                    // fewer for the files that take longer to load
    } kinds[] = {
        {TestsSample(defaults), nullptr, 15000},
        {TestsSample(grown), nullptr, 10000},
        {TestsSample(small), nullptr, 20000},
        {StudentsSample(Roster(defaults.SubjectMax)), &defaults, 30000},
        {StudentsSample(Roster(grown.SubjectMax)), &grown, 30000},
    };
    // The walks must have found every count of the samples, or the huge counts miss them.
    ASSERT_EQ(kinds[0].sample.wide.size(), 2u + 6 * 4 + 6 * 14);
    ASSERT_EQ(kinds[4].sample.wide.size(), 2u + 5 * 2);

    std::vector<std::string> donors;
    for (const auto &kind : kinds) {
        donors.push_back(kind.sample.bytes);
    }
    std::mt19937 rng(Seed);
    const std::filesystem::path path = "/school/data/Tavrino.dat";
    for (const auto &kind : kinds) {
        int loaded = 0;
        for (int i = 0; i < kind.cases && !HasFailure(); ++i) {
            const std::string bytes = Damage(rng, kind.sample, donors);
            const bool ok = kind.studentsBank ? CheckStudents(bytes, *kind.studentsBank, path)
                                              : CheckTests(bytes, path);
            loaded += ok ? 1 : 0;
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
