// What the prompt offers a person: its commands, help pages read off a type
// library, and completion candidates. A private library keeps the
// expectations independent of the classes the real one holds.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "script/HostHelp.h"
#include "script/Interpreter.h"

namespace qvt {
namespace {

class Gauge : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Gauge"; }
};

Variant none(Call&) { return Variant(); }

class HostHelp : public ::testing::Test {
protected:
    HostHelp() {
        lib.add(ClassDef{u"VBA", ClassKind::Runtime, nullptr,
                         {{"Mid$(String: String, Start: Long, [Length: Variant]) -> String", none},
                          {"MidB(String: Variant, Start: Long) -> Variant", none},
                          {"Len(Expression: Variant) -> Variant", none}}});
        lib.add(ClassDef{u"TextTools", ClassKind::Global, makeObject<Gauge>,
                         {{"Pad(vText: Variant, ref rOut: Variant, [vWidth: Long = 10]) -> String", none},
                          {"PadFast(sText: String) -> String", none},
                          {"Shared() -> Variant", none},
                          {"Collect(ref vArgs: array of Variant)", none}},
                         u"Pads text."});
        lib.add(ClassDef{u"TextMore", ClassKind::Global, makeObject<Gauge>, {{"Shared() -> Variant", none}}});
        lib.add(ClassDef{u"Gauge", ClassKind::Creatable, makeObject<Gauge>,
                         {{"Property Get Level -> Double", none},
                          {"Property Let Level(vNew: Double)", none},
                          {"Reset()", none}}});
    }
    bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
    TypeLibrary lib;
};

TEST_F(HostHelp, CommandsAreWholeLinesAndLeaveStatementsAlone) {
    EXPECT_EQ(hostCommand("help").kind, HostCommand::Help);
    EXPECT_EQ(hostCommand("  HELP  TextTools.Pad ").topic, "TextTools.Pad");
    EXPECT_EQ(hostCommand("Help Mid$").topic, "Mid$");
    EXPECT_EQ(hostCommand("exit").kind, HostCommand::Exit);
    EXPECT_EQ(hostCommand(" Quit ").kind, HostCommand::Exit);
    // Statements that merely start with the words stay statements.
    EXPECT_EQ(hostCommand("help = 3").kind, HostCommand::None);
    EXPECT_EQ(hostCommand("? help").kind, HostCommand::None);
    EXPECT_EQ(hostCommand("helper").kind, HostCommand::None);
    EXPECT_EQ(hostCommand("exit(1)").kind, HostCommand::None);
    EXPECT_EQ(hostCommand("quit now").kind, HostCommand::None);
}

TEST_F(HostHelp, ClassPageHasHelpLineHowToReachAndEveryMember) {
    bool found = false;
    const std::string page = helpText(lib, "texttools", &found);
    EXPECT_TRUE(found);
    EXPECT_EQ(page.rfind("TextTools (global class, 4 members)\nPads text.\n", 0), 0u) << page;
    EXPECT_TRUE(contains(page, "by name alone"));
    EXPECT_TRUE(contains(page, "  Pad(vText: Variant, ref rOut: Variant, [vWidth: Long = 10]) -> String\n"));
    EXPECT_TRUE(contains(page, "  Collect(ref vArgs: array of Variant)\n"));
    EXPECT_TRUE(contains(helpText(lib, "Gauge"), "Set x = New Gauge"));
    EXPECT_TRUE(contains(helpText(lib, "classes"), "TextTools            global        Pads text.\n"));
}

TEST_F(HostHelp, MemberPageTellsEachParameterAndTheResult) {
    const std::string page = helpText(lib, "TextTools.pad");
    EXPECT_TRUE(contains(page, "  vText   Variant, required\n")) << page;
    EXPECT_TRUE(contains(page, "  vWidth  Long, optional, default 10\n"));
    EXPECT_TRUE(contains(page, "  rOut    Variant, required, by reference"));
    EXPECT_TRUE(contains(page, "Result: String\n"));
    EXPECT_TRUE(contains(helpText(lib, "TextTools.Collect"), "any number of them"));
    EXPECT_TRUE(contains(helpText(lib, "TextTools.Collect"), "No result"));
    EXPECT_TRUE(contains(helpText(lib, "Mid$"), "  Length  Variant, optional (Missing when left out)\n"));
    // A property shows its reading and its assignment.
    const std::string level = helpText(lib, "Gauge.Level");
    EXPECT_TRUE(contains(level, "Property Get Level -> Double"));
    EXPECT_TRUE(contains(level, "Property Let Level(vNew: Double)"));
}

TEST_F(HostHelp, UnknownAndAmbiguousTopicsSaySo) {
    bool found = true;
    EXPECT_TRUE(contains(helpText(lib, "Nothing.Here", &found), "No class or member named Nothing.Here"));
    EXPECT_FALSE(found);
    EXPECT_TRUE(contains(helpText(lib, "TextTools.Nope", &found), "TextTools has no member named Nope"));
    EXPECT_FALSE(found);
    const std::string shared = helpText(lib, "Shared", &found);
    EXPECT_TRUE(found);
    EXPECT_TRUE(contains(shared, "help TextMore.Shared\n"));
    EXPECT_TRUE(contains(shared, "help TextTools.Shared\n"));
}

TEST_F(HostHelp, CompletesClassesRuntimeFunctionsAndMembers) {
    using V = std::vector<std::string>;
    EXPECT_EQ(completions(lib, "text"), (V{"TextMore", "TextTools"}));
    EXPECT_EQ(completions(lib, "mi"), (V{"Mid$", "MidB"}));
    EXPECT_EQ(completions(lib, "TextTools.pad"), (V{"TextTools.Pad", "TextTools.PadFast"}));
    EXPECT_EQ(completions(lib, "texttools.P"), (V{"texttools.Pad", "texttools.PadFast"})) << "the typed owner kept";
    EXPECT_EQ(completions(lib, "Gauge.L"), (V{"Gauge.Level"})) << "Get and Let are one name";
    EXPECT_EQ(completions(lib, "Nope.x"), V{});
    EXPECT_TRUE(completions(lib, "zzz").empty());
    // Keywords of the host come with the names.
    const V d = completions(lib, "Di");
    EXPECT_NE(std::find(d.begin(), d.end(), "Dim"), d.end());
    // An object in a variable completes with its class's members.
    const ClassInfo* gauge = lib.findClass(u"Gauge");
    EXPECT_EQ(completions(lib, "g.Re", [&](std::string_view v) { return v == "g" ? gauge : nullptr; }),
              (V{"g.Reset"}));
}

// The examples on the language page are lines a person will copy: each must
// run without an error in the real library.
TEST(HostHelpExamples, LanguagePageExamplesRun) {
    struct Quiet : Interpreter::Output {
        std::vector<std::string> errors;
        void value(const Variant&) override {}
        void error(const RuntimeError& e) override { errors.push_back(std::to_string(e.number())); }
    } out;
    Interpreter host;
    const std::string page = helpText(TypeLibrary::global(), "");
    size_t pos = 0;
    int examples = 0;
    while ((pos = page.find("\n  ", pos)) != std::string::npos) {
        const size_t end = page.find('\n', pos + 1);
        std::string line = page.substr(pos + 3, end - pos - 3);
        pos = end;
        if (line.rfind("help", 0) == 0 || line.rfind("Tab", 0) == 0 || line.rfind("exit", 0) == 0) continue;
        const size_t gap = line.find("  ");
        if (gap != std::string::npos && line.find('"', gap) == std::string::npos) line.resize(gap);
        if (line.find("New ") != std::string::npos && !TypeLibrary::global().findClass(u"Units")) continue;
        EXPECT_TRUE(host.runLine(line, out)) << line << " raised " << (out.errors.empty() ? "" : out.errors.back());
        host.runLine("On Error GoTo 0", out);  // an example that resumes must not hide the next one's error
        ++examples;
    }
    EXPECT_GE(examples, 8);
}

}  // namespace
}  // namespace qvt
