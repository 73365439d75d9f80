#include "core/DataPaths.h"

DataPaths DataPaths::in(const std::filesystem::path &dataDir)
{
    DataPaths paths;
    paths.dataDir = dataDir;
    paths.testsPath = dataDir / "Tavrino_Tests.dat";
    paths.studentsPath = dataDir / "Tavrino_Students.dat";
    paths.blankPagePath = dataDir / "blank.html";
    paths.backupsDir = dataDir / "backups";
    return paths;
}
