// What --worksheet asks for, read from the options that go with it: the
// subject by name, the level, and the sheet's settings.
#pragma once

#include "worksheets/Worksheet.h"

#include <QHash>
#include <QString>

#include <optional>

struct WorksheetOptions {
    QString subjectName; // as given, found in the bank later
    int level = 0;
    WorksheetSettings settings;
};

// Reads --subject, --level, --count, --seed and --no-key. On a mistake, the one
// line that says what is wrong, naming the value.
std::optional<QString> readWorksheetOptions(const QHash<QString, QString> &values,
                                            WorksheetOptions &options);

// The subject whose name matches, both trimmed, in any case; the first such.
std::optional<int> findSubject(const TestBank &bank, const QString &name);

// The line that says no subject has the name, listing the names there are.
QString unknownSubject(const TestBank &bank, const QString &name);
