// Writes the large answer history into DIR/data/Tavrino_History.db, so that the
// program can be tried on it; its students are named as historyStudentNames() gives.
#include "HistoryData.h"

#include <filesystem>
#include <iostream>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " DIR   (writes DIR/data/Tavrino_History.db)\n";
        return 2;
    }
    namespace fs = std::filesystem;
    const fs::path target = fs::path(argv[1]) / "data" / "Tavrino_History.db";
    try {
        const fs::path cached = cachedLargeHistory();
        fs::create_directories(target.parent_path());
        fs::copy_file(cached, target, fs::copy_options::overwrite_existing);
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    std::cout << "Wrote " << target.string() << " (" << fs::file_size(target) << " bytes)\n";
    return 0;
}
