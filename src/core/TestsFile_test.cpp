#include "core/TestsFile.h"

#include "core/AtomicFile.h"
#include "core/CoreTesting.h"
#include "core/Cp1252.h"
#include "core/DefaultBank.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

std::size_t TextBytes(const std::string &text)
{
    return 2 + Utf8ToCp1252(text).size();
}

// Where each part of the file starts for a given bank, worked out from its texts.
struct Layout {
    std::size_t questionMax = 0;
    std::vector<std::size_t> items; // the descriptor of each subject's questions
    std::size_t limits = 0;
    std::size_t arithLow1 = 0;
    std::size_t arithOps = 0;
    std::size_t arithSwitch = 0;
    std::size_t end = 0;
};

Layout LayoutOf(const TestBank &bank)
{
    Layout layout;
    std::size_t at = 4;
    for (const Subject &subject : bank.Subjects) {
        at += TextBytes(subject.Name) + 2;
    }
    layout.questionMax = at;
    at += 4;
    for (const SubjectQuestions &questions : bank.QuestionBank) {
        layout.items.push_back(at);
        at += 18;
        for (const std::vector<Question> &level : questions.Items()) {
            for (const Question &q : level) {
                at += TextBytes(q.Text) + TextBytes(q.Answer) + TextBytes(q.Wrong1) +
                      TextBytes(q.Wrong2) + TextBytes(q.Wrong3);
            }
        }
    }
    layout.limits = at;
    layout.arithLow1 = at + 56 * bank.Limits.size();
    layout.arithOps = layout.arithLow1 + 4 * 496;
    at = layout.arithOps;
    for (const std::string &ops : bank.ArithOps) {
        at += TextBytes(ops);
    }
    layout.arithSwitch = at;
    layout.end = at + 52;
    return layout;
}

int32_t Int32At(const std::string &bytes, std::size_t at)
{
    uint32_t value = 0;
    for (int i = 3; i >= 0; --i) {
        value = (value << 8) | static_cast<unsigned char>(bytes.at(at + i));
    }
    return static_cast<int32_t>(value);
}

// Seven subjects, 21 slots, texts outside ASCII and values in every odd corner.
TestBank GrownBank()
{
    TestBank bank = DefaultTestBank();
    for (const char *name : {"Zo\u00EB", "\u00C5ngstr\u00F6m \u20AC"}) {
        AddSubject(bank, name);
        bank.Limits.back().Seconds = 999;
    }
    ResizeQuestionSlots(bank, 20);
    bank.QuestionBank[6].Items()[12][20] = {"Caf\u00E9?", "\u00BD", "\u00BE", "", "x"};
    bank.Limits[6].LastQuestion[12] = 20;
    bank.Limits[7].Seconds = 5;
    bank.Subjects[7].AdjacentLevels = true;
    bank.ArithLow1[30][3] = -7;
    bank.ArithHigh2[13][0] = 2147483647;
    bank.ArithOps[12] = "";
    bank.ArithSwitch[12][SwitchBlanks] = true;
    return bank;
}

// A small valid file: every kind of field, few bytes.
TestBank SmallBank()
{
    TestBank bank = DefaultTestBank();
    ResizeQuestionSlots(bank, 1);
    for (SubjectLimits &limits : bank.Limits) {
        for (int32_t &last : limits.LastQuestion) {
            last = std::min(last, 1);
        }
    }
    bank.QuestionBank[1].Items()[0][1] = {"t", "a", "b", "c", "\u00E9"};
    return bank;
}

TestBank Sentinel()
{
    TestBank bank = DefaultTestBank();
    bank.Subjects[0].Name = "untouched";
    return bank;
}

void ExpectDamagedAt(const std::filesystem::path &path, std::size_t offset)
{
    TestBank bank = Sentinel();
    const LoadResult result = LoadTests(bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    EXPECT_EQ(result.error->path, path.string());
    EXPECT_EQ(result.error->offset, offset) << result.error->message();
    ExpectSameBank(bank, Sentinel());
}

void PatchInt32(std::string &bytes, std::size_t at, int32_t value)
{
    for (int i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<char>((static_cast<uint32_t>(value) >> (8 * i)) & 0xFF);
    }
}

} // namespace

TEST(TestsFile, DefaultFileHasTheLayoutsFixedSizes)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    const TestBank bank = DefaultTestBank();
    ASSERT_FALSE(SaveTests(bank, path));
    const std::string bytes = ReadBytes(path);
    const Layout layout = LayoutOf(bank);

    ASSERT_EQ(bytes.size(), layout.end);
    EXPECT_EQ(Hex(bytes.substr(0, 4)), "05 00 00 00");
    EXPECT_EQ(Hex(bytes.substr(4, 20)), Hex("\x0A\0Arithmetic\0\0\x08\0Spel"s));
    EXPECT_EQ(Hex(bytes.substr(layout.questionMax, 4)), "0B 00 00 00");
    for (std::size_t s = 0; s < 6; ++s) {
        EXPECT_EQ(Hex(bytes.substr(layout.items[s], 18)),
                  "02 00 0C 00 00 00 00 00 00 00 0D 00 00 00 00 00 00 00");
    }
    // Arithmetic's slots are never used: ten zero bytes each.
    EXPECT_EQ(layout.items[1] - layout.items[0], 18u + 156 * 10);
    EXPECT_EQ(bytes.substr(layout.items[0] + 18, 156 * 10), std::string(1560, '\0'));

    EXPECT_EQ(layout.arithLow1 - layout.limits, 336u);
    for (int level = 0; level < LevelCount; ++level) {
        EXPECT_EQ(Int32At(bytes, layout.limits + 4 * level), -1);
        EXPECT_EQ(Int32At(bytes, layout.limits + 56 + 4 * level), 11);
        EXPECT_EQ(Int32At(bytes, layout.limits + 5 * 56 + 4 * level), 5);
    }
    EXPECT_EQ(Int32At(bytes, layout.limits + 52), 30);

    // Range tables go operation by operation, 31 rows each.
    const auto range = [&](int table, int op, int row) {
        return Int32At(bytes, layout.arithLow1 + 496 * table + 4 * (31 * op + row));
    };
    EXPECT_EQ(range(0, 0, 0), 0);
    EXPECT_EQ(range(1, 0, 0), 1);
    EXPECT_EQ(range(3, 0, 0), 4);
    EXPECT_EQ(range(0, 2, 6), 6);
    EXPECT_EQ(range(1, 2, 6), 6);
    EXPECT_EQ(range(2, 2, 6), 2);
    EXPECT_EQ(range(3, 2, 6), 12);
    EXPECT_EQ(range(0, 3, 12), 1);
    EXPECT_EQ(range(0, 3, 13), 0);
    EXPECT_EQ(range(1, 3, 2), 3);

    EXPECT_EQ(Hex(bytes.substr(layout.arithOps, 10)), "01 00 2B 03 00 2B 2D 78 04 00");
    EXPECT_EQ(bytes.size() - layout.arithSwitch, 52u);
    const std::string no = "00 00", yes = "FF FF";
    std::string column = no;
    for (int level = 1; level < LevelCount; ++level) {
        column += " " + (level <= 5 ? yes : no);
    }
    EXPECT_EQ(Hex(bytes.substr(layout.arithSwitch)), column + " " + column);
}

TEST(TestsFile, QuestionsAreWrittenSlotByLevelAndEmptyTextsAsTwoZeroBytes)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    TestBank bank = DefaultTestBank();
    for (SubjectQuestions &questions : bank.QuestionBank) {
        for (std::vector<Question> &level : questions.Items()) {
            std::fill(level.begin(), level.end(), Question{});
        }
    }
    bank.Subjects[5].Name = "";
    bank.QuestionBank[1].Items()[1][0].Text = "L1";
    bank.QuestionBank[1].Items()[0][1].Wrong3 = "S1";
    ASSERT_FALSE(SaveTests(bank, path));
    const std::string bytes = ReadBytes(path);
    const Layout layout = LayoutOf(bank);

    // Science's empty name, then its AdjacentLevels.
    EXPECT_EQ(Hex(bytes.substr(layout.questionMax - 4, 4)), "00 00 FF FF");
    const std::size_t first = layout.items[1] + 18;
    EXPECT_EQ(bytes.substr(first, 10), std::string(10, '\0'));
    EXPECT_EQ(Hex(bytes.substr(first + 10, 12)), "02 00 4C 31 00 00 00 00 00 00 00 00");
    // Slot 1 of level K follows all thirteen levels of slot 0.
    EXPECT_EQ(Hex(bytes.substr(first + 2 + 13 * 10 + 8, 4)), "02 00 53 31");
}

TEST(TestsFile, BanksRoundTripExactly)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";

    TestBank missing = Sentinel();
    const LoadResult first = LoadTests(missing, path);
    EXPECT_EQ(first.status, LoadResult::Status::Missing);
    ExpectSameBank(missing, DefaultTestBank());
    EXPECT_FALSE(std::filesystem::exists(path));

    for (const TestBank &bank : {DefaultTestBank(), GrownBank(), SmallBank()}) {
        ASSERT_FALSE(SaveTests(bank, path));
        TestBank loaded = Sentinel();
        const LoadResult result = LoadTests(loaded, path);
        ASSERT_EQ(result.status, LoadResult::Status::Loaded) << result.error->message();
        ExpectSameBank(loaded, bank);
        // Saving over the longer file of the previous round leaves exactly the new length.
        EXPECT_EQ(std::filesystem::file_size(path), LayoutOf(bank).end);
    }

    const TestBank grown = GrownBank();
    ASSERT_FALSE(SaveTests(grown, path));
    const std::string bytes = ReadBytes(path);
    const Layout layout = LayoutOf(grown);
    EXPECT_EQ(Hex(bytes.substr(layout.questionMax - 21, 21)),
              "03 00 5A 6F EB 00 00 0A 00 C5 6E 67 73 74 72 F6 6D 20 80 FF FF");
    EXPECT_EQ(Hex(bytes.substr(layout.items[7], 6)), "02 00 15 00 00 00");
    // Column 0 ends with level 12 switched off; column 1 ends with it switched on.
    EXPECT_EQ(Hex(bytes.substr(layout.arithSwitch + 2 * 12, 2)), "00 00");
    EXPECT_EQ(Hex(bytes.substr(layout.end - 2)), "FF FF");
    // Rows beyond the levels are written too, at the end of their operation.
    EXPECT_EQ(Int32At(bytes, layout.arithLow1 + 4 * (31 * 3 + 30)), -7);
    EXPECT_EQ(Int32At(bytes, layout.arithLow1 + 3 * 496 + 4 * 13), 2147483647);
}

TEST(TestsFile, TextsOutsideWindows1252AreSavedAsQuestionMarks)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    TestBank bank = DefaultTestBank();
    bank.Subjects[2].Name = "Geo \U0001F30D";
    bank.QuestionBank[3].Items()[4][2].Answer = "\u4E2D";
    ASSERT_FALSE(SaveTests(bank, path));
    TestBank loaded;
    ASSERT_EQ(LoadTests(loaded, path).status, LoadResult::Status::Loaded);
    EXPECT_EQ(loaded.Subjects[2].Name, "Geo ?");
    EXPECT_EQ(loaded.QuestionBank[3].Items()[4][2].Answer, "?");
}

TEST(TestsFile, EveryTruncationAndTrailingByteIsRejected)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    ASSERT_FALSE(SaveTests(SmallBank(), path));
    const std::string bytes = ReadBytes(path);

    // Cut one byte at a time from the end, the cheapest way to get every prefix on disk.
    for (std::size_t length = bytes.size(); length-- > 0;) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        TestBank bank;
        bank.Subjects.push_back({"untouched", false});
        const LoadResult result = LoadTests(bank, path);
        ASSERT_EQ(result.status, LoadResult::Status::Failed);
        ASSERT_EQ(result.error->kind, FileError::Kind::Damaged);
        ASSERT_LE(*result.error->offset, length);
        ASSERT_EQ(bank.Subjects.size(), 1u);
        ASSERT_EQ(bank.Subjects[0].Name, "untouched");
    }
    WriteBytes(path, bytes + "\x01"s);
    ExpectDamagedAt(path, bytes.size());
}

TEST(TestsFile, CountsAndBoundsThatDisagreeAreRejected)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    const TestBank bank = SmallBank();
    ASSERT_FALSE(SaveTests(bank, path));
    const std::string good = ReadBytes(path);
    const Layout layout = LayoutOf(bank);
    const std::size_t descriptor = layout.items[2];
    const std::size_t limits = layout.limits + 56 * 3;

    const struct {
        std::size_t offset;
        int32_t value;
        std::size_t damageAt;
    } damages[] = {
        {0, -1, 0},
        {0, 4, 0}, // fewer than the six built-in subjects
        {0, 2147483647, 0},
        // A seventh subject takes its name from QuestionMax and the descriptor, and
        // QuestionMax then comes out as 512.
        {0, 6, layout.questionMax + 5},
        {layout.questionMax, -1, layout.questionMax},
        {layout.questionMax, 2147483647, layout.questionMax},
        {layout.questionMax, 0, layout.items[0] + 2}, // disagrees with the descriptors
        {descriptor + 2, 3, descriptor + 2},
        {descriptor + 6, 1, descriptor + 6},
        {descriptor + 10, 12, descriptor + 10},
        {descriptor + 14, -1, descriptor + 14},
        {limits + 4 * 7, 2, limits + 4 * 7}, // LastQuestion beyond QuestionMax
        {limits + 4 * 7, -2, limits + 4 * 7},
        {limits + 52, 0, limits + 52}, // a test of no time
    };
    for (const auto &damage : damages) {
        SCOPED_TRACE(std::to_string(damage.offset) + " " + std::to_string(damage.value));
        std::string bytes = good;
        PatchInt32(bytes, damage.offset, damage.value);
        WriteBytes(path, bytes);
        ExpectDamagedAt(path, damage.damageAt);
    }

    std::string bytes = good;
    bytes[descriptor] = 1; // a one-dimensional question table
    WriteBytes(path, bytes);
    ExpectDamagedAt(path, descriptor);

    // Any nonzero boolean reads as true.
    bytes = good;
    bytes[4 + 2 + 10] = 1;
    bytes[4 + 2 + 10 + 1] = 0;
    WriteBytes(path, bytes);
    TestBank loaded;
    ASSERT_EQ(LoadTests(loaded, path).status, LoadResult::Status::Loaded);
    EXPECT_TRUE(loaded.Subjects[0].AdjacentLevels);
}

TEST(TestsFile, AFailedOrRefusedSaveLeavesTheOldFile)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    ASSERT_FALSE(SaveTests(SmallBank(), path));
    const std::string old = ReadBytes(path);

    {
        const InjectedSaveFault fault({SaveStep::Write, ENOSPC, 1});
        const std::optional<FileError> error = SaveTests(GrownBank(), path);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
        EXPECT_NE(error->message().find("No space left on device"), std::string::npos);
    }
    EXPECT_EQ(ReadBytes(path), old);

    TestBank bank = DefaultTestBank();
    bank.QuestionBank[4].Items()[7][3].Wrong2 = std::string(65535, 'w');
    ASSERT_FALSE(SaveTests(bank, path));
    const std::string longest = ReadBytes(path);
    bank.QuestionBank[4].Items()[7][3].Wrong2 += "\u00E9";
    const std::optional<FileError> tooLong = SaveTests(bank, path);
    ASSERT_TRUE(tooLong);
    EXPECT_EQ(tooLong->kind, FileError::Kind::TooLong);
    EXPECT_NE(tooLong->message().find("second wrong answer of question 4 at level 7 of subject "
                                      "\"Music\""),
              std::string::npos)
        << tooLong->message();
    EXPECT_EQ(ReadBytes(path), longest);

    // A bank the loader would refuse is not written either.
    bank = DefaultTestBank();
    bank.Limits[2].LastQuestion[0] = 12;
    const std::optional<FileError> refused = SaveTests(bank, path);
    ASSERT_TRUE(refused);
    EXPECT_EQ(ReadBytes(path), longest);
    for (const std::string &name : dir.entries()) {
        EXPECT_EQ(name, "Tavrino_Tests.dat");
    }
}

TEST(TestsFile, AnUnreadableFileIsReportedAsSuch)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    std::filesystem::create_directory(path);
    TestBank bank = Sentinel();
    const LoadResult result = LoadTests(bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    EXPECT_EQ(result.error->kind, FileError::Kind::Unreadable);
    EXPECT_NE(result.error->message().find("Is a directory"), std::string::npos);
    ExpectSameBank(bank, Sentinel());
}

TEST(TestsFile, LoadedQuestionsAreDecodedWhenAskedForAndSavedBackExactly)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    TestBank bank = DefaultTestBank();
    constexpr int slots = 300;
    ResizeQuestionSlots(bank, slots - 1);
    for (int s = 1; s <= bank.SubjectMax; ++s) {
        for (int level = 0; level < LevelCount; ++level) {
            bank.Limits[s].LastQuestion[level] = slots - 1;
            for (int slot = 0; slot < slots; ++slot) {
                Question &question = bank.QuestionBank[s].Items()[level][slot];
                question.Text = std::string(1 + (slot * 7 + level) % 97, 'a') + "\u00EB";
                question.Answer = std::to_string(slot * 13 + level);
            }
        }
    }
    ASSERT_FALSE(SaveTests(bank, path));
    const std::string bytes = ReadBytes(path);

    TestBank loaded;
    ASSERT_EQ(LoadTests(loaded, path).status, LoadResult::Status::Loaded);
    for (const SubjectQuestions &questions : loaded.QuestionBank) {
        EXPECT_TRUE(questions.Stored());
    }
    // Saved untouched, the questions are copied, not decoded.
    ASSERT_FALSE(SaveTests(loaded, path));
    EXPECT_EQ(ReadBytes(path), bytes);
    EXPECT_TRUE(loaded.QuestionBank[3].Stored());

    // One subject edited, every subject grown by a slot, a copy changed apart:
    // the stored subjects stay stored and the file has all of it.
    loaded.QuestionBank[2].Items()[7][299].Wrong3 = "\u00C5";
    bank.QuestionBank[2].Items()[7][299].Wrong3 = "\u00C5";
    ResizeQuestionSlots(loaded, slots);
    ResizeQuestionSlots(bank, slots);
    TestBank copy = loaded;
    copy.QuestionBank[4].Items()[0][0].Text = "only in the copy";
    EXPECT_TRUE(loaded.QuestionBank[4].Stored());
    EXPECT_EQ(loaded.QuestionBank[4].SlotCount(), std::size_t{slots + 1});
    ASSERT_FALSE(SaveTests(loaded, path));
    TestBank reloaded;
    ASSERT_EQ(LoadTests(reloaded, path).status, LoadResult::Status::Loaded);
    ExpectSameBank(reloaded, bank);
    ExpectSameBank(loaded, bank);

    // Shrinking keeps the slots that remain.
    ResizeQuestionSlots(reloaded, 9);
    ResizeQuestionSlots(bank, 9);
    ExpectSameBank(reloaded, bank);

    // A cut in the range tables after the questions: the value it splits is named.
    const std::size_t cut = bytes.size() - 1000;
    WriteBytes(path, bytes.substr(0, cut));
    TestBank damaged = Sentinel();
    const LoadResult refused = LoadTests(damaged, path);
    ASSERT_EQ(refused.status, LoadResult::Status::Failed);
    EXPECT_EQ(refused.error->kind, FileError::Kind::Damaged);
    EXPECT_LE(*refused.error->offset, cut);
    EXPECT_GT(*refused.error->offset, cut - 4);
    ExpectSameBank(damaged, Sentinel());
}
