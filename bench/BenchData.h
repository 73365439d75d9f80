// The large data set of a benchmark run: written once into a temporary
// directory that is removed at the end, and one session holding it loaded for
// the benchmarks of the screens.
#pragma once

#include "core/DataPaths.h"
#include "ui/Prompt.h"
#include "ui/Session.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

// The benchmarks drive the screens without dialogs; a dialog that would have
// been shown is reported on standard error, since it means a figure is off.
class SilentPrompt : public Prompt {
public:
    void stop(QWidget *parent, const QString &title, const QString &text) override;
    bool confirm(QWidget *parent, const QString &title, const QString &text) override;
    QString input(QWidget *parent, const QString &title, const QString &prompt,
                  const QString &defaultText = QString()) override;
    QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
                         const QString &filter) override;
    QString openFileName(QWidget *parent, const QString &title, const QString &filter) override;
};

class BenchData {
public:
    // Writes the data set on first use, under $TAVRINO_BENCH_DIR or the
    // system's temporary directory.
    static BenchData &instance();

    const DataPaths &paths() const { return m_paths; }
    // The same class and subjects with 12 questions per level, written on first use.
    const DataPaths &ordinaryBankPaths();
    std::uintmax_t testsBytes() const;
    std::uintmax_t studentsBytes() const;

    // The bank and the roster loaded from the files, as start-up leaves them.
    Session &session();

    BenchData(const BenchData &) = delete;
    BenchData &operator=(const BenchData &) = delete;
    ~BenchData();

private:
    BenchData();

    std::filesystem::path m_root;
    DataPaths m_paths;
    std::optional<DataPaths> m_ordinaryBankPaths;
    SilentPrompt m_prompt;
    std::unique_ptr<Session> m_session;
};
