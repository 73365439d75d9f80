#include "core/ChoiceQuestions.h"

#include "core/Sqlite.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <vector>

namespace {

constexpr int Positions = 4;

// 64-bit FNV-1a over each text's length and bytes. Written out here rather than
// taken from std::hash, whose values may change between library versions while
// the stored ones must not.
std::int64_t hashOf(const ChoiceSlots &question)
{
    std::uint64_t hash = 14695981039346656037ULL;
    const auto add = [&hash](std::string_view text) {
        std::uint64_t length = text.size();
        for (int i = 0; i < 8; ++i, length >>= 8)
            hash = (hash ^ (length & 0xFF)) * 1099511628211ULL;
        for (const char c : text)
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    };
    add(question.question);
    for (const std::string &text : question.slots)
        add(text);
    return static_cast<std::int64_t>(hash);
}

// The permutation as a number 0..23 (its rank in the factorial number system).
int rankOf(const std::array<int, Positions> &slots)
{
    int rank = 0;
    for (int i = 0; i < Positions; ++i) {
        int smallerLater = 0;
        for (int j = i + 1; j < Positions; ++j)
            smallerLater += slots[std::size_t(j)] < slots[std::size_t(i)];
        rank = rank * (Positions - i) + smallerLater;
    }
    return rank;
}

} // namespace

std::array<int, 4> slotsShown(int shown)
{
    std::array<int, Positions> digits{};
    for (int i = Positions - 1; i >= 0; --i) {
        digits[std::size_t(i)] = shown % (Positions - i);
        shown /= Positions - i;
    }
    std::vector<int> unused(Positions);
    std::iota(unused.begin(), unused.end(), 0);
    std::array<int, Positions> slots{};
    for (std::size_t i = 0; i < Positions; ++i) {
        const auto next = unused.begin() + std::clamp(digits[i], 0, int(unused.size()) - 1);
        slots[i] = *next;
        unused.erase(next);
    }
    return slots;
}

int rightPosition(int shown)
{
    const std::array<int, Positions> slots = slotsShown(shown);
    return static_cast<int>(std::find(slots.begin(), slots.end(), 0) - slots.begin());
}

StoredChoice storeChoiceQuestion(SqliteDatabase &db, const ChoiceAnswer &answer)
{
    // The wrong answers' positions in the order of their texts (then of their
    // positions, when two texts are the same) become slots 1..3.
    std::array<int, Positions - 1> wrongPositions{};
    std::size_t count = 0;
    for (int position = 0; position < Positions; ++position)
        if (position != answer.right)
            wrongPositions[count++] = position;
    std::stable_sort(wrongPositions.begin(), wrongPositions.end(), [&](int a, int b) {
        return answer.choices[std::size_t(a)] < answer.choices[std::size_t(b)];
    });

    ChoiceSlots question{answer.question, {answer.choices[std::size_t(answer.right)]}};
    std::array<int, Positions> slotAt{};
    slotAt[std::size_t(answer.right)] = 0;
    for (std::size_t k = 0; k < wrongPositions.size(); ++k) {
        question.slots[k + 1] = answer.choices[std::size_t(wrongPositions[k])];
        slotAt[std::size_t(wrongPositions[k])] = int(k) + 1;
    }

    const std::int64_t hash = hashOf(question);
    SqliteStatement &find = db.cached("SELECT id, question, right_choice, wrong1, wrong2, wrong3 "
                                      "FROM choice_question WHERE hash = ?");
    find.bindAll(hash);
    std::int64_t id = 0;
    while (id == 0 && find.step()) {
        bool same = find.text(1) == question.question;
        for (std::size_t slot = 0; same && slot < Positions; ++slot)
            same = find.text(int(slot) + 2) == question.slots[slot];
        if (same)
            id = find.integer(0);
    }
    find.reset();
    if (id == 0) {
        db.cached("INSERT INTO choice_question "
                  "(hash, question, right_choice, wrong1, wrong2, wrong3) "
                  "VALUES (?, ?, ?, ?, ?, ?)")
            .bindAll(hash, question.question, question.slots[0], question.slots[1],
                     question.slots[2], question.slots[3])
            .run();
        id = db.lastInsertId();
    }
    return {id, rankOf(slotAt)};
}
