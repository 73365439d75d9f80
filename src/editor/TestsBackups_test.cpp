// Each action of the Tests screen that removes subjects or questions is
// preceded, once confirmed, by a copy of the files it touches as last saved.
#include "TestsScreenFixture_test.h"

#include "testsupport/TempDataDir.h"

#include <QTableView>

#include <algorithm>
#include <map>
#include <vector>

TEST_F(TestsScreenTest, EachActionThatRemovesQuestionsIsPrecededByACopyOfTheFilesAsSaved)
{
    ::addSubject(session.bank, "Birds");
    addSubjectResults(session.records, session.bank.subjectMax);
    const struct {
        const char *button;
        int subject;
        std::vector<DataFile> files;
    } actions[] = {
        {"cmdDelete", 1, {DataFile::Tests}},                  // Delete Question
        {"cmdRevert", 2, {DataFile::Tests}},                  // a subject's questions
        {"cmdRevert2", ArithmeticSubject, {DataFile::Tests}}, // the Arithmetic settings
        // These two save both files at once, after the copies.
        {"cmdDeleteSubject", 6, {DataFile::Students, DataFile::Tests}},
        {"cmdRevertAll", 1, {DataFile::Students, DataFile::Tests}},
    };
    for (const auto &action : actions) {
        SCOPED_TRACE(action.button);
        // A save point with something new in both files.
        session.bank.limits[3].seconds += 1;
        session.records.students[0].level = static_cast<int16_t>(action.subject);
        ASSERT_TRUE(session.saveTests(nullptr) && session.saveStudents(nullptr));
        const std::map<DataFile, std::vector<unsigned char>> asSaved = {
            {DataFile::Tests, readFileBytes(session.paths.testsPath)},
            {DataFile::Students, readFileBytes(session.paths.studentsPath)}};
        const std::vector<Backup> before = session.backups.list();

        open(action.subject);
        QTableView *questions = control<QTableView>("Grid1");
        questions->setCurrentIndex(questions->model()->index(0, 2));
        click(action.button);
        EXPECT_FALSE(lastConfirm().empty());
        EXPECT_EQ(session.backups.list().size(), before.size()) << "Cancel copies nothing";

        prompt.answerConfirm(true);
        click(action.button);
        std::vector<DataFile> copied;
        for (const Backup &copy : session.backups.list()) {
            if (std::any_of(before.begin(), before.end(),
                            [&](const Backup &old) { return old.path == copy.path; }))
                continue;
            copied.push_back(copy.file);
            EXPECT_EQ(readFileBytes(copy.path), asSaved.at(copy.file));
        }
        EXPECT_EQ(copied, action.files);
    }
    EXPECT_EQ(session.bank.subjectMax, 5);
}
