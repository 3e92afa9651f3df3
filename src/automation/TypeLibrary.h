// The type library: every public class and member of the library, and
// invocation by name with Variant arguments, as an Automation client sees
// them.
//
// Classes register next to their own code, one line per member, with the
// member written in the notation of the member tables:
//
//   static const qvt::ClassRegistration kStack(u"Stack", qvt::ClassKind::Creatable,
//       qvt::makeObject<Stack>, u"A last-in, first-out stack of values.", {
//     {"Push(vValue: Variant)", [](qvt::Call& c) { c.self<Stack>().Push(c[0]); return qvt::Variant(); }},
//     {"Property Get Count -> Long", [](qvt::Call& c) { return qvt::Variant(c.self<Stack>().Count()); }},
//   });
//
// Signature notation:
//   [Property Get|Property Let|Property Set] Name[(params)] [-> Type]
//   param   := [ref] name: Type | [ref] name: array of Type | [ref] name: Type()
//   optional:  [param] or [param = literal]   (literal: number, "text", True, False)
// A last parameter written `ref name: array of Variant` is a parameter array;
// write `ref name: Variant()` for a plain array in that position. Types are
// the scalar names of the value model (Variant, String, Long, Integer, Double,
// Single, Currency, Date, Decimal, Boolean, Byte, Object). A Property Let or
// Set takes the assigned value as its last parameter.
//
// What a thunk sees in Call: c[i] is a Variant& for parameter i. A `ref`
// parameter aliases the caller's variable; a by-value one is a private copy;
// an omitted optional Variant is Missing; an omitted typed optional holds its
// declared default (or the type's zero value); a typed parameter already
// holds its type, converted with Basic's coercion errors (13, 6, 94). A
// parameter array is one 0-based Variant array whose items are copied back
// to the caller's variables after the call.
//
// Signatures are parsed once, when the library is first used; a malformed
// one throws SignatureError naming the class and the text.
#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

class Call;
struct ClassInfo;
struct MemberInfo;

using Thunk = Variant (*)(Call&);
using Factory = Object* (*)();

template <class T>
Object* makeObject() {
    return new T();
}

enum class ClassKind : uint8_t {
    Global,         // one shared instance, members callable by name alone
    Creatable,      // objects made by New
    Noncreatable,   // objects handed out by other members only
    Runtime,        // Basic's own library: members callable unqualified, no object
};

enum class MemberKind : uint8_t { Method, PropertyGet, PropertyLet, PropertySet };

struct ParamInfo {
    String name;
    VarType type = vbVariant;  // element type when isArray
    bool byRef = false;
    bool optional = false;
    bool isArray = false;
    bool paramArray = false;
    bool hasDefault = false;  // a default was declared
    // What an omitted optional receives: the declared default, else the zero
    // value of a typed parameter, else Missing.
    Variant defaultValue;

    // The parameter in the signature notation; `last` when it ends the list.
    String display(bool last) const;
    String typeDisplay(bool last) const;  // "Long", "array of Variant", "Variant()"
    String defaultDisplay() const;        // the declared default as written, or 
};

struct MemberInfo {
    String name;
    MemberKind kind = MemberKind::Method;
    std::vector<ParamInfo> params;
    bool hasResult = false;
    VarType resultType = vbEmpty;
    bool resultIsArray = false;
    uint16_t minArgs = 0;
    uint16_t maxArgs = 0;  // without the parameter array
    bool hasParamArray = false;
    Thunk thunk = nullptr;
    const ClassInfo* owner = nullptr;

    // The member as the object browser shows it, in the signature notation.
    String display() const;
    String resultDisplay() const;  // the result type as written, or ""
    // "Class.Member", for error sources.
    String qualifiedName() const;
};

// The three members that may share one name.
struct MemberSlot {
    const MemberInfo* get = nullptr;  // method or Property Get
    const MemberInfo* let = nullptr;
    const MemberInfo* set = nullptr;
};

struct ClassInfo {
    String name;
    ClassKind kind = ClassKind::Global;
    String help;  // one line for an object browser; may be empty
    Factory factory = nullptr;
    std::vector<std::unique_ptr<MemberInfo>> members;  // in registration order

    const MemberSlot* find(StringView memberName) const;
    // The shared instance of a global class, made at first use (nullptr for
    // the runtime).
    Object* sharedInstance() const;
    // A new object (New): error 429 when the class has no factory.
    Variant create() const;

private:
    friend class TypeLibrary;
    struct FoldedHash {
        using is_transparent = void;
        size_t operator()(StringView s) const noexcept { return std::hash<StringView>()(s); }
    };
    std::unordered_map<String, MemberSlot, FoldedHash, std::equal_to<>> index_;
    mutable Variant instance_;
};

// Thrown at start-up for a signature that does not parse.
class SignatureError : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

// One argument as a caller hands it over: a value, or the caller's variable
// (which a `ref` parameter aliases). A Missing value is an omitted argument.
struct Argument {
    Variant value;
    Variant* variable = nullptr;
    bool omitted = false;  // an empty or left-out argument: Missing or the default

    Argument() = default;
    explicit Argument(Variant v) : value(std::move(v)) {}
    static Argument byVariable(Variant& v) {
        Argument a;
        a.variable = &v;
        return a;
    }
    static Argument none() {
        Argument a(Variant::missing());
        a.omitted = true;
        return a;
    }
    const Variant& get() const { return variable ? *variable : value; }
};

// What a thunk receives.
class Call {
public:
    Variant& operator[](size_t i) const { return *args_[i]; }
    size_t size() const noexcept { return count_; }
    // How many arguments the caller wrote, trailing omissions excluded.
    size_t passed() const noexcept { return passed_; }
    Object* selfObject() const noexcept { return self_; }
    template <class T>
    T& self() const {
        return static_cast<T&>(*self_);
    }
    const MemberInfo& member() const noexcept { return *member_; }

private:
    friend class TypeLibrary;
    Call(Object* self, const MemberInfo* m, Variant* const* args, size_t n, size_t passed)
        : self_(self), member_(m), args_(args), count_(n), passed_(passed) {}
    Object* self_;
    const MemberInfo* member_;
    Variant* const* args_;
    size_t count_;
    size_t passed_;
};

struct MemberDef {
    const char* signature;
    Thunk thunk;
};

struct ClassDef {
    const char16_t* name;
    ClassKind kind;
    Factory factory;
    std::vector<MemberDef> members;
    const char16_t* help = nullptr;
};

class TypeLibrary {
public:
    TypeLibrary() = default;
    TypeLibrary(const TypeLibrary&) = delete;
    TypeLibrary& operator=(const TypeLibrary&) = delete;

    // The library's own registry, built from every ClassRegistration on
    // first use. Throws SignatureError if a registration is malformed.
    static TypeLibrary& global();

    // Adds a class, or more members to a class of that name and kind.
    // Throws SignatureError on a malformed signature or a clash.
    void add(const ClassDef& def);

    const ClassInfo* findClass(StringView name) const;
    // The class of an object (by its className).
    const ClassInfo* classOf(const Object& o) const;
    std::vector<const ClassInfo*> classes() const;
    const ClassInfo* runtime() const { return runtime_; }

    // An unqualified name: a runtime operation first, then the one global
    // member of that name. *ambiguous is set when two global classes share it.
    const MemberSlot* findUnqualified(StringView name, const ClassInfo** owner, bool* ambiguous) const;

    // Invokes a member of a class (global or runtime) or of an object. The
    // arguments are in order; trailing omitted ones may be left out.
    // Errors: 438 unknown member, 450 wrong argument count or assignment to
    // a member without Let/Set, 91 on Nothing, 424 on a non-object.
    Variant invoke(const ClassInfo& cls, StringView member, std::span<Argument> args,
                   MemberKind kind = MemberKind::Method) const;
    Variant invoke(const Variant& object, StringView member, std::span<Argument> args,
                   MemberKind kind = MemberKind::Method) const;
    // A resolved member (no lookup): self is the object, or nullptr for the
    // shared instance of a global class.
    Variant invoke(const MemberInfo& m, Object* self, std::span<Argument> args) const;

    // Case folding of names for lookups (ASCII letters; names are ASCII).
    static String fold(StringView name);

private:
    ClassInfo& classFor(const ClassDef& def);
    void indexMember(ClassInfo& cls, MemberInfo* m);
    Variant invokeChecked(const MemberInfo& m, Object* self, std::span<Argument> args) const;
    static const MemberInfo* pick(const MemberSlot& slot, MemberKind kind);

    std::vector<std::unique_ptr<ClassInfo>> classes_;
    std::unordered_map<String, ClassInfo*, ClassInfo::FoldedHash, std::equal_to<>> classIndex_;
    struct Unqualified {
        const MemberSlot* slot = nullptr;
        const ClassInfo* owner = nullptr;
        bool ambiguous = false;
    };
    std::unordered_map<String, Unqualified, ClassInfo::FoldedHash, std::equal_to<>> unqualified_;
    const ClassInfo* runtime_ = nullptr;
    mutable const char16_t* lastClassKey_ = nullptr;
    mutable const ClassInfo* lastClass_ = nullptr;
};

// A static object in a class's source file: adds the class (or more members
// of it) to TypeLibrary::global().
class ClassRegistration {
public:
    ClassRegistration(const char16_t* name, ClassKind kind, Factory factory, std::initializer_list<MemberDef> members);
    // The same, with the class's help line.
    ClassRegistration(const char16_t* name, ClassKind kind, Factory factory, const char16_t* help,
                      std::initializer_list<MemberDef> members);
};

// Parses one signature (exposed for tests and --list).
MemberInfo parseSignature(std::string_view text);

// The name the runtime library goes by ("VBA").
inline constexpr const char16_t* kRuntimeClassName = u"VBA";

}  // namespace qvt
