// qvt: the script host, the Automation client of this platform.
//
//   qvt                      interactive prompt (stdin when not a terminal)
//   qvt -e LINE [-e LINE]    runs the given lines
//   qvt FILE | qvt -         runs a script file or standard input
//   qvt --list [CLASS]       the classes, or one class's members
//   --json                   one JSON object per printed value or error
//   --help, --version
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "automation/TypeLibrary.h"
#include "script/HostHelp.h"
#include "script/Interpreter.h"
#include "script/ValueText.h"

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
        write(line);
    }
    void error(const RuntimeError& e) override {
        if (json_) {
            write(errorToJson(e) + "\n");
            return;
        }
        std::fflush(stdout);
        std::string msg = "Run-time error '" + std::to_string(e.number()) + "': " + toUtf8(e.description());
        if (!e.source().empty()) msg += " (" + toUtf8(e.source()) + ")";
        std::fprintf(stderr, "%s\n", msg.c_str());
    }
    // Help and other text for a person; one JSON object under --json.
    void text(const std::string& t) {
        if (json_) write("{\"help\":" + toJsonString(fromUtf8(t)) + "}\n");
        else write(t);
    }

private:
    static void write(const std::string& s) {
        std::fwrite(s.data(), 1, s.size(), stdout);
        std::fflush(stdout);
    }
    bool json_;
};

// One line of input: a host command (help, exit, quit) or statements.
class Session {
public:
    Session(const TypeLibrary& lib, Interpreter& host, StreamOutput& out) : lib_(lib), host_(host), out_(out) {}

    // False when an error escaped the line (or help found no topic).
    bool run(const std::string& line) {
        const HostCommand cmd = hostCommand(line);
        switch (cmd.kind) {
            case HostCommand::Exit: done_ = true; return true;
            case HostCommand::Help: {
                bool found = true;
                out_.text(helpText(lib_, cmd.topic, &found));
                return found;
            }
            case HostCommand::None: break;
        }
        return host_.runLine(line, out_);
    }
    bool done() const { return done_; }

private:
    const TypeLibrary& lib_;
    Interpreter& host_;
    StreamOutput& out_;
    bool done_ = false;
};

const char* const kUsage =
    "usage: qvt [--json] [-e LINE]... | [--json] FILE | [--json] - | --list [CLASS] | --help | --version\n"
    "  (none)       an interactive prompt; standard input when it is not a terminal\n"
    "  -e LINE      run LINE (repeatable)\n"
    "  FILE, -      run a script file, or standard input\n"
    "  --json       print one JSON object per value or error\n"
    "  --list       list the classes; --list CLASS lists its members\n"
    "  --help       this text; --version the version\n"
    "In the prompt, help explains the language and help CLASS[.MEMBER] the library.\n";

int usage() {
    std::fputs(kUsage, stderr);
    return 2;
}

int list(const TypeLibrary& lib, const char* className) {
    if (!className) {
        std::fputs(classListText(lib).c_str(), stdout);
        return 0;
    }
    if (!lib.findClass(fromUtf8(className))) {
        std::fprintf(stderr, "qvt: no class named %s\n", className);
        return 1;
    }
    std::fputs(helpText(lib, className).c_str(), stdout);
    return 0;
}

bool runStream(Session& session, std::istream& in) {
    bool ok = true;
    std::string line;
    while (!session.done() && std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        ok = session.run(line) && ok;
    }
    return ok;
}

#ifdef QVT_HAVE_READLINE
// Readline's completion calls back without a context: the prompt's one
// library and interpreter.
const TypeLibrary* gLib = nullptr;
Interpreter* gHost = nullptr;

char* nextCompletion(const char* text, int state) {
    static std::vector<std::string> matches;
    static size_t next = 0;
    if (state == 0) {
        matches = completions(*gLib, text, [](std::string_view name) -> const ClassInfo* {
            const Variant* v = gHost->variable(fromUtf8(name));
            return v && v->isObject() && v->asObject() ? gLib->classOf(*v->asObject()) : nullptr;
        });
        next = 0;
    }
    return next < matches.size() ? strdup(matches[next++].c_str()) : nullptr;
}

char** complete(const char* text, int, int) {
    rl_attempted_completion_over = 1;  // names only, never file names
    rl_completion_append_character = '\0';  // readline resets it before each attempt
    return rl_completion_matches(text, nextCompletion);
}
#endif

bool interactive(const TypeLibrary& lib, Interpreter& host, Session& session) {
    bool ok = true;
    std::printf("%s\n", greeting().c_str());
#ifdef QVT_HAVE_READLINE
    gLib = &lib;
    gHost = &host;
    rl_readline_name = "qvt";
    rl_attempted_completion_function = complete;
    rl_completer_word_break_characters = " \t\n\"'(),:;=<>+-*/\\&^";
    rl_variable_bind("completion-ignore-case", "on");
    while (!session.done()) {
        char* raw = readline("qvt> ");
        if (!raw) {
            std::printf("\n");
            break;
        }
        std::string line(raw);
        std::free(raw);
        if (!line.empty()) add_history(line.c_str());
        ok = session.run(line) && ok;
    }
#else
    (void)lib;
    (void)host;
    std::string line;
    while (!session.done()) {
        std::printf("qvt> ");
        std::fflush(stdout);
        if (!std::getline(std::cin, line)) {
            std::printf("\n");
            break;
        }
        ok = session.run(line) && ok;
    }
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
            std::fputs(kUsage, stdout);
            return 0;
        } else if (a == "--version") {
            std::printf("%s\n", versionText().c_str());
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
    Session session(*lib, host, out);
    bool ok = true;
    for (const std::string& l : lines) {
        if (session.done()) break;
        ok = session.run(l) && ok;
    }
    for (const std::string& f : files) {
        if (session.done()) break;
        if (f == "-") {
            ok = runStream(session, std::cin) && ok;
            continue;
        }
        std::ifstream in(f, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "qvt: cannot open %s\n", f.c_str());
            return 2;
        }
        ok = runStream(session, in) && ok;
    }
    if (lines.empty() && files.empty()) {
        if (isatty(STDIN_FILENO) && !json) ok = interactive(*lib, host, session);
        else ok = runStream(session, std::cin);
    }
    return ok ? 0 : 1;
}
