#include "core/DataPaths.h"

DataPaths DataPaths::In(const std::filesystem::path &dataDir)
{
    DataPaths paths;
    paths.DataDir = dataDir;
    paths.TestsPath = dataDir / "Tavrino_Tests.dat";
    paths.StudentsPath = dataDir / "Tavrino_Students.dat";
    paths.BlankPagePath = dataDir / "blank.html";
    return paths;
}
