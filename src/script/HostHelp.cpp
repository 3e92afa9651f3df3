#include "script/HostHelp.h"

#include <algorithm>
#include <cctype>

#include "automation/Version.h"
#include "frame/Utf8.h"

namespace qvt {

namespace {

std::string lower(std::string_view s) {
    std::string r(s);
    for (char& c : r) c = char(std::tolower(static_cast<unsigned char>(c)));
    return r;
}

bool startsWithFolded(std::string_view name, std::string_view prefix) {
    if (prefix.size() > name.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(name[i])) != std::tolower(static_cast<unsigned char>(prefix[i])))
            return false;
    return true;
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

bool isTopicChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$' || c == '.';
}

const char* kindText(ClassKind k) {
    switch (k) {
        case ClassKind::Global: return "global";
        case ClassKind::Creatable: return "creatable";
        case ClassKind::Noncreatable: return "not creatable";
        case ClassKind::Runtime: return "runtime";
    }
    return "";
}

// How a class's members are reached, for its help page.
std::string reachText(const ClassInfo& c) {
    const std::string name = toUtf8(c.name);
    switch (c.kind) {
        case ClassKind::Global:
            return "Call its members as " + name + ".Name(...), or by name alone where no other class has the name.\n";
        case ClassKind::Creatable:
            return "Make one with  Set x = New " + name + "  and call x.Name(...).\n";
        case ClassKind::Noncreatable: return "Its objects come from other members; they cannot be made with New.\n";
        case ClassKind::Runtime: return "Its functions are called by name alone, as in Basic: Mid$(s, 2, 3).\n";
    }
    return {};
}

const char* memberKindText(MemberKind k) {
    switch (k) {
        case MemberKind::Method: return "method";
        case MemberKind::PropertyGet: return "property, read";
        case MemberKind::PropertyLet: return "property, assigned with =";
        case MemberKind::PropertySet: return "property, assigned with Set";
    }
    return "";
}

std::string memberText(const MemberInfo& m) {
    const ClassInfo& owner = *m.owner;
    std::string out = toUtf8(owner.kind == ClassKind::Runtime ? m.name : m.qualifiedName());
    out += "  (" + std::string(memberKindText(m.kind)) + " of " + toUtf8(owner.name) + ")\n";
    out += "  " + toUtf8(m.display()) + "\n";
    if (!m.params.empty()) {
        out += "Parameters:\n";
        size_t width = 0;
        for (const ParamInfo& p : m.params) width = std::max(width, p.name.size());
        for (size_t i = 0; i < m.params.size(); ++i) {
            const ParamInfo& p = m.params[i];
            std::string line = "  " + toUtf8(p.name) + std::string(width - p.name.size() + 2, ' ');
            line += toUtf8(p.typeDisplay(i + 1 == m.params.size()));
            if (p.paramArray) line += ", any number of them";
            else if (!p.optional) line += ", required";
            else if (p.hasDefault) line += ", optional, default " + toUtf8(p.defaultDisplay());
            else if (p.type == vbVariant && !p.isArray) line += ", optional (Missing when left out)";
            else line += ", optional";
            if (p.byRef && !p.paramArray) line += ", by reference: the member may change the caller's variable";
            out += line + "\n";
        }
    }
    if (m.hasResult) {
        out += "Result: " + toUtf8(m.resultDisplay()) + "\n";
    } else if (m.kind == MemberKind::Method) {
        out += "No result: call it as a statement.\n";
    }
    return out;
}

std::string slotText(const MemberSlot& slot) {
    std::string out;
    for (const MemberInfo* m : {slot.get, slot.let, slot.set}) {
        if (!m) continue;
        if (!out.empty()) out += "\n";
        out += memberText(*m);
    }
    return out;
}

std::string classText(const ClassInfo& c) {
    std::string out = toUtf8(c.name) + " (" + kindText(c.kind) + " class, " + std::to_string(c.members.size()) +
                      (c.members.size() == 1 ? " member)\n" : " members)\n");
    if (!c.help.empty()) out += toUtf8(c.help) + "\n";
    out += reachText(c) + "\n";
    for (const auto& m : c.members) out += "  " + toUtf8(m->display()) + "\n";
    return out;
}

const char* const kLanguage =
    "qvt runs lines of a small Basic. Every value is a Variant and every call goes\n"
    "through the library's type library by name, as any Automation client's would.\n"
    "\n"
    "  2 ^ 10                        an expression prints its value\n"
    "  x = Mid$(\"measure\", 2, 3)     variables are Variants, made on first use\n"
    "  Dim n As Long: Dim m(1 To 5)  typed variables and arrays\n"
    "  StringSearches.CountStrings(\"abcabc\", \"b\")   a member by Class.Name,\n"
    "  CountStrings(\"abcabc\", \"b\")   or by name alone where one class has it\n"
    "  Set u = New Units             an object of a creatable class\n"
    "  If Len(x) > 2 Then y = 1 Else y = 2\n"
    "  On Error Resume Next: ? 1 / 0: ? Err.Number\n"
    "  i = 1: j = 2 ' note           ':' separates statements, ' starts a comment\n"
    "\n"
    "A member that cannot use its arguments returns Null rather than failing; a\n"
    "run-time error prints its number and the member it came from.\n"
    "\n"
    "  help classes         the classes\n"
    "  help CLASS           a class and its members\n"
    "  help CLASS.MEMBER    one member: its parameters and result\n"
    "  Tab                  completes class, member and function names\n"
    "  exit, quit, Ctrl-D   leave\n";

// The host's statement words, offered with the names.
const char* const kKeywords[] = {"Call", "Close", "Dim", "Else", "Empty", "Erase", "Err", "exit", "False", "GoTo",
                                 "help", "If", "Let", "Line", "Name", "New", "Nothing", "Null", "On", "Open",
                                 "Preserve", "Print", "quit", "ReDim", "Resume", "Set", "Then", "True"};

void addMembers(std::vector<std::string>& out, const ClassInfo& c, std::string_view prefix, std::string_view partial) {
    for (const auto& m : c.members) {
        const std::string name = toUtf8(m->name);
        if (startsWithFolded(name, partial)) out.push_back(std::string(prefix) + name);
    }
}

}  // namespace

std::string greeting() {
    return std::string("Quorvane Tools ") + kLibraryVersion +
           " for Linux. Type help for help, help classes for the classes; exit or Ctrl-D leaves.";
}

std::string versionText() {
    return std::string("qvt ") + kLibraryVersion + " (Quorvane Tools " + kLibraryVersion + " for Linux, type library " +
           kTypeLibraryName + ")";
}

HostCommand hostCommand(std::string_view line) {
    HostCommand cmd;
    const std::string_view t = trimmed(line);
    const size_t wordEnd = std::min(t.find_first_of(" \t"), t.size());
    const std::string word = lower(t.substr(0, wordEnd));
    const std::string_view rest = trimmed(t.substr(wordEnd));
    if ((word == "exit" || word == "quit") && rest.empty()) {
        cmd.kind = HostCommand::Exit;
    } else if (word == "help" && std::all_of(rest.begin(), rest.end(), isTopicChar)) {
        cmd.kind = HostCommand::Help;
        cmd.topic = std::string(rest);
    }
    return cmd;
}

std::string classListText(const TypeLibrary& lib) {
    std::string out;
    for (const ClassInfo* c : lib.classes()) {
        std::string line = toUtf8(c->name);
        line.resize(std::max<size_t>(line.size() + 1, 21), ' ');
        std::string kind = kindText(c->kind);
        kind.resize(14, ' ');
        line += kind + (c->help.empty() ? std::to_string(c->members.size()) + " members" : toUtf8(c->help));
        out += line + "\n";
    }
    return out;
}

std::string helpText(const TypeLibrary& lib, std::string_view topic, bool* found) {
    if (found) *found = true;
    topic = trimmed(topic);
    if (topic.empty()) return kLanguage;
    if (lower(topic) == "classes") return classListText(lib);
    const String name = fromUtf8(topic);
    const size_t dot = name.find(u'.');
    if (dot == String::npos) {
        if (const ClassInfo* c = lib.findClass(name)) return classText(*c);
        const ClassInfo* owner = nullptr;
        bool ambiguous = false;
        if (const MemberSlot* slot = lib.findUnqualified(name, &owner, &ambiguous)) {
            if (!ambiguous) return slotText(*slot);
            std::string out = std::string(topic) + " is a member of more than one class; name the class:\n";
            for (const ClassInfo* c : lib.classes())
                if (c->kind == ClassKind::Global && c->find(name)) out += "  help " + toUtf8(c->name) + "." + std::string(topic) + "\n";
            return out;
        }
    } else if (const ClassInfo* c = lib.findClass(StringView(name).substr(0, dot))) {
        if (const MemberSlot* slot = c->find(StringView(name).substr(dot + 1))) return slotText(*slot);
        if (found) *found = false;
        return toUtf8(c->name) + " has no member named " + toUtf8(name.substr(dot + 1)) + ". Type help " +
               toUtf8(c->name) + " for its members.\n";
    }
    if (found) *found = false;
    return "No class or member named " + std::string(topic) + ". Type help classes for the classes.\n";
}

std::vector<std::string> completions(const TypeLibrary& lib, std::string_view word, const ObjectClassLookup& objectClass) {
    std::vector<std::string> out;
    const size_t dot = word.rfind('.');
    if (dot != std::string_view::npos) {
        const std::string_view owner = word.substr(0, dot);
        const ClassInfo* c = lib.findClass(fromUtf8(owner));
        if (!c && objectClass) c = objectClass(owner);
        if (c) addMembers(out, *c, word.substr(0, dot + 1), word.substr(dot + 1));
    } else {
        for (const ClassInfo* c : lib.classes()) {
            if (c->kind == ClassKind::Runtime) addMembers(out, *c, "", word);
            else if (startsWithFolded(toUtf8(c->name), word)) out.push_back(toUtf8(c->name));
        }
        for (const char* k : kKeywords)
            if (startsWithFolded(k, word)) out.push_back(k);
    }
    std::sort(out.begin(), out.end(), [](const std::string& a, const std::string& b) { return lower(a) < lower(b); });
    out.erase(std::unique(out.begin(), out.end(), [](const std::string& a, const std::string& b) { return lower(a) == lower(b); }),
              out.end());
    return out;
}

}  // namespace qvt
