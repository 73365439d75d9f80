#include "core/History.h"

#include "core/HistoryCsv.h"
#include "core/HistoryStore.h"

History::History(const std::filesystem::path &dataDir, HistoryClock &clock)
    : m_store(std::make_unique<HistoryStore>(dataDir)), m_roster(*m_store), m_subjects(*m_store),
      m_recorder(*m_store, m_roster, m_subjects, clock), m_queries(*m_store, m_roster, m_subjects)
{
}

History::~History() = default;

bool History::isOn() const
{
    return m_store->isOn();
}

std::optional<std::string> History::takeMessage()
{
    return m_store->takeMessage();
}

bool History::exportCsv(std::ostream &out)
{
    return m_store->read([&](SqliteDatabase &db) { writeHistoryCsv(db, out); }) &&
           static_cast<bool>(out);
}

std::optional<std::string> History::backUpTo(const std::filesystem::path &file)
{
    return m_store->backUpTo(file);
}

std::optional<std::string> History::restoreFrom(const std::filesystem::path &file)
{
    std::optional<std::string> problem = m_store->restoreFrom(file);
    m_roster.followStore();
    m_subjects.followStore();
    return problem;
}

History::Batch::Batch(History &history) : m_store(*history.m_store)
{
    m_store.beginBatch();
}

History::Batch::~Batch()
{
    m_store.endBatch();
}
