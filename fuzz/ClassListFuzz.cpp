// Any bytes given as a class list file, read as CSV and as text, either give
// names each fit for one line of the Add Class box, or a message and no names;
// and those names, pasted into the box, come back as the same names.
#include "FuzzBanks.h"

#include "classlist/ClassListFile.h"
#include "classlist/NewNames.h"
#include "classlist/RosterText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

bool oneLine(const std::string &name)
{
    return name.find_first_of("\r\n") == std::string::npos &&
           name.find("\xE2\x80\xA8") == std::string::npos &&
           name.find("\xE2\x80\xA9") == std::string::npos;
}

bool trimmed(const std::string &name)
{
    return !name.empty() && name.front() != ' ' && name.front() != '\t' && name.back() != ' ' &&
           name.back() != '\t';
}

void check(std::string_view bytes, const char *fileName, const NewNamesPlanner &planner)
{
    const ClassList list = readClassList(bytes, fileName);
    if (!list.problem.empty()) {
        require(list.names.empty(), "a refused file gives no names");
        return;
    }
    require(bytes.size() <= MaxClassListBytes, "a file over the limit is refused");
    require(!list.names.empty(), "a file read gives names");
    std::string pasted;
    for (const std::string &name : list.names) {
        require(isUtf8(name) && oneLine(name) && trimmed(name),
                "each name is UTF-8 on one line, not blank, with no blanks around it");
        pasted += name + '\n';
    }
    const NewNames all = planner.plan(pasted, true);
    require(all.names.size() == list.names.size() && all.blankLines == 0,
            "the names pasted one a line give one name a line");
    for (std::size_t i = 0; i < all.names.size(); ++i) {
        require(all.names[i] == cleanName(list.names[i]), "a pasted name is cleaned as typed");
    }
}

// The bytes as text pasted into the box (which always holds UTF-8): every line is
// a name, a blank, a name on the roster or a repeat, and no name added twice.
void checkPasted(std::string_view bytes, const NewNamesPlanner &planner)
{
    const std::string text = decodeRosterText(bytes);
    const std::size_t lines = splitLines(text).size();
    const NewNames some = planner.plan(text, false);
    const NewNames all = planner.plan(text, true);
    require(all.names.size() == some.names.size() + std::size_t(some.onRoster + some.repeats),
            "asked to, every known name is added too");
    require(all.names.size() + std::size_t(all.blankLines) <= lines,
            "no line gives more than one name");
    require(some.replacedLines == all.replacedLines,
            "the warning does not depend on the check box");
    for (const std::string &name : all.names) {
        require(isUtf8(name) && oneLine(name) && trimmed(name), "added names are clean");
        require(cleanName(name) == name, "a clean name stays as it is");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const NewNamesPlanner planner(roster(5).students);
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    check(bytes, "class.csv", planner);
    check(bytes, "class.txt", planner);
    checkPasted(bytes, planner);
    return 0;
}
