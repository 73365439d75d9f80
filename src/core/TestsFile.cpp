#include "core/TestsFile.h"

#include "core/AtomicFile.h"
#include "core/ByteIO.h"
#include "core/DefaultBank.h"
#include "core/QuestionRecords.h"
#include "core/ReadFile.h"

#include <memory>
#include <string>

namespace {

// The six built-in subjects are assumed everywhere, so a file needs at least these.
constexpr int32_t MinSubjectMax = FirstAddedSubject - 1;

// The least a record can take in the file: empty texts, nothing else optional.
constexpr std::size_t MinSubjectBytes = 2 + 2;
constexpr std::size_t LimitsBytes = (LevelCount + 1) * 4;
constexpr std::size_t RangeTableBytes = RangeRowCount * OperationCount * 4;
constexpr std::size_t MinTailBytes = 4 * RangeTableBytes + LevelCount * 2 + LevelCount * 2 * 2;

std::string quoted(const std::string &text)
{
    return "\"" + text + "\"";
}

// --- Writing ---

// Every level with exactly this many slots.
bool hasSlots(const SubjectQuestions &questions, std::size_t slots)
{
    if (questions.stored()) {
        return questions.slotCount() == slots;
    }
    for (const LevelSlots &level : questions.items()) {
        if (level.size() != slots) {
            return false;
        }
    }
    return true;
}

std::optional<std::string> inconsistencyIn(const TestBank &bank)
{
    const auto subjects = static_cast<std::size_t>(bank.subjectMax) + 1;
    if (bank.subjectMax < MinSubjectMax || bank.subjects.size() != subjects ||
        bank.questionBank.size() != subjects || bank.limits.size() != subjects) {
        return "the subject tables do not agree with SubjectMax " + std::to_string(bank.subjectMax);
    }
    if (bank.questionMax < 0) {
        return "QuestionMax is " + std::to_string(bank.questionMax);
    }
    for (std::size_t s = 0; s < subjects; ++s) {
        if (!hasSlots(bank.questionBank[s], static_cast<std::size_t>(bank.questionMax) + 1)) {
            return "the questions of subject " + quoted(bank.subjects[s].name) +
                   " do not agree with QuestionMax";
        }
        for (int level = 0; level < LevelCount; ++level) {
            const int32_t last = bank.limits[s].lastQuestion[level];
            if (last < -1 || last > bank.questionMax) {
                return "the last question of subject " + quoted(bank.subjects[s].name) +
                       " at level " + levelText(level) + " is outside the question slots";
            }
        }
        if (bank.limits[s].seconds < 1) {
            return "the test length of subject " + quoted(bank.subjects[s].name) + " is " +
                   std::to_string(bank.limits[s].seconds) + " seconds";
        }
    }
    return std::nullopt;
}

void writeRangeTable(ByteWriter &out, const RangeTable &table)
{
    for (int op = 0; op < OperationCount; ++op) {
        for (int row = 0; row < RangeRowCount; ++row) {
            out.int32(table[row][op]);
        }
    }
}

// The file's size, or a little more when a text holds characters beyond ASCII
// (UTF-8 takes more bytes than the file's code page). Reserving it spares a large
// bank the copies of a buffer that doubles as it grows.
std::size_t encodedSizeAtMost(const TestBank &bank)
{
    std::size_t bytes = 4 + 4 + MinTailBytes;
    for (const Subject &subject : bank.subjects) {
        bytes += MinSubjectBytes + subject.name.size();
    }
    for (const SubjectQuestions &questions : bank.questionBank) {
        bytes += subjectQuestionsBytesAtMost(questions);
    }
    bytes += bank.limits.size() * LimitsBytes;
    for (const std::string &ops : bank.arithOps) {
        bytes += ops.size();
    }
    return bytes;
}

void encodeTests(const TestBank &bank, ByteWriter &out)
{
    out.int32(bank.subjectMax);
    for (std::size_t s = 0; s < bank.subjects.size(); ++s) {
        out.text(bank.subjects[s].name, [s] { return "the name of subject " + std::to_string(s); });
        out.bool16(bank.subjects[s].adjacentLevels);
    }

    out.int32(bank.questionMax);
    for (std::size_t s = 0; s < bank.questionBank.size(); ++s) {
        writeSubjectQuestions(out, bank.questionBank[s], bank.questionMax, bank.subjects[s].name);
    }

    for (const SubjectLimits &limits : bank.limits) {
        for (const int32_t last : limits.lastQuestion) {
            out.int32(last);
        }
        out.int32(limits.seconds);
    }

    writeRangeTable(out, bank.arithLow1);
    writeRangeTable(out, bank.arithHigh1);
    writeRangeTable(out, bank.arithLow2);
    writeRangeTable(out, bank.arithHigh2);
    for (int level = 0; level < LevelCount; ++level) {
        out.text(bank.arithOps[level],
                 [level] { return "the Arithmetic operations of level " + levelText(level); });
    }
    for (const int column : {SwitchNumbers, SwitchBlanks}) {
        for (int level = 0; level < LevelCount; ++level) {
            out.bool16(bank.arithSwitch[level][column]);
        }
    }
}

// --- Reading ---

int32_t readSubjectMax(ByteReader &in)
{
    const std::size_t at = in.offset();
    const int32_t subjectMax = in.int32();
    if (subjectMax < MinSubjectMax) {
        in.failAt(at, "SubjectMax is " + std::to_string(subjectMax) +
                          ", but the six built-in subjects need at least " +
                          std::to_string(MinSubjectMax));
    }
    if ((static_cast<std::size_t>(subjectMax) + 1) * MinSubjectBytes > in.remaining()) {
        in.failAt(at, "SubjectMax " + std::to_string(subjectMax) +
                          " claims more subjects than the file holds");
    }
    return subjectMax;
}

int32_t readQuestionMax(ByteReader &in, int32_t subjectMax)
{
    const std::size_t at = in.offset();
    const int32_t questionMax = in.int32();
    if (questionMax < 0) {
        in.failAt(at, "QuestionMax is " + std::to_string(questionMax));
    }
    // Divided rather than multiplied, so that no count can overflow the check.
    const std::size_t subjects = static_cast<std::size_t>(subjectMax) + 1;
    const std::size_t slots = static_cast<std::size_t>(questionMax) + 1;
    constexpr std::size_t fixedPerSubject = ItemsDescriptorBytes + LimitsBytes;
    constexpr std::size_t minSlotBytes = MinQuestionBytes * LevelCount;
    bool fits = in.remaining() >= MinTailBytes;
    if (fits) {
        const std::size_t perSubject = (in.remaining() - MinTailBytes) / subjects;
        fits =
            perSubject >= fixedPerSubject && slots <= (perSubject - fixedPerSubject) / minSlotBytes;
    }
    if (!fits) {
        in.failAt(at, "QuestionMax " + std::to_string(questionMax) +
                          " claims more questions than the file holds");
    }
    return questionMax;
}

void readLimits(ByteReader &in, SubjectLimits &limits, int32_t questionMax)
{
    for (int level = 0; level < LevelCount; ++level) {
        const std::size_t at = in.offset();
        const int32_t last = in.int32();
        if (last < -1 || last > questionMax) {
            in.failAt(at, "the last question at level " + levelText(level) + " is " +
                              std::to_string(last) + ", outside -1.." +
                              std::to_string(questionMax));
        }
        limits.lastQuestion[level] = last;
    }
    const std::size_t at = in.offset();
    limits.seconds = in.int32();
    // A test of no time at all, or of negative time, could never run properly.
    if (limits.seconds < 1) {
        in.failAt(at, "the test length is " + std::to_string(limits.seconds) + " seconds");
    }
}

void readRangeTable(ByteReader &in, RangeTable &table)
{
    for (int op = 0; op < OperationCount; ++op) {
        for (int row = 0; row < RangeRowCount; ++row) {
            table[row][op] = in.int32();
        }
    }
}

// owner keeps the bytes that in reads alive for as long as the bank needs them.
// The counts in the file say how much it holds; bytes after that are not read.
TestBank decodeTests(ByteReader &in, const std::shared_ptr<const void> &owner)
{
    TestBank bank;
    bank.subjectMax = readSubjectMax(in);
    const auto subjects = static_cast<std::size_t>(bank.subjectMax) + 1;
    bank.subjects.resize(subjects);
    for (Subject &subject : bank.subjects) {
        subject.name = in.text();
        subject.adjacentLevels = in.bool16();
    }

    bank.questionMax = readQuestionMax(in, bank.subjectMax);
    bank.questionBank.reserve(subjects);
    for (std::size_t s = 0; s < subjects; ++s) {
        bank.questionBank.push_back(readSubjectQuestions(in, bank.questionMax, owner));
    }

    bank.limits.resize(subjects);
    for (SubjectLimits &limits : bank.limits) {
        readLimits(in, limits, bank.questionMax);
    }

    readRangeTable(in, bank.arithLow1);
    readRangeTable(in, bank.arithHigh1);
    readRangeTable(in, bank.arithLow2);
    readRangeTable(in, bank.arithHigh2);
    for (std::string &ops : bank.arithOps) {
        ops = in.text();
    }
    for (const int column : {SwitchNumbers, SwitchBlanks}) {
        for (int level = 0; level < LevelCount; ++level) {
            bank.arithSwitch[level][column] = in.bool16();
        }
    }
    return bank;
}

std::optional<FileError> refusal(const TestBank &bank, const std::filesystem::path &path)
{
    if (const std::optional<std::string> problem = inconsistencyIn(bank)) {
        return refusedSave(path, "the test bank", *problem);
    }
    return std::nullopt;
}

} // namespace

std::optional<FileError> encodeTestsFile(const TestBank &bank, const std::filesystem::path &path,
                                         std::string &bytes)
{
    if (std::optional<FileError> refused = refusal(bank, path)) {
        return refused;
    }
    try {
        ByteWriter out;
        out.reserve(encodedSizeAtMost(bank));
        encodeTests(bank, out);
        bytes = out.bytes();
    } catch (const TextTooLong &tooLong) {
        return tooLongText(path, tooLong.what());
    }
    return std::nullopt;
}

namespace {

LoadResult decodeFrom(std::string_view bytes, const std::shared_ptr<const void> &owner,
                      TestBank &bank, const std::filesystem::path &path)
{
    try {
        ByteReader in(bytes);
        bank = decodeTests(in, owner);
    } catch (const ReadError &damage) {
        return {LoadResult::Status::Failed, FileError{FileError::Kind::Damaged, path.u8string(),
                                                      damage.what(), damage.offset()}};
    }
    return {LoadResult::Status::Loaded, std::nullopt};
}

} // namespace

LoadResult decodeTestsFile(TestBank &bank, std::string_view bytes,
                           const std::filesystem::path &path)
{
    // The bank keeps questions in the file's form, so it needs bytes of its own.
    const auto copy = std::make_shared<const std::string>(bytes);
    return decodeFrom(*copy, copy, bank, path);
}

std::optional<FileError> saveTests(const TestBank &bank, const std::filesystem::path &path)
{
    if (std::optional<FileError> refused = refusal(bank, path)) {
        return refused;
    }
    // Written as it is encoded, through one small buffer: a large bank's file is
    // never held whole in memory beside the bank.
    try {
        return writeFileAtomically(path, [&bank](const ByteSink &write) {
            ByteWriter out(write, SavePieceBytes);
            encodeTests(bank, out);
            out.finish();
        });
    } catch (const TextTooLong &tooLong) {
        return tooLongText(path, tooLong.what());
    }
}

LoadResult loadTests(TestBank &bank, const std::filesystem::path &path)
{
    FileReader file(path);
    if (file.missing()) {
        buildDefaultTests(bank);
        return {LoadResult::Status::Missing, std::nullopt};
    }
    if (file.error()) {
        return {LoadResult::Status::Failed, file.error()};
    }
    try {
        // Read whole, in one call: the questions stay in these bytes until asked for.
        const auto bytes = std::make_shared<const FileBytes>(file);
        return decodeFrom(bytes->view(), bytes, bank, path);
    } catch (const FileReadFailed &failure) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Unreadable, path.u8string(), failure.what(), {}}};
    }
}
