// Damaged files: valid Tests and Students files mangled in many seeded ways must
// either load, and then survive a save and a second load unchanged, or be refused
// as damaged at an offset inside the file, leaving what they load into unchanged.
#include "core/CoreFixtures_test.h"
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

// One to three damages of the kinds a disk, a copy or a bad program cause; donors
// are other files to take pieces from. A byte set to an edge value at the top of
// a count makes it huge or negative.
std::string damage(std::mt19937 &rng, std::string bytes, const std::vector<std::string> &donors)
{
    static constexpr std::array<char, 4> Edges = {'\0', '\xFF', '\x7F', '\x80'};
    const auto below = [&](std::size_t bound) { return bound == 0 ? 0 : rng() % bound; };
    for (std::size_t n = 1 + below(3); n-- > 0;) {
        const std::size_t at = below(bytes.size());
        const std::string &donor = donors[below(donors.size())];
        const std::size_t from = below(donor.size());
        switch (below(5)) {
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
        default: // a range written twice
            bytes.insert(
                below(bytes.size() + 1),
                bytes.substr(at, 1 + below(std::min<std::size_t>(bytes.size() - at, 600))));
            break;
        }
    }
    return bytes;
}

// A refused file is refused as damaged, named, with an offset inside it.
void expectDamageInside(const LoadResult &result, const std::filesystem::path &path,
                        std::size_t size)
{
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    EXPECT_NE(result.error->message().find(path.string()), std::string::npos);
    ASSERT_TRUE(result.error->offset);
    EXPECT_LE(*result.error->offset, size);
}

// A Students file for studentsBank, or a Tests file when that is null. One that
// loads is saved and loaded again and must come back equal; one that does not
// leaves what it was loaded into as it was. Returns whether it loaded.
bool loadsWholeOrIsRefused(const std::string &bytes, const TestBank *studentsBank)
{
    const std::filesystem::path path = "/school/data/Tavrino.dat";
    TestBank bank;
    bank.subjects.push_back({"untouched", false});
    StudentRecords records;
    records.currentSubjectName = "untouched";
    const LoadResult result = studentsBank ? decodeStudentsFile(records, *studentsBank, bytes, path)
                                           : decodeTestsFile(bank, bytes, path);
    if (!result.ok()) {
        expectDamageInside(result, path, bytes.size());
        EXPECT_EQ(bank.subjects.size(), 1u);
        EXPECT_EQ(bank.subjects[0].name, "untouched");
        EXPECT_TRUE(records.students.empty());
        EXPECT_EQ(records.currentSubjectName, "untouched");
        return false;
    }
    std::string saved;
    if (studentsBank) {
        EXPECT_FALSE(encodeStudentsFile(records, path, saved));
        StudentRecords again;
        EXPECT_EQ(decodeStudentsFile(again, *studentsBank, saved, path).status,
                  LoadResult::Status::Loaded);
        expectSameRecords(again, records);
        EXPECT_EQ(again.currentSubjectName, records.currentSubjectName);
    } else {
        // Decoded, the questions are encoded anew rather than copied as they were read.
        for (const SubjectQuestions &questions : bank.questionBank) {
            questions.items();
        }
        EXPECT_FALSE(encodeTestsFile(bank, path, saved));
        TestBank again;
        EXPECT_EQ(decodeTestsFile(again, saved, path).status, LoadResult::Status::Loaded);
        expectSameBank(again, bank);
    }
    // Texts come back byte for byte, so only nonzero booleans other than -1 change,
    // and bytes after the data are left behind. Records narrower than the bank
    // are widened, which only a Students file has.
    if (!studentsBank) {
        EXPECT_LE(saved.size(), bytes.size());
    }
    return true;
}

} // namespace

TEST(FileMutation, DamagedFilesLoadWholeOrAreRefusedWithTheOffset)
{
    const TestBank defaults = defaultTestBank();
    const TestBank grown = grownBank();
    TestBank small = defaults;
    resizeQuestionSlots(small, 0);
    for (SubjectLimits &limits : small.limits) {
        limits.lastQuestion.fill(0);
    }
    const struct {
        const TestBank &bank;
        bool students; // a Students file of the sample roster for the bank, or else its Tests file
        int cases;     // fewer for the files that take longer to load
    } kinds[] = {
        {defaults, false, 15000}, {grown, false, 10000}, {small, false, 20000},
        {defaults, true, 30000},  {grown, true, 30000},
    };
    std::vector<std::string> files;
    for (const auto &kind : kinds) {
        files.emplace_back();
        ASSERT_FALSE(kind.students
                         ? encodeStudentsFile(sampleRoster(kind.bank.subjectMax), "", files.back())
                         : encodeTestsFile(kind.bank, "", files.back()));
    }
    std::mt19937 rng(Seed);
    for (std::size_t k = 0; k < files.size(); ++k) {
        const auto &kind = kinds[k];
        int loaded = 0;
        for (int i = 0; i < kind.cases && !HasFailure(); ++i) {
            const std::string bytes = damage(rng, files[k], files);
            loaded += loadsWholeOrIsRefused(bytes, kind.students ? &kind.bank : nullptr) ? 1 : 0;
            if (HasFailure()) {
                ADD_FAILURE() << "case " << i << " of seed " << Seed << ", " << bytes.size()
                              << " bytes from a valid file of " << files[k].size();
            }
        }
        // Both ways out must be taken often, or the damages are too tame or too wild.
        EXPECT_GT(loaded, kind.cases / 20) << files[k].size();
        EXPECT_LT(loaded, kind.cases - kind.cases / 20) << files[k].size();
    }
}
