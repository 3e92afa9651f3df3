// End-to-end: case files through build/qvt --json, and the host's
// behaviour as a program (exit status, hostile input, listing).
//
// A case file is a transcript: "> LINE" is fed to the host, and the lines
// after it up to the next "> " are what it must print, each either the exact
// JSON line or "error N" for an escaped error numbered N. Lines starting
// with "#" and blank lines are comments. One file is one host process.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct HostRun {
    std::vector<std::string> lines;
    int status = -1;
};

// Runs qvt with the given arguments and standard input.
HostRun runHost(const std::string& args, const std::string& input) {
    fs::path in = fs::temp_directory_path() / ("qvt-case-" + std::to_string(::getpid()) + ".in");
    {
        std::ofstream f(in, std::ios::binary);
        f << input;
    }
    std::string cmd = std::string(QVT_BINARY_DIR) + "/qvt " + args + " < " + in.string() + " 2>/dev/null";
    HostRun r;
    FILE* p = ::popen(cmd.c_str(), "r");
    if (!p) return r;
    std::string cur;
    int c;
    while ((c = std::fgetc(p)) != EOF) {
        if (c == '\n') {
            r.lines.push_back(cur);
            cur.clear();
        } else {
            cur.push_back(char(c));
        }
    }
    if (!cur.empty()) r.lines.push_back(cur);
    int st = ::pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    fs::remove(in);
    return r;
}

bool matches(const std::string& expected, const std::string& got) {
    if (expected.rfind("error ", 0) == 0) return got.rfind("{\"error\":" + expected.substr(6) + ",", 0) == 0;
    return expected == got;
}

struct Expectation {
    int line;
    std::string text;
};

void runCaseFile(const fs::path& file) {
    std::ifstream f(file);
    std::string input, line;
    std::vector<Expectation> expected;
    int number = 0;
    while (std::getline(f, line)) {
        ++number;
        if (line.empty() || line[0] == '#') continue;
        if (line.rfind("> ", 0) == 0 || line == ">") input += (line.size() > 2 ? line.substr(2) : "") + "\n";
        else expected.push_back({number, line});
    }
    HostRun r = runHost("--json -", input);
    std::string name = file.filename().string();
    size_t n = std::min(expected.size(), r.lines.size());
    for (size_t i = 0; i < n; ++i)
        EXPECT_TRUE(matches(expected[i].text, r.lines[i]))
            << name << ":" << expected[i].line << "\n  want " << expected[i].text << "\n  got  " << r.lines[i];
    if (expected.size() != r.lines.size()) {
        ADD_FAILURE() << name << ": " << expected.size() << " results expected, " << r.lines.size() << " printed";
    }
}

TEST(HostCases, AllCaseFiles) {
    fs::path dir = fs::path(QVT_SOURCE_DIR) / "tests" / "cases";
    int files = 0;
    for (const auto& entry : fs::directory_iterator(dir)) {
        if (entry.path().extension() != ".cases") continue;
        SCOPED_TRACE(entry.path().filename().string());
        runCaseFile(entry.path());
        ++files;
    }
    EXPECT_GT(files, 0);
}

TEST(HostProgram, ExitStatusSaysWhetherAnErrorEscaped) {
    HostRun ok = runHost("--json -e \"? 1\" -e \"x = 2: ? x\"", "");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.lines.size(), 2u);
    HostRun bad = runHost("--json -", "? 1 / 0\n? 2\n");
    EXPECT_EQ(bad.status, 1);
    ASSERT_EQ(bad.lines.size(), 2u);
    EXPECT_EQ(bad.lines[1], R"({"type":"Integer","value":2})");
}

TEST(HostProgram, PrintStyleWithoutJson) {
    HostRun r = runHost("-", "? 2.5\n? \"abc\"\n? True\n? Null\n? 1 / 0\n");
    std::vector<std::string> want{"2.5", "abc", "True", "Null"};
    EXPECT_EQ(r.lines, want) << "errors go to standard error";
}

TEST(HostProgram, HostileInputGivesAnErrorLineAndTheNextLineRuns) {
    std::string garbage;
    for (int i = 0; i < 4000; ++i) garbage.push_back(char((i * 131 + 7) % 256 == '\n' ? 1 : (i * 131 + 7) % 256));
    std::string input = "\"unterminated\n? 1\n" + std::string(10000, '(') + "\n? 2\n" + garbage + "\n? 3\n" +
                        "x = " + std::string(10000, '9') + "\n? 4\n" + "NoSuch.Member(1, , 2)\n? 5\n" +
                        "Mid$(\"a\", 1, 2, 3, 4)\n? 6\n" + std::string("\0\0\0", 3) + "\n? 7\n";
    HostRun r = runHost("--json -", input);
    ASSERT_EQ(r.lines.size(), 14u);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(r.lines[2 * i].rfind("{\"error\":", 0), 0u) << r.lines[2 * i];
        EXPECT_EQ(r.lines[2 * i + 1], "{\"type\":\"Integer\",\"value\":" + std::to_string(i + 1) + "}");
    }
    EXPECT_EQ(r.status, 1);
}

TEST(HostProgram, ListsClassesAndMembers) {
    HostRun all = runHost("--list", "");
    ASSERT_FALSE(all.lines.empty());
    bool runtime = false;
    for (const std::string& l : all.lines) runtime = runtime || l.rfind("VBA ", 0) == 0;
    EXPECT_TRUE(runtime);
    HostRun vba = runHost("--list vba", "");
    bool replace = false;
    for (const std::string& l : vba.lines)
        replace = replace || l.find("Replace(Expression: String, Find: String, Replace: String, [Start: Long = 1]") !=
                                 std::string::npos;
    EXPECT_TRUE(replace);
    EXPECT_EQ(runHost("--list NoSuchClass", "").status, 1);
}

TEST(HostProgram, HelpAndVersionGoToStandardOutput) {
    HostRun help = runHost("--help", "");
    EXPECT_EQ(help.status, 0);
    ASSERT_FALSE(help.lines.empty());
    EXPECT_EQ(help.lines[0].rfind("usage: qvt", 0), 0u);
    HostRun version = runHost("--version", "");
    EXPECT_EQ(version.status, 0);
    ASSERT_EQ(version.lines.size(), 1u);
    EXPECT_EQ(version.lines[0].rfind("qvt 2.0 ", 0), 0u) << version.lines[0];
    EXPECT_EQ(runHost("--bogus", "").status, 2);
}

TEST(HostProgram, HostCommandsFromAScript) {
    // help prints one JSON object under --json; exit ends the script there.
    HostRun r = runHost("--json -", "help Mid$\nhelp = 2: ? help\nexit\n? 3\n");
    ASSERT_EQ(r.lines.size(), 2u);
    EXPECT_EQ(r.lines[0].rfind("{\"help\":\"Mid$  (method of VBA)\\n", 0), 0u) << r.lines[0];
    EXPECT_EQ(r.lines[1], R"({"type":"Integer","value":2})");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(runHost("-", "help NoSuchThing\n").status, 1);
}

}  // namespace
