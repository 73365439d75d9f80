#include "core/QuestionRecords.h"

namespace {

void WriteQuestion(ByteWriter &out, const Question &question, const std::string &subjectName,
                   int level, int slot)
{
    const auto describe = [&](const char *field) {
        return [&subjectName, level, slot, field] {
            return std::string("the ") + field + " of question " + std::to_string(slot + 1) +
                   " at level " + LevelText(level) + " of subject \"" + subjectName + "\"";
        };
    };
    out.text(question.Text, describe("text"));
    out.text(question.Answer, describe("answer"));
    out.text(question.Wrong1, describe("first wrong answer"));
    out.text(question.Wrong2, describe("second wrong answer"));
    out.text(question.Wrong3, describe("third wrong answer"));
}

void ExpectValue(ByteReader &in, const char *what, int32_t expected, int32_t actual, std::size_t at)
{
    if (actual != expected) {
        in.failAt(at, std::string("the question table's ") + what + " is " +
                          std::to_string(actual) + " instead of " + std::to_string(expected));
    }
}

} // namespace

void WriteSubjectQuestions(ByteWriter &out, const SubjectQuestions &questions, int32_t questionMax,
                           const std::string &subjectName)
{
    // Dimensions slowest first: question index, then level.
    out.int16(2);
    out.int32(questionMax + 1);
    out.int32(0);
    out.int32(LevelCount);
    out.int32(0);
    if (const StoredQuestions *stored = questions.Stored()) {
        // Questions nobody has changed since the file was read are written back
        // as they were read, followed by the empty slots added since.
        out.raw(stored->records);
        for (std::size_t slot = stored->slotCount; slot < questions.SlotCount(); ++slot) {
            for (std::size_t text = 0; text < LevelCount * TextsPerQuestion; ++text) {
                out.uint16(0);
            }
        }
        return;
    }
    const LevelQuestions &items = questions.Items();
    for (int slot = 0; slot <= questionMax; ++slot) {
        for (int level = 0; level < LevelCount; ++level) {
            WriteQuestion(out, items[level][slot], subjectName, level, slot);
        }
    }
}

std::size_t SubjectQuestionsBytesAtMost(const SubjectQuestions &questions)
{
    std::size_t bytes = ItemsDescriptorBytes;
    if (const StoredQuestions *stored = questions.Stored()) {
        return bytes + stored->records.size() +
               (questions.SlotCount() - stored->slotCount) * LevelCount * MinQuestionBytes;
    }
    for (const LevelSlots &level : questions.Items()) {
        for (const Question &question : level) {
            bytes += MinQuestionBytes + question.Text.size() + question.Answer.size() +
                     question.Wrong1.size() + question.Wrong2.size() + question.Wrong3.size();
        }
    }
    return bytes;
}

SubjectQuestions ReadSubjectQuestions(ByteReader &in, int32_t questionMax,
                                      const std::shared_ptr<const void> &owner)
{
    std::size_t at = in.offset();
    ExpectValue(in, "number of dimensions", 2, in.int16(), at);
    at = in.offset();
    ExpectValue(in, "number of question slots", questionMax + 1, in.int32(), at);
    at = in.offset();
    ExpectValue(in, "lowest question slot", 0, in.int32(), at);
    at = in.offset();
    ExpectValue(in, "number of levels", LevelCount, in.int32(), at);
    at = in.offset();
    ExpectValue(in, "lowest level", 0, in.int32(), at);

    const std::size_t slots = static_cast<std::size_t>(questionMax) + 1;
    const std::string_view records = in.textsInPlace(slots * LevelCount * TextsPerQuestion);
    return SubjectQuestions(StoredQuestions{owner, records, slots});
}

void DecodeQuestionRecords(std::string_view records, std::size_t slotCount, LevelQuestions &items)
{
    ByteReader in(records);
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        for (LevelSlots &level : items) {
            Question &question = level[slot];
            question.Text = in.text();
            question.Answer = in.text();
            question.Wrong1 = in.text();
            question.Wrong2 = in.text();
            question.Wrong3 = in.text();
        }
    }
}
