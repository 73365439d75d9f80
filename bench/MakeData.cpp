// Writes the large data set into DIR/data, so the program can be started on it.
#include "LargeDataSet.h"

#include <filesystem>
#include <iostream>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " DIR   (writes DIR/data/Tavrino_*.dat)\n";
        return 2;
    }
    const std::filesystem::path dataDir = std::filesystem::path(argv[1]) / "data";
    if (const std::optional<FileError> error = WriteLargeDataSet(dataDir)) {
        std::cerr << error->message() << '\n';
        return 1;
    }
    std::cout << "Wrote " << dataDir.string() << "/Tavrino_Tests.dat ("
              << std::filesystem::file_size(dataDir / "Tavrino_Tests.dat") << " bytes) and "
              << dataDir.string() << "/Tavrino_Students.dat ("
              << std::filesystem::file_size(dataDir / "Tavrino_Students.dat") << " bytes)\n";
    return 0;
}
