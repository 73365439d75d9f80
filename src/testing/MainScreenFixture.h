// The main screen over a fresh data directory, with scripted dialogs and a
// Students screen replaced by what its close does: one current student, Ann.
#pragma once

#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"
#include "testing/MainScreen.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/Session.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

// Texts in failure messages.
inline std::ostream &operator<<(std::ostream &out, const QString &text)
{
    return out << text.toStdString();
}

class MainScreenTest : public ::testing::Test {
protected:
    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    std::unique_ptr<MainScreen> screen;
    int studentsScreenShown = 0;
    int subjectsListedWhenStudentsOpened = -1;
    std::size_t messagesWhenStudentsOpened = 0;

    void SetUp() override { session.random.seed(20240611); }

    void createScreen()
    {
        screen = std::make_unique<MainScreen>(session);
        screen->setOtherScreens({[this] { return closeStudentsScreen(); }, [] {}, [] {}});
    }

    // A Tests file holding the defaults with the given changes, as the Tests
    // screen would have saved it.
    template <typename Change> void saveTestsWith(Change change)
    {
        TestBank bank;
        BuildDefaultTests(bank);
        change(bank);
        ASSERT_FALSE(SaveTests(bank, session.paths.TestsPath));
    }

    // The program's start: the window comes up and activates for the first time.
    void startUp()
    {
        createScreen();
        screen->show();
        screen->activateWindow();
        // Lets the window become active. The first activation may run from
        // here already; the call below then finds it done.
        QCoreApplication::processEvents();
        screen->Form_Activate();
    }

    // What the Students screen does from its load to its close: the roster is
    // read (or started, with Ann as the first name) and Ann is made current.
    bool closeStudentsScreen()
    {
        ++studentsScreenShown;
        subjectsListedWhenStudentsOpened = combo("cmbSubject")->count();
        messagesWhenStudentsOpened = prompt.shown().size();
        StudentRecords &records = session.records;
        if (records.Students.empty()) {
            const LoadResult loaded =
                LoadStudents(records, session.bank, session.paths.StudentsPath);
            EXPECT_TRUE(loaded.ok());
            if (loaded.status == LoadResult::Status::Missing)
                records.Students[0].Name = "Ann";
        }
        records.CurrentStudent = 0;
        records.Students[0].Current = true;
        records.CurrentStudentName = TrimName(records.Students[0].Name);
        records.CurrentLevel = records.Students[0].Level;
        return session.saveStudents(nullptr);
    }

    // The roster as it is on disk now.
    StudentRecords studentsOnDisk() const
    {
        StudentRecords onDisk;
        EXPECT_EQ(LoadStudents(onDisk, session.bank, session.paths.StudentsPath).status,
                  LoadResult::Status::Loaded);
        return onDisk;
    }

    template <typename W> W *find(const char *name) const
    {
        W *widget = screen->findChild<W *>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLabel *label(const char *name) const { return find<QLabel>(name); }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QLineEdit *box(const char *name) const { return find<QLineEdit>(name); }
    QRadioButton *option(const char *name) const { return find<QRadioButton>(name); }
    QComboBox *combo(const char *name) const { return find<QComboBox>(name); }

    QString text(const char *name) const { return label(name)->text(); }
    bool shown(const char *name) const
    {
        QWidget *widget = find<QWidget>(name);
        return widget && widget->isVisible();
    }
};
