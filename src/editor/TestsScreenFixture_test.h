// The Tests screen opened on a session of its own, with the accessors its
// tests share: the screen, its two frames and their grids.
#pragma once

#include "ArithmeticSettings.h"
#include "QuestionEditor.h"
#include "TestsScreen.h"
#include "core/DefaultBank.h"
#include "core/Students.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"
#include "testsupport/ScreenAccess.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"
#include "ui/FileText.h"
#include "ui/Session.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFont>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QString>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tuple>

class TestsScreenTest : public ::testing::Test {
protected:
    TestsScreenTest()
    {
        buildDefaultTests(session.bank);
        Student ann = newStudent(session.bank.subjectMax);
        ann.name = "Ann";
        ann.current = true;
        session.records.students = {ann};
    }

    // Opens the screen on the subject, as the main screen does.
    TestsScreen &open(int subject)
    {
        session.records.currentSubject = subject;
        m_screen = std::make_unique<TestsScreen>(session);
        m_screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        return *m_screen;
    }

    template <typename T = QWidget> T *control(const QString &name) const
    {
        T *found = m_screen->findChild<T *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    void click(const QString &button) const { control<QPushButton>(button)->click(); }
    QComboBox *subjects() const { return control<QComboBox>("cmbSubject"); }

    // Picks an entry of a drop-down list as the user does.
    void pick(const QString &list, const QString &entry) const
    {
        QComboBox *box = control<QComboBox>(list);
        const int index = box->findText(entry);
        ASSERT_GE(index, 0) << utf8(list) << " offers " << utf8(entry);
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    static QString cell(const QAbstractItemView &table, int row, int column)
    {
        return table.model()->index(row, column).data().toString();
    }

    // Texts are compared as UTF-8, which failure messages print readably.
    static std::string utf8(const QString &text) { return text.toStdString(); }

    TestBank loadedTests() const
    {
        TestBank bank;
        EXPECT_EQ(loadTests(bank, session.paths.testsPath).status, LoadResult::Status::Loaded);
        return bank;
    }

    void addSubject(const QString &name)
    {
        prompt.answerInput(name);
        click("cmdAddSubject");
    }
    StudentRecords loadedStudents(const TestBank &bank) const
    {
        StudentRecords records;
        EXPECT_EQ(loadStudents(records, bank, session.paths.studentsPath).status,
                  LoadResult::Status::Loaded);
        return records;
    }

    // The title of the last dialog, when it was a confirmation.
    std::string lastConfirm() const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        return shown && shown->kind == ScriptedPrompt::Shown::Kind::Confirm ? utf8(shown->title)
                                                                            : "";
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    int helpOpened = 0;

private:
    std::unique_ptr<TestsScreen> m_screen;
};

class QuestionEditorTest : public TestsScreenTest {
protected:
    QTableView *grid() const { return control<QTableView>("Grid1"); }
    QLineEdit *txt(int index) const
    {
        return control<QLineEdit>(QStringLiteral("txt%1").arg(index));
    }
    QString cell(int row, int column) const { return TestsScreenTest::cell(*grid(), row, column); }
    int rows() const { return grid()->model()->rowCount(); }
    int currentRow() const { return grid()->currentIndex().row(); }
    void clickRow(int row) const { grid()->setCurrentIndex(grid()->model()->index(row, 2)); }
    const Question &question(int subject, int lvl, int slot) const
    {
        return session.bank.questionBank[subject].items()[lvl][slot];
    }
};

constexpr int Add = 0, Sub = 1, Mul = 2, Div = 3;
inline const QStringList Off = {"Off", "Off", "Off", "Off"};

class ArithmeticSettingsTest : public TestsScreenTest {
protected:
    void SetUp() override
    {
        open(ArithmeticSubject);
        frame = control<ArithmeticSettings>("fraMath");
    }

    QTableView *grid() const { return control<QTableView>("Grid2"); }
    QString cell(int row, int column) const { return TestsScreenTest::cell(*grid(), row, column); }
    // The four cells of an operation at a level: Number 1 low, high, Number 2 low, high.
    QStringList cells(int level, int operation) const
    {
        QStringList texts;
        for (int k = 1; k <= 4; ++k)
            texts << cell(level + 3, 4 * operation + k);
        return texts;
    }
    QString shown(const char *list) const { return control<QComboBox>(list)->currentText(); }
    bool hidden(const char *name) const { return control(name)->isHidden(); }
    bool checked(const char *name) const { return control<QRadioButton>(name)->isChecked(); }

    ArithmeticSettings *frame = nullptr;
};
