// Writes the large data set into DIR/data, so the program can be started on it;
// a second argument sets the questions per level (1000 unless given).
#include "LargeDataSet.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

int main(int argc, char *argv[])
{
    LargeDataSetSize size;
    if (argc == 3)
        size.questionsPerLevel = std::atoi(argv[2]);
    if (argc < 2 || argc > 3 || size.questionsPerLevel < 1) {
        std::cerr << "usage: " << argv[0]
                  << " DIR [QUESTIONS_PER_LEVEL]   (writes DIR/data/Tavrino_*.dat)\n";
        return 2;
    }
    const std::filesystem::path dataDir = std::filesystem::path(argv[1]) / "data";
    if (const std::optional<FileError> error = writeLargeDataSet(dataDir, size)) {
        std::cerr << error->message() << '\n';
        return 1;
    }
    std::cout << "Wrote " << dataDir.string() << "/Tavrino_Tests.dat ("
              << std::filesystem::file_size(dataDir / "Tavrino_Tests.dat") << " bytes) and "
              << dataDir.string() << "/Tavrino_Students.dat ("
              << std::filesystem::file_size(dataDir / "Tavrino_Students.dat") << " bytes)\n";
    return 0;
}
