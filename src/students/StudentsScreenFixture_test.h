// The Students screen opened on a session of its own, with the accessors its
// tests share: a roster written with recognisable scores, the screen's
// controls, and what the Students file holds.
#pragma once

#include "StudentsScreen.h"

#include "ResultsModel.h"
#include "core/DefaultBank.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Colours.h"
#include "ui/Session.h"

#include <QFont>
#include <QListWidget>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// A score that tells student, subject, level and Last or High apart.
inline int16_t scoreOf(int student, int subject, int level, bool high)
{
    return static_cast<int16_t>(student * 1000 + subject * 100 + level * 2 + (high ? 1 : 0));
}

inline QString cell(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data().toString();
}
inline bool bold(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::FontRole).value<QFont>().bold();
}

// The rows painted yellow, Last/High column and scores alike; the others are white.
inline std::vector<int> yellowRows(const QAbstractItemModel &grid)
{
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        auto colour = [&](int column) {
            return grid.index(row, column).data(Qt::BackgroundRole).value<QColor>();
        };
        const bool yellow = colour(1) == bgrColor(Bgr::Yellow);
        for (int column = 1; column < ResultsModel::ColumnCount; ++column)
            EXPECT_EQ(colour(column), bgrColor(yellow ? Bgr::Yellow : Bgr::White)) << row;
        if (yellow)
            rows.push_back(row);
    }
    return rows;
}

class StudentsScreenTest : public ::testing::Test {
protected:
    StudentsScreenTest() { buildDefaultTests(session.bank); }

    // Writes a roster file of the given names, every score marked with scoreOf().
    void writeRoster(const std::vector<std::string> &names, int current = 0, bool byStudent = true)
    {
        StudentRecords records;
        records.showByStudent = byStudent;
        records.currentSubject = 2; // Geography
        for (int i = 0; i < static_cast<int>(names.size()); ++i) {
            Student &student = records.students.emplace_back(newStudent(session.bank.subjectMax));
            student.name = names[i];
            student.current = i == current;
            for (int s = 0; s < static_cast<int>(student.results.size()); ++s)
                for (int level = 0; level < LevelCount; ++level) {
                    student.results[s].last[level] = scoreOf(i, s, level, false);
                    student.results[s].high[level] = scoreOf(i, s, level, true);
                }
        }
        ASSERT_FALSE(saveStudents(records, session.paths.studentsPath).has_value());
    }

    // The help page only counts how often it was opened.
    std::unique_ptr<StudentsScreen> openScreen()
    {
        auto screen = std::make_unique<StudentsScreen>(session);
        screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        EXPECT_TRUE(screen->loadRoster());
        return screen;
    }

    // The roster as the Students file now holds it.
    StudentRecords saved() const
    {
        StudentRecords records;
        EXPECT_EQ(loadStudents(records, session.bank, session.paths.studentsPath).status,
                  LoadResult::Status::Loaded);
        return records;
    }

    template <typename Widget = QWidget>
    static Widget *child(const StudentsScreen &screen, const char *name)
    {
        Widget *widget = screen.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    static std::vector<std::string> lines(const StudentsScreen &screen)
    {
        const QListWidget *list = child<QListWidget>(screen, "List1");
        std::vector<std::string> texts;
        for (int row = 0; row < list->count(); ++row)
            texts.push_back(list->item(row)->text().toStdString());
        return texts;
    }

    // The title of the last dialog, when it was a confirmation.
    std::string lastConfirm() const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        return shown && shown->kind == ScriptedPrompt::Shown::Kind::Confirm
                   ? shown->title.toStdString()
                   : "";
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    // Dates the answer history and the Progress view's "now"; moved only by a test.
    ManualClock clock;
    Session session{dir.paths(), prompt, clock};
    int helpOpened = 0;
};
