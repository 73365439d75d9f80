#include "commandline/WorksheetOptions.h"

#include <QStringList>

#include <limits>

namespace {

QString quoted(const QString &value)
{
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

// "K" (either case) or 1..12, as the level buttons are captioned.
std::optional<int> readLevel(const QString &given)
{
    const QString level = given.trimmed();
    if (level.compare(QStringLiteral("K"), Qt::CaseInsensitive) == 0)
        return 0;
    bool number = false;
    const int value = level.toInt(&number);
    if (number && value >= 1 && value < LevelCount)
        return value;
    return std::nullopt;
}

} // namespace

std::optional<QString> readWorksheetOptions(const QHash<QString, QString> &values,
                                            WorksheetOptions &options)
{
    options.subjectName = values.value(QStringLiteral("subject")).trimmed();
    if (options.subjectName.isEmpty())
        return QStringLiteral("--worksheet needs --subject NAME.");
    if (!values.contains(QStringLiteral("level")))
        return QStringLiteral("--worksheet needs --level K or 1 to 12.");
    const QString level = values.value(QStringLiteral("level"));
    const std::optional<int> levelIndex = readLevel(level);
    if (!levelIndex)
        return QStringLiteral("--level %1 is not a level; give K or 1 to 12.").arg(quoted(level));
    options.level = *levelIndex;

    if (values.contains(QStringLiteral("count"))) {
        const QString count = values.value(QStringLiteral("count"));
        bool number = false;
        options.settings.count = count.trimmed().toInt(&number);
        if (!number || options.settings.count < MinWorksheetCount ||
            options.settings.count > MaxWorksheetCount)
            return QStringLiteral("--count %1 is not a number of problems from %2 to %3.")
                .arg(quoted(count))
                .arg(MinWorksheetCount)
                .arg(MaxWorksheetCount);
    }
    if (values.contains(QStringLiteral("seed"))) {
        const QString seed = values.value(QStringLiteral("seed"));
        bool number = false;
        const qulonglong value = seed.trimmed().toULongLong(&number);
        if (!number || value > std::numeric_limits<std::uint32_t>::max())
            return QStringLiteral("--seed %1 is not a whole number from 0 to %2.")
                .arg(quoted(seed))
                .arg(std::numeric_limits<std::uint32_t>::max());
        options.settings.seed = static_cast<std::uint32_t>(value);
    }
    options.settings.answerKey = !values.contains(QStringLiteral("no-key"));
    return std::nullopt;
}

std::optional<int> findSubject(const TestBank &bank, const QString &name)
{
    const QString wanted = name.trimmed();
    for (std::size_t i = 0; i < bank.subjects.size(); ++i)
        if (QString::fromStdString(bank.subjects[i].name)
                .trimmed()
                .compare(wanted, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    return std::nullopt;
}

QString unknownSubject(const TestBank &bank, const QString &name)
{
    QStringList names;
    for (const Subject &subject : bank.subjects)
        names.append(QString::fromStdString(subject.name).trimmed());
    return QStringLiteral("--subject %1 is not a subject; the subjects are %2.")
        .arg(quoted(name), names.join(QStringLiteral(", ")));
}
