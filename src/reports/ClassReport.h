// What the printed class report shows, before any page is laid out: for each
// subject with results, every student's Last and High per level, and where each
// High stands among the class's Highs at that level (the heat map's shade).
#pragma once

#include "core/Students.h"
#include "core/TestBank.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct ReportCell {
    bool hasResult = false; // a Last or High other than zero
    int16_t last = 0;
    int16_t high = 0;
    // Where high lies between the lowest and highest High at this level in the
    // class: 0 the lowest, 1 the highest; 0.5 when all are the same.
    double shade = 0;
};

struct ReportRow {
    std::string name; // trimmed
    int level = 0;    // the student's own level
    std::array<ReportCell, LevelCount> cells{};
};

// The range of Highs at one level of one subject, over the students with a result there.
struct LevelRange {
    bool any = false;
    int16_t lowest = 0;
    int16_t highest = 0;
};

struct SubjectTable {
    std::string subject;
    std::vector<ReportRow> rows; // every student, in roster order
    std::array<LevelRange, LevelCount> ranges{};
};

// A plain table of text on the pages after the heat map.
struct ReportList {
    std::string heading;
    std::vector<std::string> captions;
    std::vector<double> widths; // each column's share of the page width
    std::vector<std::vector<std::string>> rows;
    std::string emptyText; // shown when there are no rows
};

struct ClassReport {
    std::string title;                // "Class results: 3B"
    std::string date;                 // as the reader's locale writes it
    std::vector<SubjectTable> tables; // in bank order, subjects without results left out
    std::size_t studentCount = 0;
    // From the answer history, when there is one: who needs help and the
    // questions the class misses most.
    std::vector<ReportList> lists;
};

// The position of high on the scale from lowest to highest, as ReportCell::shade.
double shadeFor(int16_t high, const LevelRange &range);

// Builds the report of the bank's subjects; results a student holds beyond the
// bank are left out and missing ones count as none.
ClassReport makeClassReport(const TestBank &bank, const StudentRecords &records, std::string title,
                            std::string date);

// The class's name as the report gives it: the data folder's name, or the name
// of the folder holding it when it is just "data" (the program's own folder).
std::string className(const std::filesystem::path &dataDir);

// The report of the class in dataDir as of today, titled with the class's name
// and dated as the reader's locale writes dates.
ClassReport makeTodaysClassReport(const TestBank &bank, const StudentRecords &records,
                                  const std::filesystem::path &dataDir);
