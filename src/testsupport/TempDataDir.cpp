#include "TempDataDir.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

TempDataDir::TempDataDir()
{
    static std::atomic<unsigned> counter{0};
    std::random_device entropy;
    const auto base = std::filesystem::temp_directory_path();
    for (;;) {
        auto candidate =
            base / ("tavrino-test-" + std::to_string(entropy()) + "-" + std::to_string(counter++));
        std::error_code ec;
        if (std::filesystem::create_directory(candidate, ec)) {
            m_path = candidate / "data";
            std::filesystem::create_directory(m_path);
            return;
        }
    }
}

TempDataDir::~TempDataDir()
{
    std::error_code ec;
    std::filesystem::remove_all(m_path.parent_path(), ec);
}

std::vector<unsigned char> readFileBytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
