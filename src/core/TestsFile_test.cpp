#include "core/TestsFile.h"

#include "core/ByteIO.h"
#include "core/CoreFixtures_test.h"
#include "core/Cp1252.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

// Where each part of the file starts for a given bank, worked out from its texts.
struct Layout {
    std::size_t questionMax = 0;
    std::vector<std::size_t> items; // the descriptor of each subject's questions
    std::size_t limits = 0, arithLow1 = 0, arithOps = 0, arithSwitch = 0, end = 0;
};

Layout layoutOf(const TestBank &bank)
{
    const auto size = [](const std::string &text) { return 2 + utf8ToCp1252(text).size(); };
    Layout layout;
    std::size_t at = 4;
    for (const Subject &subject : bank.subjects) {
        at += size(subject.name) + 2;
    }
    layout.questionMax = at;
    at += 4;
    for (const SubjectQuestions &questions : bank.questionBank) {
        layout.items.push_back(at);
        at += 18;
        for (const LevelSlots &level : questions.items()) {
            for (const Question &q : level) {
                at += size(q.text) + size(q.answer) + size(q.wrong1) + size(q.wrong2) +
                      size(q.wrong3);
            }
        }
    }
    layout.limits = at;
    layout.arithLow1 = at + 56 * bank.limits.size();
    layout.arithOps = layout.arithSwitch = layout.arithLow1 + 4 * 496;
    for (const std::string &ops : bank.arithOps) {
        layout.arithSwitch += size(ops);
    }
    layout.end = layout.arithSwitch + 52;
    return layout;
}

int32_t int32At(const std::string &bytes, std::size_t at)
{
    return ByteReader(std::string_view(bytes).substr(at, 4)).int32();
}

// A small valid file: every kind of field, few bytes.
TestBank smallBank()
{
    TestBank bank = defaultTestBank();
    resizeQuestionSlots(bank, 1);
    for (std::size_t s = SpellingSubject; s < bank.limits.size(); ++s) {
        bank.limits[s].lastQuestion.fill(1);
    }
    bank.questionBank[1].items()[0][1] = {"t", "a", "b", "c", "\u00E9"};
    return bank;
}

// A bank that a failed load must leave exactly as it was, and a load replace.
TestBank sentinel()
{
    TestBank bank;
    addSubject(bank, "untouched");
    return bank;
}

// Refused at offset, or anywhere up to it when orBefore is set.
void expectRefused(const std::filesystem::path &path, FileError::Kind kind,
                   std::optional<std::size_t> offset, bool orBefore = false)
{
    TestBank bank = sentinel();
    const LoadResult result = loadTests(bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, kind);
    EXPECT_EQ(result.error->path, path.string());
    if (offset) {
        ASSERT_TRUE(result.error->offset);
        EXPECT_TRUE(orBefore ? *result.error->offset <= *offset : *result.error->offset == *offset)
            << result.error->message();
    }
    expectSameBank(bank, sentinel());
}

} // namespace

TEST(TestsFile, FileLayout)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    ASSERT_FALSE(saveTests(defaultTestBank(), path));
    std::string bytes = readBytes(path);
    Layout layout = layoutOf(defaultTestBank());

    ASSERT_EQ(bytes.size(), layout.end);
    EXPECT_EQ(hex(bytes.substr(0, 24)), hex("\x05\0\0\0\x0A\0Arithmetic\0\0\x08\0Spel"s));
    EXPECT_EQ(hex(bytes.substr(layout.questionMax, 4)), "0B 00 00 00");
    // Two dimensions: twelve slots from 0, thirteen levels from 0.
    EXPECT_EQ(hex(bytes.substr(layout.items[5], 18)),
              "02 00 0C 00 00 00 00 00 00 00 0D 00 00 00 00 00 00 00");
    // Each subject's lastQuestion for the thirteen levels, then its seconds.
    EXPECT_EQ(int32At(bytes, layout.limits), -1);
    EXPECT_EQ(int32At(bytes, layout.limits + 52), 30);
    // Four range tables, each operation by operation, 31 rows per operation.
    const auto range = [&](int table, int op, int row) {
        return int32At(bytes, layout.arithLow1 + 496 * table + 4 * (31 * op + row));
    };
    EXPECT_EQ(range(1, 0, 0), 1);
    EXPECT_EQ(range(3, 0, 0), 4);
    EXPECT_EQ(range(2, 2, 6), 2);
    EXPECT_EQ(range(0, 3, 12), 1);
    EXPECT_EQ(hex(bytes.substr(layout.arithOps, 10)), "01 00 2B 03 00 2B 2D 78 04 00");
    std::string column = "00 00";
    for (int level = 1; level < LevelCount; ++level) {
        column += level <= 5 ? " FF FF" : " 00 00";
    }
    EXPECT_EQ(hex(bytes.substr(layout.arithSwitch)), column + " " + column);

    // Added subjects' names in Windows-1252, more slots, and values off the levels.
    ASSERT_FALSE(saveTests(grownBank(), path));
    bytes = readBytes(path);
    layout = layoutOf(grownBank());
    EXPECT_EQ(hex(bytes.substr(layout.questionMax - 21, 21)),
              "03 00 5A 6F EB 00 00 0A 00 C5 6E 67 73 74 72 F6 6D 20 80 FF FF");
    // Questions go slot by slot, the thirteen levels of a slot in turn: level K of
    // the last slot, then twelve empty questions of two zero bytes a text.
    EXPECT_EQ(hex(bytes.substr(layout.items[7] - 120 - 18, 18)),
              "05 00 43 61 66 E9 3F 01 00 BD 01 00 BE 00 00 01 00 78");
    EXPECT_EQ(int32At(bytes, layout.arithLow1 + 4 * (31 * 3 + 30)), -7);
    EXPECT_EQ(int32At(bytes, layout.arithLow1 + 3 * 496 + 4 * 13), 2147483647);
    // The Numbers column ends with level 12 off, the Blanks column with it on.
    EXPECT_EQ(hex(bytes.substr(layout.arithSwitch + 2 * 12, 2)), "00 00");
    EXPECT_EQ(hex(bytes.substr(layout.end - 2)), "FF FF");
}

TEST(TestsFile, BanksRoundTripExactlyOrAreNotSaved)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";

    // No file gives the defaults, built in memory only; a directory is unreadable.
    TestBank bank = sentinel();
    EXPECT_EQ(loadTests(bank, path).status, LoadResult::Status::Missing);
    expectSameBank(bank, defaultTestBank());
    EXPECT_FALSE(std::filesystem::exists(path));
    std::filesystem::create_directory(path);
    expectRefused(path, FileError::Kind::Unreadable, std::nullopt);
    std::filesystem::remove(path);

    // The longest text a byte count can describe loads back too.
    TestBank longest = defaultTestBank();
    longest.questionBank[4].items()[7][3].wrong2 = std::string(65535, 'w');
    for (const TestBank &saved : {grownBank(), defaultTestBank(), smallBank(), longest}) {
        ASSERT_FALSE(saveTests(saved, path));
        bank = sentinel();
        const LoadResult result = loadTests(bank, path);
        ASSERT_EQ(result.status, LoadResult::Status::Loaded) << result.error->message();
        expectSameBank(bank, saved);
        // Saving over the longer file of the previous round leaves exactly the new length.
        EXPECT_EQ(std::filesystem::file_size(path), layoutOf(saved).end);
    }

    // A longer text, or a lastQuestion beyond questionMax, would not load back: neither is saved.
    const std::string saved = readBytes(path);
    longest.questionBank[4].items()[7][3].wrong2 += "\u00E9";
    const std::optional<FileError> tooLong = saveTests(longest, path);
    ASSERT_TRUE(tooLong);
    EXPECT_EQ(tooLong->kind, FileError::Kind::TooLong);
    EXPECT_NE(tooLong->message().find("second wrong answer of question 4 at level 7 of subject "
                                      "\"Music\""),
              std::string::npos)
        << tooLong->message();
    EXPECT_EQ(readBytes(path), saved);
    bank.limits[2].lastQuestion[0] = 12;
    EXPECT_TRUE(saveTests(bank, path));
    EXPECT_EQ(readBytes(path), saved);
}

TEST(TestsFile, DamagedFilesAreRefusedWhereTheDamageIs)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    ASSERT_FALSE(saveTests(smallBank(), path));
    const std::string good = readBytes(path);

    // Cut one byte at a time from the end, the cheapest way to get every prefix on disk.
    for (std::size_t length = good.size(); length-- > 0 && !HasFailure();) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        expectRefused(path, FileError::Kind::Damaged, length, true);
    }
    // Bytes after the data are not read: the counts say where the bank ends.
    for (const std::string &after : {"\x01"s, std::string(100000, '\xFF')}) {
        writeBytes(path, good + after);
        TestBank bank;
        ASSERT_EQ(loadTests(bank, path).status, LoadResult::Status::Loaded);
        expectSameBank(bank, smallBank());
    }

    // Fewer than the six built-in subjects; a seventh, named from questionMax and
    // the descriptor, after which questionMax comes out as 512; a negative questionMax,
    // or one the descriptors disagree with; each field of a descriptor wrong, the
    // first making a one-dimensional table; lastQuestion outside -1..questionMax; a
    // test of no time. Counts too large for the file are left to FileAllocation.
    const Layout layout = layoutOf(smallBank());
    const std::size_t max = layout.questionMax, items = layout.items[2];
    const std::size_t last = layout.limits + 56 * 3 + 4 * 7, seconds = layout.limits + 56 * 3 + 52;
    const auto refusedAt = [&](std::size_t offset, int32_t value, std::size_t damageAt) {
        SCOPED_TRACE(std::to_string(offset) + " " + std::to_string(value));
        ByteWriter bytes;
        bytes.int32(value);
        writeBytes(path, std::string(good).replace(offset, 4, bytes.bytes()));
        expectRefused(path, FileError::Kind::Damaged, damageAt);
    };
    refusedAt(0, 4, 0);
    refusedAt(0, 6, max + 5);
    refusedAt(max, -1, max);
    refusedAt(max, 0, layout.items[0] + 2);
    for (const auto &[field, value] :
         {std::pair<std::size_t, int32_t>{0, 1}, {2, 3}, {6, 1}, {10, 12}, {14, -1}}) {
        refusedAt(items + field, value, items + field);
    }
    refusedAt(last, 2, last);
    refusedAt(last, -2, last);
    refusedAt(seconds, 0, seconds);
}

TEST(TestsFile, LoadedQuestionsAreDecodedWhenAskedForAndSavedBackExactly)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    // Every slot of every stored subject filled, with texts outside ASCII.
    constexpr int slots = 300;
    TestBank bank = defaultTestBank();
    resizeQuestionSlots(bank, slots - 1);
    for (std::size_t s = SpellingSubject; s < bank.questionBank.size(); ++s) {
        bank.limits[s].lastQuestion.fill(slots - 1);
        for (int level = 0; level < LevelCount; ++level) {
            for (int slot = 0; slot < slots; ++slot) {
                const auto id = "\u00EB " + std::to_string(s * 1000000 + level * 1000 + slot);
                bank.questionBank[s].items()[level][slot] = {id + "?", id, "not " + id, "", "x"};
            }
        }
    }
    ASSERT_FALSE(saveTests(bank, path));
    const std::string bytes = readBytes(path);
    const std::size_t tables = layoutOf(bank).arithLow1;

    TestBank loaded;
    ASSERT_EQ(loadTests(loaded, path).status, LoadResult::Status::Loaded);
    // Saved untouched, the questions are copied, not decoded.
    ASSERT_FALSE(saveTests(loaded, path));
    EXPECT_EQ(readBytes(path), bytes);
    EXPECT_TRUE(loaded.questionBank[3].stored());

    // One subject edited, every subject grown by a slot, a copy changed apart:
    // the stored subjects stay stored and the file has all of it.
    loaded.questionBank[2].items()[7][299].wrong3 = "\u00C5";
    bank.questionBank[2].items()[7][299].wrong3 = "\u00C5";
    resizeQuestionSlots(loaded, slots);
    resizeQuestionSlots(bank, slots);
    TestBank copy = loaded;
    copy.questionBank[4].items()[0][0].text = "only in the copy";
    EXPECT_TRUE(loaded.questionBank[4].stored());
    ASSERT_FALSE(saveTests(loaded, path));
    TestBank reloaded;
    ASSERT_EQ(loadTests(reloaded, path).status, LoadResult::Status::Loaded);
    expectSameBank(reloaded, bank);
    expectSameBank(loaded, bank);

    // Shrinking keeps the slots that remain, whether they were still stored or not.
    resizeQuestionSlots(copy, 9);
    resizeQuestionSlots(bank, 9);
    bank.questionBank[4].items()[0][0].text = "only in the copy";
    expectSameBank(copy, bank);

    // A cut in the range tables, read after the stored questions: the value it splits is named.
    const std::size_t cut = bytes.size() - 1000;
    writeBytes(path, bytes.substr(0, cut));
    expectRefused(path, FileError::Kind::Damaged, cut - (cut - tables) % 4);
}
