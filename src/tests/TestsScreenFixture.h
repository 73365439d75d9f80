// What the Tests screen's tests share: a session on the default bank in a
// temporary data directory, one student with results, scripted prompt answers,
// and a way to find the screen's controls.
#pragma once

#include "TestsScreen.h"
#include "core/DefaultBank.h"
#include "core/Students.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QString>

#include <gtest/gtest.h>

#include <memory>

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

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    int helpOpened = 0;

private:
    std::unique_ptr<TestsScreen> m_screen;
};
