// What the Tests screen's tests share: a session on the default bank in a
// temporary data directory, one student with results, scripted prompt answers,
// and a way to find the screen's controls.
#pragma once

#include "TestsScreen.h"
#include "core/DefaultBank.h"
#include "core/Students.h"
#include "core/TestsFile.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QAbstractItemView>
#include <QPushButton>
#include <QString>

#include <gtest/gtest.h>

#include <memory>
#include <string>

class TestsScreenFixture : public ::testing::Test {
protected:
    TestsScreenFixture()
    {
        BuildDefaultTests(session.bank);
        Student ann = NewStudent(session.bank.SubjectMax);
        ann.Name = "Ann";
        ann.Current = true;
        session.records.Students = {ann};
        session.records.CurrentStudentName = "Ann";
    }

    // Opens the screen on the subject, as the main screen does.
    TestsScreen &open(int subject)
    {
        session.records.CurrentSubject = subject;
        session.records.CurrentSubjectName = session.bank.Subjects.at(subject).Name;
        m_screen = std::make_unique<TestsScreen>(session);
        m_screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        return *m_screen;
    }

    TestsScreen &screen() { return *m_screen; }

    template <typename T> T *control(const QString &name) const
    {
        T *found = m_screen->findChild<T *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    void click(const QString &button) const { control<QPushButton>(button)->click(); }

    static QString cell(const QAbstractItemView &table, int row, int column)
    {
        return table.model()->index(row, column).data().toString();
    }

    // Texts are compared as UTF-8, which failure messages print readably.
    static std::string Utf8(const QString &text) { return text.toStdString(); }

    TestBank loadedTests() const
    {
        TestBank bank;
        EXPECT_EQ(LoadTests(bank, session.paths.TestsPath).status, LoadResult::Status::Loaded);
        return bank;
    }

    // The confirmation last asked for, by title; the script's answer decides it.
    ::testing::AssertionResult askedToConfirm(const QString &title) const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        if (shown && shown->kind == ScriptedPrompt::Shown::Kind::Confirm && shown->title == title)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << "last prompt: " << (shown ? shown->title.toStdString() : "none");
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    int helpOpened = 0;

private:
    std::unique_ptr<TestsScreen> m_screen;
};
