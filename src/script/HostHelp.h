// What the qvt prompt offers a person: the greeting, the host's own commands
// (help, exit, quit), help texts read off the type library, and the names
// that complete a word. All of it is text for the host to print; nothing
// here runs a statement.
#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/TypeLibrary.h"

namespace qvt {

// The one line the interactive prompt opens with.
std::string greeting();
// What `qvt --version` prints.
std::string versionText();

// A line that is one of the host's commands rather than a statement:
// "help", "help TOPIC", "exit", "quit" (any case, blanks around). A line
// such as `help = 2` or `exit(1)` is a statement as usual.
struct HostCommand {
    enum Kind { None, Help, Exit } kind = None;
    std::string topic;  // for Help: "", "classes", "Class" or "Class.Member"
};
HostCommand hostCommand(std::string_view line);

// The text `help TOPIC` prints (UTF-8, lines ending in "\n"): the language
// for "", the class list for "classes", a class with its members, or one
// member with its parameters. A name alone finds a class first, then a
// member callable by that name alone. *found is false for an unknown topic
// (the text then says so).
std::string helpText(const TypeLibrary& lib, std::string_view topic, bool* found = nullptr);

// The class list, one class a line with its kind and help line.
std::string classListText(const TypeLibrary& lib);

// Everything that completes `word`, sorted, case kept as registered, no
// name twice: class names, the runtime's functions and the host's keywords
// for a plain word; for "X." the members of class X, or of the class of the
// object that `objectClass` finds in variable X. Matching ignores case.
using ObjectClassLookup = std::function<const ClassInfo*(std::string_view variable)>;
std::vector<std::string> completions(const TypeLibrary& lib, std::string_view word,
                                     const ObjectClassLookup& objectClass = {});

}  // namespace qvt
