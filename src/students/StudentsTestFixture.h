// What the Students screen tests share: a data directory with the default test
// bank, scripted answers, and a roster file written before the screen opens.
#pragma once

#include "StudentsScreen.h"
#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QListWidget>
#include <QString>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// Scripted answers that also note what the Students file held when an input box
// came up.
class WatchingPrompt : public ScriptedPrompt {
public:
    explicit WatchingPrompt(std::filesystem::path file) : m_file(std::move(file)) {}

    QString input(QWidget *parent, const QString &title, const QString &prompt,
                  const QString &defaultText = QString()) override
    {
        bytesAtInput = ReadFileBytes(m_file);
        return ScriptedPrompt::input(parent, title, prompt, defaultText);
    }

    std::vector<unsigned char> bytesAtInput;

private:
    std::filesystem::path m_file;
};

class StudentsScreenTest : public ::testing::Test {
protected:
    StudentsScreenTest() : prompt(dir.paths().StudentsPath), session(dir.paths(), prompt)
    {
        BuildDefaultTests(session.bank);
    }

    // A score that tells student, subject, level and Last or High apart.
    static int16_t scoreOf(int student, int subject, int level, bool high)
    {
        return static_cast<int16_t>(student * 1000 + subject * 100 + level * 2 + (high ? 1 : 0));
    }

    // Writes a roster file of the given names, every score marked with scoreOf().
    void writeRoster(const std::vector<std::string> &names, int current = 0,
                     bool showByStudent = true, int currentSubject = 0)
    {
        StudentRecords records;
        records.ShowByStudent = showByStudent;
        records.CurrentSubject = currentSubject;
        for (std::size_t i = 0; i < names.size(); ++i) {
            Student student = NewStudent(session.bank.SubjectMax);
            student.Name = names[i];
            student.Current = static_cast<int>(i) == current;
            for (int s = 0; s < static_cast<int>(student.Results.size()); ++s)
                for (int level = 0; level < LevelCount; ++level) {
                    student.Results[s].Last[level] = scoreOf(static_cast<int>(i), s, level, false);
                    student.Results[s].High[level] = scoreOf(static_cast<int>(i), s, level, true);
                }
            records.Students.push_back(student);
        }
        ASSERT_FALSE(SaveStudents(records, session.paths.StudentsPath).has_value());
    }

    // A loaded screen whose help page only counts how often it was opened.
    std::unique_ptr<StudentsScreen> openScreen()
    {
        auto screen = std::make_unique<StudentsScreen>(session);
        screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        EXPECT_TRUE(screen->Form_Load());
        return screen;
    }

    // The roster as the Students file now holds it.
    StudentRecords saved() const
    {
        StudentRecords records;
        const LoadResult result = LoadStudents(records, session.bank, session.paths.StudentsPath);
        EXPECT_EQ(result.status, LoadResult::Status::Loaded);
        return records;
    }

    template <typename Widget> static Widget *child(const StudentsScreen &screen, const char *name)
    {
        Widget *widget = screen.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    // Texts are compared as UTF-8, which failure messages print readably.
    static std::string Utf8(const QString &text) { return text.toStdString(); }

    static std::vector<std::string> Lines(const QListWidget &list)
    {
        std::vector<std::string> texts;
        for (int row = 0; row < list.count(); ++row)
            texts.push_back(Utf8(list.item(row)->text()));
        return texts;
    }

    static std::vector<std::string> Names(const StudentRecords &records)
    {
        std::vector<std::string> names;
        for (const Student &student : records.Students)
            names.push_back(student.Name);
        return names;
    }

    // The confirmation last asked for, by title; the script's answer decides it.
    ::testing::AssertionResult askedToConfirm(const char *title) const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        if (shown && shown->kind == ScriptedPrompt::Shown::Kind::Confirm &&
            shown->title == QString::fromLatin1(title))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << "last prompt: " << (shown ? shown->title.toStdString() : "none");
    }

    TempDataDir dir;
    WatchingPrompt prompt;
    Session session;
    int helpOpened = 0;
};
