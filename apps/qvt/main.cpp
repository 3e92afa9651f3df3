// qvt: the script host, the Automation client of this platform.
//
//   qvt                      interactive prompt (stdin when not a terminal)
//   qvt -e LINE [-e LINE]    runs the given lines
//   qvt FILE | qvt -         runs a script file or standard input
//   qvt --list [CLASS]       the classes, or one class's members
//   --json                   one JSON object per printed value or error
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "automation/Interpreter.h"
#include "automation/TypeLibrary.h"
#include "automation/ValueText.h"

#ifdef QVT_HAVE_READLINE
#include <readline/history.h>
#include <readline/readline.h>
#endif

namespace {

using namespace qvt;

class StreamOutput : public Interpreter::Output {
public:
    explicit StreamOutput(bool json) : json_(json) {}
    void value(const Variant& v) override {
        std::string line = json_ ? toJson(v) : toPrintText(v);
        line.push_back('\n');
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fflush(stdout);
    }
    void error(const RuntimeError& e) override {
        if (json_) {
            std::string line = errorToJson(e) + "\n";
            std::fwrite(line.data(), 1, line.size(), stdout);
            std::fflush(stdout);
            return;
        }
        std::fflush(stdout);
        std::string msg = "Run-time error '" + std::to_string(e.number()) + "': " + toUtf8(e.description());
        if (!e.source().empty()) msg += " (" + toUtf8(e.source()) + ")";
        std::fprintf(stderr, "%s\n", msg.c_str());
    }

private:
    bool json_;
};

int usage() {
    std::fprintf(stderr,
                 "usage: qvt [--json] [-e LINE]... | [--json] FILE | [--json] - | --list [CLASS]\n"
                 "  -e LINE      run LINE (repeatable)\n"
                 "  FILE, -      run a script file, or standard input\n"
                 "  --json       print one JSON object per value or error\n"
                 "  --list       list the classes; --list CLASS lists its members\n");
    return 2;
}

const char* kindText(ClassKind k) {
    switch (k) {
        case ClassKind::Global: return "global";
        case ClassKind::Creatable: return "creatable";
        case ClassKind::Noncreatable: return "not creatable";
        case ClassKind::Runtime: return "runtime, callable unqualified";
    }
    return "";
}

int list(const TypeLibrary& lib, const char* className) {
    if (!className) {
        for (const ClassInfo* c : lib.classes())
            std::printf("%-24s %s, %zu members\n", toUtf8(c->name).c_str(), kindText(c->kind), c->members.size());
        return 0;
    }
    const ClassInfo* c = lib.findClass(fromUtf8(className));
    if (!c) {
        std::fprintf(stderr, "qvt: no class named %s\n", className);
        return 1;
    }
    std::printf("%s (%s)\n", toUtf8(c->name).c_str(), kindText(c->kind));
    for (const auto& m : c->members) std::printf("  %s\n", toUtf8(m->display()).c_str());
    return 0;
}

bool runStream(Interpreter& host, std::istream& in, Interpreter::Output& out) {
    bool ok = true;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        ok = host.runLine(line, out) && ok;
    }
    return ok;
}

bool interactive(Interpreter& host, Interpreter::Output& out) {
    bool ok = true;
#ifdef QVT_HAVE_READLINE
    while (char* raw = readline("qvt> ")) {
        std::string line(raw);
        std::free(raw);
        if (!line.empty()) add_history(line.c_str());
        ok = host.runLine(line, out) && ok;
    }
    std::printf("\n");
#else
    std::string line;
    for (;;) {
        std::printf("qvt> ");
        std::fflush(stdout);
        if (!std::getline(std::cin, line)) break;
        ok = host.runLine(line, out) && ok;
    }
    std::printf("\n");
#endif
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    bool json = false;
    std::vector<std::string> lines;
    std::vector<std::string> files;
    bool listing = false;
    const char* listClass = nullptr;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--json") json = true;
        else if (a == "-e") {
            if (++i >= argc) return usage();
            lines.emplace_back(argv[i]);
        } else if (a == "--list") {
            listing = true;
            if (i + 1 < argc && argv[i + 1][0] != '-') listClass = argv[++i];
        } else if (a == "-h" || a == "--help") {
            usage();
            return 0;
        } else if (a == "-" || a[0] != '-') {
            files.push_back(a);
        } else {
            return usage();
        }
    }

    TypeLibrary* lib;
    try {
        lib = &TypeLibrary::global();
    } catch (const SignatureError& e) {
        std::fprintf(stderr, "qvt: the type library is malformed: %s\n", e.what());
        return 2;
    }
    if (listing) return list(*lib, listClass);

    Interpreter host(*lib);
    StreamOutput out(json);
    bool ok = true;
    for (const std::string& l : lines) ok = host.runLine(l, out) && ok;
    for (const std::string& f : files) {
        if (f == "-") {
            ok = runStream(host, std::cin, out) && ok;
            continue;
        }
        std::ifstream in(f, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "qvt: cannot open %s\n", f.c_str());
            return 2;
        }
        ok = runStream(host, in, out) && ok;
    }
    if (lines.empty() && files.empty()) {
        if (isatty(STDIN_FILENO)) ok = interactive(host, out);
        else ok = runStream(host, std::cin, out);
    }
    return ok ? 0 : 1;
}
