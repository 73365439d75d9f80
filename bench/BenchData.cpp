#include "BenchData.h"

#include "LargeDataSet.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <QString>

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

void report(const char *kind, const QString &title, const QString &text)
{
    std::cerr << "unexpected " << kind << " \"" << title.toStdString()
              << "\": " << text.toStdString() << '\n';
}

std::filesystem::path baseDirectory()
{
    const char *chosen = std::getenv("TAVRINO_BENCH_DIR");
    if (chosen && *chosen)
        return chosen;
    return std::filesystem::temp_directory_path();
}

} // namespace

void SilentPrompt::stop(QWidget *, const QString &title, const QString &text)
{
    report("message", title, text);
}

bool SilentPrompt::confirm(QWidget *, const QString &title, const QString &text)
{
    report("confirmation", title, text);
    return true;
}

QString SilentPrompt::input(QWidget *, const QString &title, const QString &prompt, const QString &)
{
    report("input box", title, prompt);
    return QStringLiteral("Student");
}

QString SilentPrompt::saveFileName(QWidget *, const QString &title, const QString &suggestedPath,
                                   const QString &)
{
    report("file dialog", title, suggestedPath);
    return QString();
}

QString SilentPrompt::openFileName(QWidget *, const QString &title, const QString &filter)
{
    report("file dialog", title, filter);
    return QString();
}

BenchData &BenchData::instance()
{
    static BenchData data;
    return data;
}

BenchData::BenchData()
    : m_root(baseDirectory() / ("tavrino-bench-" + std::to_string(::getpid()))),
      m_paths(DataPaths::in(m_root / "data"))
{
    std::cerr << "Writing the large data set to " << m_paths.dataDir << " ..." << std::endl;
    if (const std::optional<FileError> error = writeLargeDataSet(m_paths.dataDir))
        throw std::runtime_error(error->message());
}

BenchData::~BenchData()
{
    m_session.reset();
    std::error_code ignored;
    std::filesystem::remove_all(m_root, ignored);
}

const DataPaths &BenchData::ordinaryBankPaths()
{
    if (!m_ordinaryBankPaths) {
        LargeDataSetSize size;
        size.questionsPerLevel = 12;
        const DataPaths paths = DataPaths::in(m_root / "ordinary-bank" / "data");
        if (const std::optional<FileError> error = writeLargeDataSet(paths.dataDir, size))
            throw std::runtime_error(error->message());
        m_ordinaryBankPaths = paths;
    }
    return *m_ordinaryBankPaths;
}

std::uintmax_t BenchData::testsBytes() const
{
    return std::filesystem::file_size(m_paths.testsPath);
}

std::uintmax_t BenchData::studentsBytes() const
{
    return std::filesystem::file_size(m_paths.studentsPath);
}

Session &BenchData::session()
{
    if (!m_session) {
        m_session = std::make_unique<Session>(m_paths, m_prompt);
        if (!loadTests(m_session->bank, m_paths.testsPath).ok() ||
            !loadStudents(m_session->records, m_session->bank, m_paths.studentsPath).ok())
            throw std::runtime_error("the large data set could not be loaded");
    }
    return *m_session;
}
