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

std::string Quoted(const std::string &text)
{
    return "\"" + text + "\"";
}

// --- Writing ---

// Every level with exactly this many slots.
bool HasSlots(const SubjectQuestions &questions, std::size_t slots)
{
    if (questions.Stored()) {
        return questions.SlotCount() == slots;
    }
    for (const LevelSlots &level : questions.Items()) {
        if (level.size() != slots) {
            return false;
        }
    }
    return true;
}

std::optional<std::string> InconsistencyIn(const TestBank &bank)
{
    const auto subjects = static_cast<std::size_t>(bank.SubjectMax) + 1;
    if (bank.SubjectMax < MinSubjectMax || bank.Subjects.size() != subjects ||
        bank.QuestionBank.size() != subjects || bank.Limits.size() != subjects) {
        return "the subject tables do not agree with SubjectMax " + std::to_string(bank.SubjectMax);
    }
    if (bank.QuestionMax < 0) {
        return "QuestionMax is " + std::to_string(bank.QuestionMax);
    }
    for (std::size_t s = 0; s < subjects; ++s) {
        if (!HasSlots(bank.QuestionBank[s], static_cast<std::size_t>(bank.QuestionMax) + 1)) {
            return "the questions of subject " + Quoted(bank.Subjects[s].Name) +
                   " do not agree with QuestionMax";
        }
        for (int level = 0; level < LevelCount; ++level) {
            const int32_t last = bank.Limits[s].LastQuestion[level];
            if (last < -1 || last > bank.QuestionMax) {
                return "the last question of subject " + Quoted(bank.Subjects[s].Name) +
                       " at level " + LevelText(level) + " is outside the question slots";
            }
        }
        if (bank.Limits[s].Seconds < 1) {
            return "the test length of subject " + Quoted(bank.Subjects[s].Name) + " is " +
                   std::to_string(bank.Limits[s].Seconds) + " seconds";
        }
    }
    return std::nullopt;
}

void WriteRangeTable(ByteWriter &out, const RangeTable &table)
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
std::size_t EncodedSizeAtMost(const TestBank &bank)
{
    std::size_t bytes = 4 + 4 + MinTailBytes;
    for (const Subject &subject : bank.Subjects) {
        bytes += MinSubjectBytes + subject.Name.size();
    }
    for (const SubjectQuestions &questions : bank.QuestionBank) {
        bytes += SubjectQuestionsBytesAtMost(questions);
    }
    bytes += bank.Limits.size() * LimitsBytes;
    for (const std::string &ops : bank.ArithOps) {
        bytes += ops.size();
    }
    return bytes;
}

void EncodeTests(const TestBank &bank, ByteWriter &out)
{
    out.int32(bank.SubjectMax);
    for (std::size_t s = 0; s < bank.Subjects.size(); ++s) {
        out.text(bank.Subjects[s].Name, [s] { return "the name of subject " + std::to_string(s); });
        out.bool16(bank.Subjects[s].AdjacentLevels);
    }

    out.int32(bank.QuestionMax);
    for (std::size_t s = 0; s < bank.QuestionBank.size(); ++s) {
        WriteSubjectQuestions(out, bank.QuestionBank[s], bank.QuestionMax, bank.Subjects[s].Name);
    }

    for (const SubjectLimits &limits : bank.Limits) {
        for (const int32_t last : limits.LastQuestion) {
            out.int32(last);
        }
        out.int32(limits.Seconds);
    }

    WriteRangeTable(out, bank.ArithLow1);
    WriteRangeTable(out, bank.ArithHigh1);
    WriteRangeTable(out, bank.ArithLow2);
    WriteRangeTable(out, bank.ArithHigh2);
    for (int level = 0; level < LevelCount; ++level) {
        out.text(bank.ArithOps[level],
                 [level] { return "the Arithmetic operations of level " + LevelText(level); });
    }
    for (const int column : {SwitchNumbers, SwitchBlanks}) {
        for (int level = 0; level < LevelCount; ++level) {
            out.bool16(bank.ArithSwitch[level][column]);
        }
    }
}

// --- Reading ---

int32_t ReadSubjectMax(ByteReader &in)
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

int32_t ReadQuestionMax(ByteReader &in, int32_t subjectMax)
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

void ReadLimits(ByteReader &in, SubjectLimits &limits, int32_t questionMax)
{
    for (int level = 0; level < LevelCount; ++level) {
        const std::size_t at = in.offset();
        const int32_t last = in.int32();
        if (last < -1 || last > questionMax) {
            in.failAt(at, "the last question at level " + LevelText(level) + " is " +
                              std::to_string(last) + ", outside -1.." +
                              std::to_string(questionMax));
        }
        limits.LastQuestion[level] = last;
    }
    const std::size_t at = in.offset();
    limits.Seconds = in.int32();
    // A test of no time at all, or of negative time, could never run properly.
    if (limits.Seconds < 1) {
        in.failAt(at, "the test length is " + std::to_string(limits.Seconds) + " seconds");
    }
}

void ReadRangeTable(ByteReader &in, RangeTable &table)
{
    for (int op = 0; op < OperationCount; ++op) {
        for (int row = 0; row < RangeRowCount; ++row) {
            table[row][op] = in.int32();
        }
    }
}

// owner keeps the bytes that in reads alive for as long as the bank needs them.
TestBank DecodeTests(ByteReader &in, const std::shared_ptr<const void> &owner)
{
    TestBank bank;
    bank.SubjectMax = ReadSubjectMax(in);
    const auto subjects = static_cast<std::size_t>(bank.SubjectMax) + 1;
    bank.Subjects.resize(subjects);
    for (Subject &subject : bank.Subjects) {
        subject.Name = in.text();
        subject.AdjacentLevels = in.bool16();
    }

    bank.QuestionMax = ReadQuestionMax(in, bank.SubjectMax);
    bank.QuestionBank.reserve(subjects);
    for (std::size_t s = 0; s < subjects; ++s) {
        bank.QuestionBank.push_back(ReadSubjectQuestions(in, bank.QuestionMax, owner));
    }

    bank.Limits.resize(subjects);
    for (SubjectLimits &limits : bank.Limits) {
        ReadLimits(in, limits, bank.QuestionMax);
    }

    ReadRangeTable(in, bank.ArithLow1);
    ReadRangeTable(in, bank.ArithHigh1);
    ReadRangeTable(in, bank.ArithLow2);
    ReadRangeTable(in, bank.ArithHigh2);
    for (std::string &ops : bank.ArithOps) {
        ops = in.text();
    }
    for (const int column : {SwitchNumbers, SwitchBlanks}) {
        for (int level = 0; level < LevelCount; ++level) {
            bank.ArithSwitch[level][column] = in.bool16();
        }
    }
    in.expectEnd();
    return bank;
}

std::optional<FileError> Refusal(const TestBank &bank, const std::filesystem::path &path)
{
    if (const std::optional<std::string> problem = InconsistencyIn(bank)) {
        return RefusedSave(path, "the test bank", *problem);
    }
    return std::nullopt;
}

} // namespace

std::optional<FileError> EncodeTestsFile(const TestBank &bank, const std::filesystem::path &path,
                                         std::string &bytes)
{
    if (std::optional<FileError> refused = Refusal(bank, path)) {
        return refused;
    }
    try {
        ByteWriter out;
        out.reserve(EncodedSizeAtMost(bank));
        EncodeTests(bank, out);
        bytes = out.bytes();
    } catch (const TextTooLong &tooLong) {
        return TooLongText(path, tooLong.what());
    }
    return std::nullopt;
}

namespace {

LoadResult DecodeFrom(std::string_view bytes, const std::shared_ptr<const void> &owner,
                      TestBank &bank, const std::filesystem::path &path)
{
    try {
        ByteReader in(bytes);
        bank = DecodeTests(in, owner);
    } catch (const ReadError &damage) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Damaged, path.string(), damage.what(), damage.offset()}};
    }
    return {LoadResult::Status::Loaded, std::nullopt};
}

} // namespace

LoadResult DecodeTestsFile(TestBank &bank, std::string_view bytes,
                           const std::filesystem::path &path)
{
    // The bank keeps questions in the file's form, so it needs bytes of its own.
    const auto copy = std::make_shared<const std::string>(bytes);
    return DecodeFrom(*copy, copy, bank, path);
}

std::optional<FileError> SaveTests(const TestBank &bank, const std::filesystem::path &path)
{
    if (std::optional<FileError> refused = Refusal(bank, path)) {
        return refused;
    }
    // Written as it is encoded, through one small buffer: a large bank's file is
    // never held whole in memory beside the bank.
    try {
        return WriteFileAtomically(path, [&bank](const ByteSink &write) {
            ByteWriter out(write, SavePieceBytes);
            EncodeTests(bank, out);
            out.finish();
        });
    } catch (const TextTooLong &tooLong) {
        return TooLongText(path, tooLong.what());
    }
}

LoadResult LoadTests(TestBank &bank, const std::filesystem::path &path)
{
    FileReader file(path);
    if (file.missing()) {
        BuildDefaultTests(bank);
        return {LoadResult::Status::Missing, std::nullopt};
    }
    if (file.error()) {
        return {LoadResult::Status::Failed, file.error()};
    }
    try {
        // Read whole, in one call: the questions stay in these bytes until asked for.
        const auto bytes = std::make_shared<const FileBytes>(file);
        return DecodeFrom(bytes->view(), bytes, bank, path);
    } catch (const FileReadFailed &failure) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Unreadable, path.string(), failure.what(), {}}};
    }
}
