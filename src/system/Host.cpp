#include "system/Host.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "frame/Error.h"
#include "system/PathMapping.h"

extern char** environ;

namespace qvt {

namespace {

std::unique_ptr<Host> gHost;
std::function<void(StringView)> gLogSink;

// Splits a command line: blanks separate, double quotes group.
std::vector<std::string> splitCommandLine(StringView line) {
    std::vector<std::string> out;
    String cur;
    bool quoted = false, any = false;
    for (char16_t c : line) {
        if (c == u'"') {
            quoted = !quoted;
            any = true;
        } else if ((c == u' ' || c == u'\t') && !quoted) {
            if (any) out.push_back(toNativeName(cur));
            cur.clear();
            any = false;
        } else {
            cur += c;
            any = true;
        }
    }
    if (any) out.push_back(toNativeName(cur));
    return out;
}

bool isExecutable(const std::string& p) {
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISREG(st.st_mode) && ::access(p.c_str(), X_OK) == 0;
}

// The program file of a command: a path name through the DOS mapping, or a
// bare name searched on PATH; "" when not found.
std::string findProgram(const std::string& name) {
    if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos || name.find(':') == 1) {
        const std::string p = mapPath(fromNativeName(name));
        return isExecutable(p) ? p : std::string();
    }
    const char* path = std::getenv("PATH");
    std::string dirs = path ? path : "/usr/bin:/bin";
    size_t i = 0;
    while (i <= dirs.size()) {
        size_t j = dirs.find(':', i);
        if (j == std::string::npos) j = dirs.size();
        const std::string dir = j > i ? dirs.substr(i, j - i) : ".";
        if (isExecutable(dir + "/" + name)) return dir + "/" + name;
        i = j + 1;
    }
    return std::string();
}

void reapChildren() {
    while (::waitpid(-1, nullptr, WNOHANG) > 0) {
    }
}

}  // namespace

Host::~Host() = default;

void Host::log(StringView line) {
    if (gLogSink) {
        gLogSink(line);
        return;
    }
    const std::string s = toNativeName(line);
    std::fprintf(stderr, "%s\n", s.c_str());
}

String Host::environ(StringView name) {
    const char* v = std::getenv(toNativeName(name).c_str());
    return v ? fromNativeName(v) : String();
}

String Host::environAt(int32_t index) {
    char** env = ::environ;
    for (int32_t i = 1; env && *env; ++env, ++i)
        if (i == index) return fromNativeName(*env);
    return String();
}

double Host::shell(StringView commandLine, int32_t windowStyle) {
    if (windowStyle < 0 || windowStyle > 6) raiseError(errInvalidCall);
    const std::vector<std::string> args = splitCommandLine(commandLine);
    if (args.empty()) raiseError(errInvalidCall);
    const std::string program = findProgram(args[0]);
    if (program.empty()) raiseError(errFileNotFound);
    std::vector<char*> argv;
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    reapChildren();
    pid_t pid = 0;
    if (::posix_spawn(&pid, program.c_str(), nullptr, nullptr, argv.data(), ::environ) != 0) raiseError(errFileNotFound);
    log(u"Shell: " + String(commandLine));
    return static_cast<double>(pid);
}

void Host::sendKeys(StringView keys, bool) { log(u"SendKeys: " + String(keys)); }

int32_t Host::doEvents() {
    reapChildren();
    return 0;
}

void Host::beep() { log(u"Beep"); }

int32_t Host::msgBox(StringView prompt, int32_t buttons, StringView title) {
    log(u"MsgBox: " + (title.empty() ? String() : String(title) + u": ") + String(prompt));
    return defaultMsgBoxAnswer(buttons);
}

String Host::inputBox(StringView prompt, StringView title, StringView defaultText) {
    log(u"InputBox: " + (title.empty() ? String() : String(title) + u": ") + String(prompt));
    return String(defaultText);
}

String Host::clipboardGetText() { return clipboard_; }
void Host::clipboardSetText(StringView text) { clipboard_ = String(text); }
void Host::clipboardClear() { clipboard_.clear(); }

Host& host() {
    if (!gHost) gHost = std::make_unique<Host>();
    return *gHost;
}

void setHost(std::unique_ptr<Host> h) { gHost = std::move(h); }
void setHostLog(std::function<void(StringView)> sink) { gLogSink = std::move(sink); }

int32_t defaultMsgBoxAnswer(int32_t buttons) {
    static constexpr int32_t kAnswers[6][3] = {
        {vbOK, vbOK, vbOK},          {vbOK, vbCancel, vbCancel}, {vbAbort, vbRetry, vbIgnore},
        {vbYes, vbNo, vbCancel},     {vbYes, vbNo, vbNo},        {vbRetry, vbCancel, vbCancel},
    };
    const int32_t set = buttons & 7;
    const int32_t which = (buttons >> 8) & 3;
    if (set > 5) return vbOK;
    return kAnswers[set][which > 2 ? 2 : which];
}

String Environ(StringView name) {
    if (name.empty()) raiseError(errInvalidCall);
    return host().environ(name);
}

String Environ(int32_t index) {
    if (index < 1) raiseError(errInvalidCall);
    return host().environAt(index);
}

double Shell(StringView commandLine, int32_t windowStyle) { return host().shell(commandLine, windowStyle); }
void SendKeys(StringView keys, bool wait) { host().sendKeys(keys, wait); }
int32_t DoEvents() { return host().doEvents(); }
void Beep() { host().beep(); }
int32_t MsgBox(StringView prompt, int32_t buttons, StringView title) { return host().msgBox(prompt, buttons, title); }
String InputBox(StringView prompt, StringView title, StringView defaultText) {
    return host().inputBox(prompt, title, defaultText);
}

}  // namespace qvt
