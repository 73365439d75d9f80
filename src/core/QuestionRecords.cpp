#include "core/QuestionRecords.h"

namespace {

void writeQuestion(ByteWriter &out, const Question &question, const std::string &subjectName,
                   int level, int slot)
{
    const auto describe = [&](const char *field) {
        return [&subjectName, level, slot, field] {
            return std::string("the ") + field + " of question " + std::to_string(slot + 1) +
                   " at level " + levelText(level) + " of subject \"" + subjectName + "\"";
        };
    };
    out.text(question.text, describe("text"));
    out.text(question.answer, describe("answer"));
    out.text(question.wrong1, describe("first wrong answer"));
    out.text(question.wrong2, describe("second wrong answer"));
    out.text(question.wrong3, describe("third wrong answer"));
}

void expectValue(ByteReader &in, const char *what, int32_t expected, int32_t actual, std::size_t at)
{
    if (actual != expected) {
        in.failAt(at, std::string("the question table's ") + what + " is " +
                          std::to_string(actual) + " instead of " + std::to_string(expected));
    }
}

} // namespace

void writeSubjectQuestions(ByteWriter &out, const SubjectQuestions &questions, int32_t questionMax,
                           const std::string &subjectName)
{
    // Dimensions slowest first: question index, then level.
    out.int16(2);
    out.int32(questionMax + 1);
    out.int32(0);
    out.int32(LevelCount);
    out.int32(0);
    if (const StoredQuestions *stored = questions.stored()) {
        // Questions nobody has changed since the file was read are written back
        // as they were read, followed by the empty slots added since.
        out.raw(stored->records);
        for (std::size_t slot = stored->slotCount; slot < questions.slotCount(); ++slot) {
            for (std::size_t text = 0; text < LevelCount * TextsPerQuestion; ++text) {
                out.uint16(0);
            }
        }
        return;
    }
    const LevelQuestions &items = questions.items();
    for (int slot = 0; slot <= questionMax; ++slot) {
        for (int level = 0; level < LevelCount; ++level) {
            writeQuestion(out, items[level][slot], subjectName, level, slot);
        }
    }
}

std::size_t subjectQuestionsBytesAtMost(const SubjectQuestions &questions)
{
    std::size_t bytes = ItemsDescriptorBytes;
    if (const StoredQuestions *stored = questions.stored()) {
        return bytes + stored->records.size() +
               (questions.slotCount() - stored->slotCount) * LevelCount * MinQuestionBytes;
    }
    for (const LevelSlots &level : questions.items()) {
        for (const Question &question : level) {
            bytes += MinQuestionBytes + question.text.size() + question.answer.size() +
                     question.wrong1.size() + question.wrong2.size() + question.wrong3.size();
        }
    }
    return bytes;
}

SubjectQuestions readSubjectQuestions(ByteReader &in, int32_t questionMax,
                                      const std::shared_ptr<const void> &owner)
{
    std::size_t at = in.offset();
    expectValue(in, "number of dimensions", 2, in.int16(), at);
    at = in.offset();
    expectValue(in, "number of question slots", questionMax + 1, in.int32(), at);
    at = in.offset();
    expectValue(in, "lowest question slot", 0, in.int32(), at);
    at = in.offset();
    expectValue(in, "number of levels", LevelCount, in.int32(), at);
    at = in.offset();
    expectValue(in, "lowest level", 0, in.int32(), at);

    const std::size_t slots = static_cast<std::size_t>(questionMax) + 1;
    const std::string_view records = in.textsInPlace(slots * LevelCount * TextsPerQuestion);
    return SubjectQuestions(StoredQuestions{owner, records, slots});
}

void decodeQuestionRecords(std::string_view records, std::size_t slotCount, LevelQuestions &items)
{
    ByteReader in(records);
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        for (LevelSlots &level : items) {
            Question &question = level[slot];
            question.text = in.text();
            question.answer = in.text();
            question.wrong1 = in.text();
            question.wrong2 = in.text();
            question.wrong3 = in.text();
        }
    }
}
