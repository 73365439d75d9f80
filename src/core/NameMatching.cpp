#include "core/NameMatching.h"

#include <functional>
#include <unordered_map>

namespace {

// Blanks around a name and the case of its ASCII letters are what a name typed
// again most often differs by; letters beyond ASCII are compared as they are.
std::string loose(const std::string &name)
{
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    std::size_t begin = 0;
    std::size_t end = name.size();
    while (begin < end && blank(name[begin]))
        ++begin;
    while (end > begin && blank(name[end - 1]))
        --end;
    std::string folded = name.substr(begin, end - begin);
    for (char &c : folded) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return folded;
}

void matchByKey(const std::vector<KnownName> &known, const std::vector<std::string> &names,
                const std::function<std::string(const std::string &)> &key, std::vector<int> &match,
                std::vector<bool> &taken)
{
    std::unordered_map<std::string, std::vector<int>> byKey;
    for (std::size_t k = 0; k < known.size(); ++k) {
        if (!taken[k])
            byKey[key(known[k].name)].push_back(static_cast<int>(k));
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (match[i] >= 0)
            continue;
        const auto found = byKey.find(key(names[i]));
        if (found == byKey.end())
            continue;
        int chosen = -1;
        for (const int k : found->second) {
            if (taken[std::size_t(k)])
                continue;
            if (chosen < 0 || known[std::size_t(k)].position == static_cast<int>(i))
                chosen = k;
            if (known[std::size_t(k)].position == static_cast<int>(i))
                break;
        }
        if (chosen >= 0) {
            match[i] = chosen;
            taken[std::size_t(chosen)] = true;
        }
    }
}

} // namespace

std::vector<int> matchNames(const std::vector<KnownName> &known,
                            const std::vector<std::string> &names)
{
    std::vector<int> match(names.size(), -1);
    std::vector<bool> taken(known.size(), false);
    matchByKey(
        known, names, [](const std::string &name) { return name; }, match, taken);
    matchByKey(known, names, loose, match, taken);

    std::unordered_map<int, int> byPosition;
    for (std::size_t k = 0; k < known.size(); ++k) {
        if (!taken[k] && known[k].position >= 0)
            byPosition.emplace(known[k].position, static_cast<int>(k));
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (match[i] >= 0)
            continue;
        const auto found = byPosition.find(static_cast<int>(i));
        if (found != byPosition.end() && !taken[std::size_t(found->second)]) {
            match[i] = found->second;
            taken[std::size_t(found->second)] = true;
        }
    }
    return match;
}
