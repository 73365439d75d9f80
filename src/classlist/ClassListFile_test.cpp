// Reading a class list from a file: the forms a spreadsheet or an editor saves,
// their encodings and line ends, and the files refused with a message.
#include "ClassListFile.h"

#include "core/CoreFixtures_test.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

using Names = std::vector<std::string>;

struct Case {
    const char *what;
    const char *fileName;
    std::string bytes;
    Names names;
};

} // namespace

TEST(ClassListFile, SpreadsheetsAndTextFilesGiveTheirNames)
{
    const std::vector<Case> cases = {
        {"a header chooses its column and is not a name", "class.csv",
         "Id,Name,Grade\r\n7,Ann Lee,3\r\n8,Bob Cruz,3\r\n", Names{"Ann Lee", "Bob Cruz"}},
        {"the header in any case, Student when there is no Name", "class.CSV",
         "Grade;STUDENT\n3;Ann\n4;Ben\n", Names{"Ann", "Ben"}},
        {"Name wins over Student", "class.csv", "Student,Name\n41,Ann\n42,Ben\n",
         Names{"Ann", "Ben"}},
        {"without a header, the first column from the first row on", "class.csv", "Ann,3\nBen,4\n",
         Names{"Ann", "Ben"}},
        {"quoted names with commas, doubled quotes and a line break", "class.csv",
         "Name,Grade\n\"Lee, Ann\",3\n\"O\"\"Hara, Pat\",4\n\"Cruz,\r\nBob\",5\n",
         Names{"Lee, Ann", "O\"Hara, Pat", "Cruz, Bob"}},
        {"a byte-order mark does not hide the header", "class.csv",
         "\xEF\xBB\xBFName\nZo\xC3\xAB\n", Names{"Zo\u00EB"}},
        {"Windows-1252 letters, CR line ends", "class.csv", "Name\rAndr\xE9\rJos\xE9\r\x8Aimon\r",
         Names{"Andr\u00E9", "Jos\u00E9", "\u0160imon"}},
        {"blank lines, empty rows and short rows give no names", "class.csv",
         "Id,Name\n1,Ann\n\n,,\n2\n3,  \n4,Ben", Names{"Ann", "Ben"}},
        {"a sep= line names the delimiter", "class.csv", "sep=;\nName;Grade\nLee, Ann;3\n",
         Names{"Lee, Ann"}},
        {"a text file is one name a line, commas and all", "class.txt",
         "Lee, Ann\r\n\r\n  Bob Cruz  \r\nZo\xEB\r\n", Names{"Lee, Ann", "Bob Cruz", "Zo\u00EB"}},
        {"a header line in a text file is passed over", "names", "Names\nAnn\nBen\n",
         Names{"Ann", "Ben"}},
        {"a text file with tabs is a spreadsheet saved as text", "class.txt",
         "Grade\tName\n3\tLee, Ann\n", Names{"Lee, Ann"}},
        {"an unclosed quote runs to the end", "class.csv", "Name\n\"Ann\nBen", Names{"Ann Ben"}},
    };
    for (const Case &test : cases) {
        const ClassList list = readClassList(test.bytes, test.fileName);
        EXPECT_EQ(list.problem, "") << test.what;
        EXPECT_EQ(list.names, test.names) << test.what;
    }
}

TEST(ClassListFile, FilesThatAreNotListsOfNamesAreRefusedWithAMessage)
{
    ScratchDir dir;
    const std::string big(MaxClassListBytes + 1, 'a');
    const std::vector<std::pair<std::string, std::string>> refused = {
        {big, "is larger than 1 MB"},
        {std::string("PK\3\4\0\0", 6), "does not hold plain text"},
        {"\xFF\xFEN\0a\0m\0e\0", "does not hold plain text"},
        {"Name,Grade\n,3\n\n", "holds no names"},
        {"", "holds no names"},
    };
    for (const auto &[bytes, why] : refused) {
        const ClassList list = readClassList(bytes, "class.csv");
        EXPECT_TRUE(list.names.empty());
        EXPECT_NE(list.problem.find("\"class.csv\" " + why), std::string::npos) << list.problem;
    }

    // Read from the disk: the size limit is exact, and what cannot be read says so.
    writeBytes(dir / "just.txt", std::string(MaxClassListBytes, 'a'));
    EXPECT_EQ(readClassListFile(dir / "just.txt").names,
              Names{std::string(MaxClassListBytes, 'a')});
    writeBytes(dir / "big.txt", big);
    EXPECT_NE(readClassListFile(dir / "big.txt").problem.find("larger than 1 MB"),
              std::string::npos);
    EXPECT_NE(readClassListFile(dir / "missing.csv").problem.find("could not be read"),
              std::string::npos);
    EXPECT_NE(readClassListFile(dir / "").problem.find("is not a file of names"),
              std::string::npos);
    // A folder named outside ASCII is no obstacle, and is named in UTF-8.
    const std::string accented = "d\u00E9j\u00E0 \u540D";
    const std::filesystem::path folder = dir.path() / std::filesystem::u8path(accented);
    std::filesystem::create_directory(folder);
    writeBytes(folder / "class.txt", "Ann\nBo\n");
    EXPECT_EQ(readClassListFile(folder / "class.txt").names, (Names{"Ann", "Bo"}));
    const std::string missing = readClassListFile(folder / "none.txt").problem;
    EXPECT_NE(missing.find("\"" + (folder / "none.txt").u8string() + "\" could not be read"),
              std::string::npos)
        << missing;
    EXPECT_NE(missing.find(accented), std::string::npos) << missing;
#ifndef _WIN32
    // A pipe nobody writes to is refused at once rather than waited on (Windows
    // has no pipes among the files of a folder).
    const std::filesystem::path pipe = dir / "pipe.csv";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_NE(readClassListFile(pipe).problem.find("is not a file of names"), std::string::npos);
#endif
}
