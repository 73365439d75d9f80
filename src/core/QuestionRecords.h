// One subject's questions as the Tests file holds them: a descriptor of the
// table, then slot by slot the thirteen levels of a slot in turn, five texts to
// a question.
#pragma once

#include "core/ByteIO.h"
#include "core/TestBank.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

constexpr std::size_t TextsPerQuestion = 5;
constexpr std::size_t ItemsDescriptorBytes = 2 + 4 * 4;
// The least a question takes: five empty texts.
constexpr std::size_t MinQuestionBytes = TextsPerQuestion * 2;

// Writes the table for slots 0..questionMax. Throws TextTooLong, naming the
// question by subjectName, its level and its slot.
void writeSubjectQuestions(ByteWriter &out, const SubjectQuestions &questions, int32_t questionMax,
                           const std::string &subjectName);

// At least the bytes the table takes, and at most a little more when texts hold
// letters beyond ASCII.
std::size_t subjectQuestionsBytesAtMost(const SubjectQuestions &questions);

// Reads and checks a table of slots 0..questionMax. The questions are not
// decoded: they stay in in's bytes, which owner keeps alive, until first asked for.
SubjectQuestions readSubjectQuestions(ByteReader &in, int32_t questionMax,
                                      const std::shared_ptr<const void> &owner);

// Fills slots 0..slotCount-1 of every level of items, which hold at least that
// many, from records checked to hold slotCount x LevelCount questions when the
// file was read.
void decodeQuestionRecords(std::string_view records, std::size_t slotCount, LevelQuestions &items);
