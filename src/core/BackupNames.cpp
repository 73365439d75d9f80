#include "core/BackupNames.h"

#include <cstdio>

namespace {

// "2026-11-24 10-15-03": dashes in the time too, as file names on Windows may
// not hold a colon.
constexpr std::size_t StampLength = 19;

bool digitsAt(std::string_view text, std::size_t at, std::size_t count, int &value)
{
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return false;
        }
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

std::optional<LocalSeconds> parseStamp(std::string_view stamp)
{
    CivilTime time;
    const bool digits = digitsAt(stamp, 0, 4, time.year) && digitsAt(stamp, 5, 2, time.month) &&
                        digitsAt(stamp, 8, 2, time.day) && digitsAt(stamp, 11, 2, time.hour) &&
                        digitsAt(stamp, 14, 2, time.minute) && digitsAt(stamp, 17, 2, time.second);
    if (!digits || stamp[4] != '-' || stamp[7] != '-' || stamp[10] != ' ' || stamp[13] != '-' ||
        stamp[16] != '-') {
        return std::nullopt;
    }
    const LocalSeconds seconds = toLocalSeconds(time);
    // 2026-02-31 would be read as a day in March: only names this code writes count.
    const CivilTime back = toCivilTime(seconds);
    if (back.year != time.year || back.month != time.month || back.day != time.day ||
        back.hour != time.hour || back.minute != time.minute || back.second != time.second) {
        return std::nullopt;
    }
    return seconds;
}

// " (2)" and on; the first copy of a second has no number.
std::optional<int> parseSequence(std::string_view text)
{
    if (text.empty()) {
        return 1;
    }
    if (text.size() < 4 || text.size() > 12 || text.substr(0, 2) != " (" || text.back() != ')') {
        return std::nullopt;
    }
    int value = 0;
    if (!digitsAt(text, 2, text.size() - 3, value) || value < 2 || text[2] == '0') {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::string backupFileName(const BackupName &name)
{
    const CivilTime t = toCivilTime(name.made);
    char stamp[40];
    std::snprintf(stamp, sizeof stamp, " %04d-%02d-%02d %02d-%02d-%02d", t.year, t.month, t.day,
                  t.hour, t.minute, t.second);
    std::string fileName = name.stem + stamp;
    if (name.sequence > 1) {
        fileName += " (" + std::to_string(name.sequence) + ")";
    }
    return fileName + name.extension;
}

std::optional<BackupName> parseBackupFileName(std::string_view fileName, std::string_view stem,
                                              std::string_view extension)
{
    const std::size_t fixed = stem.size() + 1 + StampLength + extension.size();
    if (fileName.size() < fixed || fileName.substr(0, stem.size()) != stem ||
        fileName[stem.size()] != ' ' ||
        fileName.substr(fileName.size() - extension.size()) != extension) {
        return std::nullopt;
    }
    const std::string_view stamp = fileName.substr(stem.size() + 1, StampLength);
    const std::string_view rest =
        fileName.substr(stem.size() + 1 + StampLength, fileName.size() - fixed);
    const std::optional<LocalSeconds> made = parseStamp(stamp);
    const std::optional<int> sequence = parseSequence(rest);
    if (!made || !sequence) {
        return std::nullopt;
    }
    return BackupName{std::string(stem), std::string(extension), *made, *sequence};
}
