// The registry: signature notation, argument passing, errors, objects.
// The classes here exist only in this test.
#include <gtest/gtest.h>

#include "TestSupport.h"

#include <cstring>
#include <functional>

#include "automation/TypeLibrary.h"

namespace qvt {
namespace {

using qvt::test::errorOf;

class Account : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Account"; }
    Variant balance = Variant(int32_t(0));
    Variant owner = Variant::nothing();
    static inline int live = 0;
    Account() { ++live; }
    ~Account() override { --live; }
};

class Tools : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Tools"; }
};

class Other : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Other"; }
};

Variant echoCount(Call& c) { return Variant(int32_t(c.size() * 100 + c.passed())); }

// A small library: one creatable class, two global ones sharing a name.
class TypeLibraryTest : public ::testing::Test {
protected:
    void SetUp() override {
        lib.add({u"Account", ClassKind::Creatable, makeObject<Account>, {
            {"Property Get Balance -> Variant", [](Call& c) { return c.self<Account>().balance; }},
            {"Property Let Balance(vNew: Variant)", [](Call& c) { c.self<Account>().balance = c[0]; return Variant(); }},
            {"Property Get Owner -> Object", [](Call& c) { return c.self<Account>().owner; }},
            {"Property Set Owner(oNew: Object)", [](Call& c) { c.self<Account>().owner = c[0]; return Variant(); }},
        }});
        lib.add({u"Tools", ClassKind::Global, makeObject<Tools>, {
            {"Swap(ref rA: Variant, ref rB: Variant)", [](Call& c) { c[0].swap(c[1]); return Variant(); }},
            {"Clobber(vA: Variant) -> Variant", [](Call& c) { c[0] = Variant(u"changed"); return c[0]; }},
            {"Describe(vA: Variant, [vB: Variant], [vSep: String = \"|\"], [vN: Long]) -> Variant",
             [](Call& c) {
                 String out = c[1].isMissing() ? u"missing" : u"given";
                 return Variant(out + c[2].asString() + (c[3].vt() == vbLong && c[3].asLong() == 0 ? u"0" : u"?"));
             }},
            {"Twice(vN: Long) -> Long", [](Call& c) { return Variant(int32_t(c[0].asLong() * 2)); }},
            {"Increment(ref rN: Integer)", [](Call& c) { c[0] = Variant(int16_t(c[0].asInteger() + 1)); return Variant(); }},
            {"FillAll(ref rValues: array of Variant) -> Long", [](Call& c) {
                 SafeArray& a = c[0].arrayForWrite();
                 for (Variant& e : a.elements()) e = Variant(u"x");
                 return Variant(int32_t(a.ubound()));
             }},
            {"Count(vFirst: Variant, ref vRest: array of Variant) -> Variant", echoCount},
            {"Shape(ref vArray: Variant(), [vDim: Variant]) -> Long", [](Call& c) { return Variant(int32_t(c[0].asArray().dimensions())); }},
            {"Flag() -> Boolean", [](Call&) { return Variant(int16_t(5)); }},
            {"Shared() -> Variant", [](Call& c) { return Variant(c.selfObject()); }},
            {"Fails() -> Variant", [](Call&) -> Variant { raiseError(errOverflow); }},
        }});
        lib.add({u"Other", ClassKind::Global, makeObject<Other>, {
            {"Twice(vN: Variant) -> Variant", echoCount},
            {"OnlyHere() -> Long", [](Call&) { return Variant(int32_t(7)); }},
        }});
        tools = lib.findClass(u"tools");
        ASSERT_NE(tools, nullptr);
    }

    Variant call(StringView member, std::vector<Argument> args) {
        return lib.invoke(*tools, member, std::span<Argument>(args));
    }

    TypeLibrary lib;
    const ClassInfo* tools = nullptr;
};

TEST(Signature, ParsesTheMemberTableNotation) {
    MemberInfo m = parseSignature("InStrReverse(vStartPos: Variant, vSearch: Variant, vPattern: Variant, [vCompare: Variant]) -> Variant");
    EXPECT_EQ(m.name, u"InStrReverse");
    ASSERT_EQ(m.params.size(), 4u);
    EXPECT_EQ(m.minArgs, 3);
    EXPECT_EQ(m.maxArgs, 4);
    EXPECT_TRUE(m.params[3].optional);
    EXPECT_TRUE(m.params[3].defaultValue.isMissing());
    EXPECT_TRUE(m.hasResult);

    m = parseSignature("FixUpVariantToStringFn(ref rArgument: Variant) -> Boolean");
    EXPECT_TRUE(m.params[0].byRef);
    EXPECT_EQ(m.resultType, vbBoolean);

    m = parseSignature("ArgumentsToVariant(ref vArgs: array of Variant) -> Variant");
    EXPECT_TRUE(m.hasParamArray);
    EXPECT_EQ(m.maxArgs, 0);

    // Not last: an ordinary array passed by reference.
    m = parseSignature("FixUpVariantBounds(ref vArray: array of Variant, [ref rLowerBound: Variant], [vDimension]) -> Boolean");
    EXPECT_FALSE(m.hasParamArray);
    EXPECT_TRUE(m.params[0].isArray);
    EXPECT_EQ(m.params[2].type, vbVariant);

    m = parseSignature("Join(vItems: Variant, [vSeparator: String = \"|\"], [vLimit: Long = -1], [vTrim: Boolean = True])");
    EXPECT_EQ(m.params[1].defaultValue.asString(), u"|");
    EXPECT_EQ(m.params[2].defaultValue.asLong(), -1);
    EXPECT_TRUE(m.params[3].defaultValue.asBoolean());
    EXPECT_FALSE(m.hasResult);

    m = parseSignature("Property Get EmptyValue -> Variant");
    EXPECT_EQ(m.kind, MemberKind::PropertyGet);
    EXPECT_TRUE(m.params.empty());
    EXPECT_EQ(parseSignature("Mid$(s: String, n: Long) -> String").name, u"Mid$");
    EXPECT_EQ(parseSignature("Property Let Value(v: Variant)").kind, MemberKind::PropertyLet);
}

TEST(Signature, DisplayRoundTrips) {
    for (const char* s : {"Replace(Expression: String, [Start: Long = 1], [Compare: Long = 0]) -> String",
                          "Property Set Owner(oNew: Object)", "Array(ref ArgList: array of Variant) -> Variant",
                          "FactorMatrixToExpr(ref vFC: Variant()) -> String"}) {
        MemberInfo m = parseSignature(s);
        std::string shown;
        for (char16_t c : m.display()) shown.push_back(char(c));
        EXPECT_EQ(shown, s);
    }
}

TEST(Signature, MalformedSignaturesFailLoudly) {
    for (const char* bad : {
             "", "(x: Variant)", "F(x: Varient)", "F(x: Variant", "F(x: Variant) ->", "F(x: Variant) -> Long extra",
             "F([x: Variant], y: Variant)", "F(x: Variant, X: Long)", "F([x: Long = \"a\"])", "F([x: Integer = 40000])",
             "F([x: Byte = 1.5])", "Property Get P", "Property Let P() ", "Property Let P(v: Variant) -> Long",
             "Property Fetch P -> Long", "F([ref a: array of Variant])", "F(x: array Variant)", "F([x: String = \"a])",
         }) {
        EXPECT_THROW(parseSignature(bad), SignatureError) << bad;
    }
    TypeLibrary lib;
    EXPECT_THROW(lib.add({u"Broken", ClassKind::Runtime, nullptr, {{"Ok() -> Long", echoCount}, {"Bad(", echoCount}}}),
                 SignatureError);
    EXPECT_EQ(lib.findClass(u"Broken"), nullptr) << "a bad signature leaves no half class";
    EXPECT_THROW(lib.add({u"Dup", ClassKind::Runtime, nullptr, {{"A() -> Long", echoCount}, {"a() -> Long", echoCount}}}),
                 SignatureError);
    EXPECT_THROW(lib.add({u"NoFactory", ClassKind::Creatable, nullptr, {}}), SignatureError);
}

TEST(Signature, TheLibrarysOwnRegistrationsAllParse) {
    const TypeLibrary& lib = TypeLibrary::global();
    ASSERT_NE(lib.runtime(), nullptr);
    for (const char* name : {"Mid$", "mid", "InStr", "CStr", "IsMissing", "Array", "LBound", "Err", "Error$"})
        EXPECT_NE(lib.runtime()->find(String(name, name + std::strlen(name))), nullptr) << name;
}

TEST_F(TypeLibraryTest, NamesAreCaseInsensitiveAndUnknownOnesRaise438) {
    EXPECT_EQ(call(u"TWICE", {Argument(Variant(int16_t(4)))}).asLong(), 8);
    EXPECT_EQ(errorOf([&] { call(u"Thrice", {}); }), errNoSuchMember);
    EXPECT_EQ(errorOf([&] { call(u"", {}); }), errNoSuchMember);
    EXPECT_EQ(errorOf([&] { call(String(5000, u'x'), {}); }), errNoSuchMember);
}

TEST_F(TypeLibraryTest, ArgumentCountsAreChecked) {
    EXPECT_EQ(errorOf([&] { call(u"Twice", {}); }), errWrongArgumentCount);
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument(Variant(1.0)), Argument(Variant(1.0))}); }), errWrongArgumentCount);
    EXPECT_EQ(errorOf([&] { call(u"Describe", {Argument(Variant(1.0)), Argument(), Argument(), Argument(), Argument()}); }),
              errWrongArgumentCount);
    // Trailing omitted arguments do not count; an empty required typed one is 449.
    EXPECT_EQ(call(u"Twice", {Argument(Variant(int16_t(2))), Argument::none()}).asLong(), 4);
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument::none(), Argument(Variant(1.0))}); }), errWrongArgumentCount);
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument::none()}); }), errWrongArgumentCount);
}

TEST_F(TypeLibraryTest, OptionalsGetMissingOrTheirDefault) {
    EXPECT_EQ(call(u"Describe", {Argument(Variant(1.0))}).asString(), u"missing|0");
    EXPECT_EQ(call(u"Describe", {Argument(Variant(1.0)), Argument::none(), Argument::none()}).asString(), u"missing|0");
    EXPECT_EQ(call(u"Describe", {Argument(Variant(1.0)), Argument(Variant(2.0)), Argument(Variant(u";"))}).asString(),
              u"given;0");
    // An explicit Missing value is passed as given.
    EXPECT_EQ(call(u"Describe", {Argument(Variant(1.0)), Argument(Variant::missing())}).asString(), u"missing|0");
}

TEST_F(TypeLibraryTest, TypedParametersConvertWithBasicsErrors) {
    EXPECT_EQ(call(u"Twice", {Argument(Variant(u"21"))}).asLong(), 42);
    EXPECT_EQ(call(u"Twice", {Argument(Variant(2.5))}).asLong(), 4) << "half to even";
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument(Variant(u"x"))}); }), errTypeMismatch);
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument(Variant(1e10))}); }), errOverflow);
    EXPECT_EQ(errorOf([&] { call(u"Twice", {Argument(Variant::null())}); }), errInvalidUseOfNull);
    // The declared result type is what the caller gets.
    Variant flag = call(u"Flag", {});
    EXPECT_EQ(flag.vt(), vbBoolean);
    EXPECT_TRUE(flag.asBoolean());
}

TEST_F(TypeLibraryTest, RefParametersAliasTheCallersVariables) {
    Variant a(u"a"), b(int16_t(2));
    std::vector<Argument> args{Argument::byVariable(a), Argument::byVariable(b)};
    lib.invoke(*tools, u"Swap", args);
    EXPECT_EQ(a.vt(), vbInteger);
    EXPECT_EQ(b.asString(), u"a");

    // By value: the callee works on its own copy.
    Variant keep(u"kept");
    std::vector<Argument> byVal{Argument::byVariable(keep)};
    EXPECT_EQ(lib.invoke(*tools, u"Clobber", byVal).asString(), u"changed");
    EXPECT_EQ(keep.asString(), u"kept");

    // A typed ref parameter works on a converted copy that comes back.
    Variant n(u"41");
    std::vector<Argument> inc{Argument::byVariable(n)};
    lib.invoke(*tools, u"Increment", inc);
    EXPECT_EQ(n.vt(), vbInteger);
    EXPECT_EQ(n.asInteger(), 42);
    Variant big(int32_t(70000));
    std::vector<Argument> over{Argument::byVariable(big)};
    EXPECT_EQ(errorOf([&] { lib.invoke(*tools, u"Increment", over); }), errOverflow);
    EXPECT_EQ(big.asLong(), 70000) << "a failed conversion leaves the variable alone";
}

TEST_F(TypeLibraryTest, ArrayParametersAliasAndCheckTheirType) {
    // FillAll's only parameter is a parameter array: an array is one item.
    Variant arr = Variant::vector({Variant(1.0), Variant(2.0)});
    std::vector<Argument> args{Argument::byVariable(arr)};
    EXPECT_EQ(lib.invoke(*tools, u"FillAll", args).asLong(), 0);
    EXPECT_EQ(arr.asString(), u"x");

    Variant m = Variant::array(vbVariant, {ArrayBound{1, 2}, ArrayBound{0, 3}});
    std::vector<Argument> shape{Argument::byVariable(m)};
    EXPECT_EQ(lib.invoke(*tools, u"Shape", shape).asLong(), 2);
    Variant strings = Variant::array(vbString, {ArrayBound{0, 1}});
    std::vector<Argument> wrong{Argument::byVariable(strings)};
    EXPECT_EQ(errorOf([&] { lib.invoke(*tools, u"Shape", wrong); }), errTypeMismatch);
    std::vector<Argument> scalar{Argument(Variant(1.0))};
    EXPECT_EQ(errorOf([&] { lib.invoke(*tools, u"Shape", scalar); }), errTypeMismatch);
}

TEST_F(TypeLibraryTest, ParameterArrays) {
    Variant x(int16_t(1));
    std::vector<Argument> args{Argument(Variant(0.0)), Argument::byVariable(x), Argument::none(), Argument(Variant(3.0))};
    // size: the fixed parameter plus the one array; passed counts what was written.
    EXPECT_EQ(lib.invoke(*tools, u"Count", args).asLong(), 204);

    std::vector<Argument> none;
    Variant empty = lib.invoke(*lib.findClass(u"Tools"), u"FillAll", none);
    EXPECT_EQ(empty.asLong(), -1) << "an empty parameter array has UBound -1";

    Variant v1(int16_t(1)), v2(u"b");
    std::vector<Argument> items{Argument::byVariable(v1), Argument(Variant(5.0)), Argument::byVariable(v2)};
    EXPECT_EQ(lib.invoke(*tools, u"FillAll", items).asLong(), 2);
    EXPECT_EQ(v1.asString(), u"x");
    EXPECT_EQ(v2.asString(), u"x");
}

TEST_F(TypeLibraryTest, ObjectsAndGlobalInstances) {
    const ClassInfo* account = lib.findClass(u"account");
    ASSERT_NE(account, nullptr);
    int before = Account::live;
    {
        Variant a = account->create();
        Variant b = account->create();
        EXPECT_EQ(a.vt(), vbObject);
        EXPECT_NE(a.asObject(), b.asObject());
        EXPECT_EQ(Account::live, before + 2);

        std::vector<Argument> let{Argument(Variant(int16_t(7)))};
        lib.invoke(a, u"balance", let, MemberKind::PropertyLet);
        std::vector<Argument> none;
        EXPECT_EQ(lib.invoke(a, u"Balance", none, MemberKind::PropertyGet).asInteger(), 7);
        EXPECT_EQ(lib.invoke(b, u"Balance", none).asLong(), 0) << "each object has its own state";

        std::vector<Argument> set{Argument(b)};
        lib.invoke(a, u"Owner", set, MemberKind::PropertySet);
        EXPECT_EQ(lib.invoke(a, u"Owner", none).asObject(), b.asObject());
        std::vector<Argument> notObject{Argument(Variant(1.0))};
        EXPECT_EQ(errorOf([&] { lib.invoke(a, u"Owner", notObject, MemberKind::PropertySet); }), errTypeMismatch);
        std::vector<Argument> sub{Argument(b)};
        EXPECT_EQ(errorOf([&] { lib.invoke(a, u"Missing", sub); }), errNoSuchMember);

        // Break the cycle-free link so both go away.
        std::vector<Argument> clear{Argument(Variant::nothing())};
        lib.invoke(a, u"Owner", clear, MemberKind::PropertySet);
    }
    EXPECT_EQ(Account::live, before) << "objects are released with their last reference";

    std::vector<Argument> none;
    EXPECT_EQ(errorOf([&] { lib.invoke(Variant::nothing(), u"Balance", none); }), errObjectVariableNotSet);
    EXPECT_EQ(errorOf([&] { lib.invoke(Variant(1.0), u"Balance", none); }), errNotAnObject);
    EXPECT_EQ(errorOf([&] { lib.invoke(*lib.findClass(u"Account"), u"Balance", none, MemberKind::PropertyLet); }),
              errWrongArgumentCount);

    Variant s1 = call(u"Shared", {});
    Variant s2 = call(u"Shared", {});
    EXPECT_NE(s1.asObject(), nullptr);
    EXPECT_EQ(s1.asObject(), s2.asObject()) << "one shared instance per global class";
    EXPECT_EQ(lib.classOf(*s1.asObject()), tools);
}

TEST_F(TypeLibraryTest, UnqualifiedNamesResolveToTheOneGlobalMember) {
    const ClassInfo* owner = nullptr;
    bool ambiguous = false;
    ASSERT_NE(lib.findUnqualified(u"onlyhere", &owner, &ambiguous), nullptr);
    EXPECT_EQ(owner->name, u"Other");
    EXPECT_FALSE(ambiguous);
    ASSERT_NE(lib.findUnqualified(u"Twice", &owner, &ambiguous), nullptr);
    EXPECT_TRUE(ambiguous) << "two global classes share Twice";
    EXPECT_EQ(lib.findUnqualified(u"Balance", &owner, &ambiguous), nullptr) << "creatable members need an object";

    // A runtime operation of the same name wins over global members.
    lib.add({u"Basic", ClassKind::Runtime, nullptr, {{"Twice(v: Variant) -> Variant", echoCount}}});
    ASSERT_NE(lib.findUnqualified(u"twice", &owner, &ambiguous), nullptr);
    EXPECT_EQ(owner->kind, ClassKind::Runtime);
    EXPECT_FALSE(ambiguous);
}

TEST_F(TypeLibraryTest, ErrorsNameTheMemberTheyCameFrom) {
    try {
        call(u"Fails", {});
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), errOverflow);
        EXPECT_EQ(e.source(), u"Tools.Fails");
    }
}

}  // namespace
}  // namespace qvt
