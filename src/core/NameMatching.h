// Pairs a list of names, in order (a roster, a bank's subjects), with the names
// the history knows: first the same name, then the same name trimmed and in any
// letter case, then the same position. Names may repeat; repeated names pair in
// order, a known name at the same position first.
#pragma once

#include <string>
#include <vector>

struct KnownName {
    std::string name;
    int position = -1; // where the name stood when last saved; -1 for none
};

// For each name, the index into known of its match, or -1 when none is left.
// Each known name is used at most once.
std::vector<int> matchNames(const std::vector<KnownName> &known,
                            const std::vector<std::string> &names);
