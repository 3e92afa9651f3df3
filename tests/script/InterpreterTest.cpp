// The script language: literals, precedence, statements, calls through the
// type library, and errors. TestBank and TestTools exist only in this test.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "script/Interpreter.h"
#include "script/ValueText.h"
#include "frame/Conversions.h"

namespace qvt {
namespace {

class TestBank : public Object {
public:
    std::u16string_view className() const noexcept override { return u"TestBank"; }
    Variant total = Variant(int32_t(0));
};

class TestTools : public Object {
public:
    std::u16string_view className() const noexcept override { return u"TestTools"; }
};

const ClassRegistration kTestBank(u"TestBank", ClassKind::Creatable, makeObject<TestBank>, {
    {"Deposit(vAmount: Variant)", [](Call& c) {
         TestBank& b = c.self<TestBank>();
         b.total = Variant(int32_t(b.total.asLong() + CLng(c[0])));
         return Variant(); }},
    {"Property Get Total -> Long", [](Call& c) { return c.self<TestBank>().total; }},
    {"Property Let Total(vNew: Long)", [](Call& c) { c.self<TestBank>().total = c[0]; return Variant(); }},
});

const ClassRegistration kTestTools(u"TestTools", ClassKind::Global, makeObject<TestTools>, {
    {"Bump(ref rValue: Variant)", [](Call& c) { c[0] = Variant(int32_t(CLng(c[0]) + 1)); return Variant(); }},
    {"Args(ref vArgs: array of Variant) -> Variant", [](Call& c) { return c[0]; }},
    {"Missing2([vA: Variant], [vB: Variant]) -> String", [](Call& c) {
         return Variant(String(c[0].isMissing() ? u"M" : u"-") + (c[1].isMissing() ? u"M" : u"-")); }},
    {"Answer() -> Integer", [](Call&) { return Variant(int16_t(42)); }},
});

// Collects the host's output as JSON lines.
struct Capture : Interpreter::Output {
    std::vector<std::string> lines;
    void value(const Variant& v) override { lines.push_back(toJson(v)); }
    void error(const RuntimeError& e) override { lines.push_back("error " + std::to_string(e.number())); }
};

class Script : public ::testing::Test {
protected:
    // Runs the lines; returns all output joined with " ; ".
    std::string run(std::initializer_list<const char*> lines) {
        Capture out;
        for (const char* l : lines) host.runLine(l, out);
        std::string joined;
        for (const std::string& s : out.lines) joined += (joined.empty() ? "" : " ; ") + s;
        return joined;
    }
    std::string run(const char* line) { return run({line}); }
    Interpreter host;
};

std::string j(const char* type, const char* value) {
    return std::string("{\"type\":\"") + type + "\",\"value\":" + value + "}";
}

TEST_F(Script, NumericLiteralsTakeTheSmallestType) {
    EXPECT_EQ(run("32767"), j("Integer", "32767"));
    EXPECT_EQ(run("32768"), j("Long", "32768"));
    EXPECT_EQ(run("2147483648"), j("Double", "2147483648"));
    EXPECT_EQ(run("1E3"), j("Double", "1000"));
    EXPECT_EQ(run(".5"), j("Double", "0.5"));
    EXPECT_EQ(run("7%"), j("Integer", "7"));
    EXPECT_EQ(run("7&"), j("Long", "7"));
    EXPECT_EQ(run("0.1!"), j("Single", "0.1"));
    EXPECT_EQ(run("7#"), j("Double", "7"));
    EXPECT_EQ(run("1.23456@"), j("Currency", "\"1.2346\""));
    EXPECT_EQ(run("922337203685477.5807@"), j("Currency", "\"922337203685477.5807\""));
    EXPECT_EQ(run("&HFF"), j("Integer", "255"));
    EXPECT_EQ(run("&HFFFF"), j("Integer", "-1"));
    EXPECT_EQ(run("&HFFFF&"), j("Long", "65535"));
    EXPECT_EQ(run("&H10000"), j("Long", "65536"));
    EXPECT_EQ(run("&HFFFFFFFF"), j("Long", "-1"));
    EXPECT_EQ(run("&O17"), j("Integer", "15"));
    EXPECT_EQ(run("40000%"), "error 6");
    EXPECT_EQ(run("&H100000000"), "error 6");
}

TEST_F(Script, OtherLiterals) {
    EXPECT_EQ(run("\"say \"\"hi\"\"\""), j("String", "\"say \\\"hi\\\"\""));
    EXPECT_EQ(run("\"\""), j("String", "\"\""));
    EXPECT_EQ(run("True"), j("Boolean", "true"));
    EXPECT_EQ(run("null"), "{\"type\":\"Null\"}");
    EXPECT_EQ(run("Empty"), "{\"type\":\"Empty\"}");
    EXPECT_EQ(run("Nothing"), "{\"type\":\"Object\",\"value\":null}");
    EXPECT_EQ(host.evaluate("#1/2/2000#").asDate(), 36527);
    EXPECT_EQ(host.evaluate("#2000-01-02#").asDate(), 36527);
    EXPECT_EQ(host.evaluate("#1/2/2000 6:00 PM#").asDate(), 36527.75);
    EXPECT_EQ(host.evaluate("#1/2/2000 13:45:00#").asDate(), 36527 + (13 * 60 + 45) / 1440.0);
    EXPECT_EQ(host.evaluate("#12:00:00 AM#").asDate(), 0);
    EXPECT_EQ(host.evaluate("#12/30/1899#").asDate(), 0);
    EXPECT_EQ(host.evaluate("#1/2/99#").asDate(), 36162) << "two-digit years through the window";
    EXPECT_EQ(run("#2/30/2000#"), "error 1002");
    EXPECT_EQ(run("#1/2/2000"), "error 1002");
    EXPECT_EQ(run("#25:00#"), "error 1002");
}

TEST_F(Script, OperatorPrecedence) {
    struct Case {
        const char* expr;
        double value;
    } cases[] = {
        {"2 + 3 * 4", 14},     {"(2 + 3) * 4", 20},   {"2 ^ 3 ^ 2", 64},      {"-2 ^ 2", -4},
        {"2 ^ -1", 0.5},       {"10 - 4 - 3", 3},     {"7 \\ 2 * 2", 1},      {"7 Mod 4 \\ 2", 1},
        {"2 * 3 Mod 4", 2},    {"1 + 2 = 3", -1},     {"Not 1 = 2", -1},      {"1 = 1 And 2 = 3", 0},
        {"1 Or 2 And 0", 1},   {"True Xor True Or True", 0}, {"0 Imp 0 Eqv 0", -1}, {"-(2 ^ 2)", -4},
        {"24 / 2 / 3", 4},     {"--3", 3},            {"3 - -3", 6},
    };
    for (const Case& c : cases) {
        Variant v = host.evaluate(c.expr);
        double d = v.vt() == vbBoolean ? (v.asBoolean() ? -1 : 0) : CDbl(v);
        EXPECT_EQ(d, c.value) << c.expr;
    }
    EXPECT_EQ(run("\"a\" & 1 + 2"), j("String", "\"a3\""));
    EXPECT_EQ(run("\"abc\" Like \"a*\" And True"), j("Boolean", "true"));
}

TEST_F(Script, VariablesAndStatements) {
    EXPECT_EQ(run("x = 5: x * 2"), j("Integer", "10"));
    EXPECT_EQ(run("X"), j("Integer", "5")) << "names are case-insensitive";
    EXPECT_EQ(run("Dim a, b: a"), "{\"type\":\"Empty\"}");
    EXPECT_EQ(run("neverAssigned"), "{\"type\":\"Empty\"}");
    EXPECT_EQ(run("Let y = 2: ? y: Print y + 1"), j("Integer", "2") + " ; " + j("Integer", "3"));
    EXPECT_EQ(run("If 1 < 2 Then r = \"yes\" Else r = \"no\"\n"), "");
    EXPECT_EQ(run("r"), j("String", "\"yes\""));
    EXPECT_EQ(run("If Null Then ? 1 Else ? 2: ? 3"), j("Integer", "2") + " ; " + j("Integer", "3"));
    EXPECT_EQ(run("1 + 1 ' comment: 5"), j("Integer", "2"));
    EXPECT_EQ(run("Rem nothing at all"), "");
    EXPECT_EQ(run("Dim s As String: s = 12: TypeName(s)"), j("String", "\"String\""));
    EXPECT_EQ(run("Dim n As Integer: n = \"x\""), "error 13");
}

TEST_F(Script, Arrays) {
    EXPECT_EQ(run("Dim d(1 To 3): d(2) = 7: d(2) + 1"), j("Integer", "8"));
    EXPECT_EQ(run("LBound(d) & \":\" & UBound(d)"), j("String", "\"1:3\""));
    EXPECT_EQ(run("d(4)"), "error 9");
    EXPECT_EQ(run("Dim m(2, 3): m(2, 3) = 1: UBound(m, 2)"), j("Long", "3"));
    EXPECT_EQ(run("ReDim m(1)"), "error 10") << "a Dim'd array is fixed";
    EXPECT_EQ(run("Dim v(): ReDim v(1 To 2): v(2) = \"b\": ReDim Preserve v(1 To 4): v(2) & UBound(v)"),
              j("String", "\"b4\""));
    EXPECT_EQ(run("ReDim v(3): v(2)"), "{\"type\":\"Empty\"}");
    EXPECT_EQ(run("Erase v: UBound(v)"), "error 9");
    EXPECT_EQ(run("Dim t(1) As String: TypeName(t)"), j("String", "\"String()\""));
    EXPECT_EQ(run("a = Array(1, 2): b = a: b(0) = 9: a(0) & \",\" & b(0)"), j("String", "\"1,9\""));
    EXPECT_EQ(run("Array(10, 20)(1)"), j("Integer", "20"));
    EXPECT_EQ(run("x = 1: x(0)"), "error 13");
}

TEST_F(Script, CallsThroughTheTypeLibrary) {
    EXPECT_EQ(run("TestTools.Answer()"), j("Integer", "42"));
    EXPECT_EQ(run("Answer"), j("Integer", "42")) << "a global member by name alone";
    EXPECT_EQ(run("testtools.ANSWER"), j("Integer", "42"));
    EXPECT_EQ(run("TestTools.Nope(1)"), "error 438");
    EXPECT_EQ(run("TestTools.Answer(1)"), "error 450");
    EXPECT_EQ(run("Nope(1)"), "error 35");
    EXPECT_EQ(run("VBA.Len(\"abc\")"), j("Long", "3"));
    EXPECT_EQ(run("Missing2(, 2) & Missing2(1) & Missing2()"), j("String", "\"M--MMM\""));
    EXPECT_EQ(run("IsMissing(TestTools.Args(, 1)(0))"), j("Boolean", "true"));
    EXPECT_EQ(run("UBound(TestTools.Args())"), j("Long", "-1"));
}

TEST_F(Script, RefArgumentsAliasVariables) {
    EXPECT_EQ(run("n = 1: TestTools.Bump n: n"), j("Long", "2"));
    EXPECT_EQ(run("Call TestTools.Bump(n): n"), j("Long", "3"));
    EXPECT_EQ(run("TestTools.Bump (n): n"), j("Long", "3")) << "parentheses pass a copy";
    EXPECT_EQ(run("TestTools.Bump fresh: fresh"), j("Long", "1")) << "a new name is a new variable";
    EXPECT_EQ(run("TestTools.Bump n + 1: n"), j("Long", "3"));
    EXPECT_EQ(run("TestTools.Bump 5"), "");
}

TEST_F(Script, Objects) {
    EXPECT_EQ(run("Set b = New TestBank: b.Deposit 5: b.Deposit \"7\": b.Total"), j("Long", "12"));
    EXPECT_EQ(run("b.Total = 3: b.Total"), j("Long", "3"));
    EXPECT_EQ(run("Set c = b: c.Total = 9: b.Total"), j("Long", "9"));
    EXPECT_EQ(run("b Is c"), j("Boolean", "true"));
    EXPECT_EQ(run("Set c = New TestBank: b Is c"), j("Boolean", "false"));
    EXPECT_EQ(run("Set c = Nothing: c Is Nothing"), j("Boolean", "true"));
    EXPECT_EQ(run("c.Total"), "error 91");
    EXPECT_EQ(run("b"), "{\"type\":\"Object\",\"class\":\"TestBank\"}");
    EXPECT_EQ(run("TypeName(b)"), j("String", "\"TestBank\""));
    EXPECT_EQ(run("x = b"), "error 438") << "objects need Set";
    EXPECT_EQ(run("Set x = 1"), "error 424");
    EXPECT_EQ(run("1 Is b"), "error 424");
    EXPECT_EQ(run("Set q = New NoSuchClass"), "error 429");
    EXPECT_EQ(run("b.Nope = 1"), "error 438");
    EXPECT_EQ(run("b.Deposit"), "error 450");
    EXPECT_EQ(run("NotAnObject.Member(1)"), "error 424");
}

TEST_F(Script, ErrorsStopTheLineNotTheScript) {
    EXPECT_EQ(run({"? 1: ? 1 / 0: ? 3", "? 4"}), j("Integer", "1") + " ; error 11 ; " + j("Integer", "4"));
    EXPECT_EQ(run({"x = \"open", "? 5"}), "error 1002 ; " + j("Integer", "5"));
    EXPECT_EQ(run("? (1"), "error 1002");
    EXPECT_EQ(run("1 +"), "error 1002");
    EXPECT_EQ(run("? 1 2"), "error 1002");
    EXPECT_EQ(run("\x01\xff\xfe garbage"), "error 1002");
    EXPECT_EQ(run("On Error Resume Next: ? 1 / 0: ? Err.Number: On Error GoTo 0"), j("Long", "11"));
    EXPECT_EQ(run("Err.Clear: Err.Number"), j("Long", "0"));
    EXPECT_EQ(run("Err.Raise 5"), "error 5");
    EXPECT_EQ(run("Err.Description"), j("String", "\"Invalid procedure call or argument\""));
}

TEST_F(Script, HostileInputIsAnErrorNotACrash) {
    std::string deep(5000, '(');
    EXPECT_EQ(run(deep.c_str()), "error 16");
    std::string longSum = "1";
    for (int i = 0; i < 3000; ++i) longSum += "+1";
    EXPECT_EQ(run(longSum.c_str()), "error 16");
    std::string negations(3000, '-');
    negations += "1";
    EXPECT_EQ(run(negations.c_str()), "error 16");
    std::string longString = "\"" + std::string(10000, 'x') + "\"";
    EXPECT_EQ(run(("Len(" + longString + ")").c_str()), j("Long", "10000"));
    std::string longName = std::string(10000, 'a');
    EXPECT_EQ(run(longName.c_str()), "{\"type\":\"Empty\"}");
}

}  // namespace
}  // namespace qvt
