#include "automation/TypeLibrary.h"

#include <algorithm>

#include "frame/Conversions.h"

namespace qvt {

namespace {

std::vector<ClassDef>& pendingRegistrations() {
    static std::vector<ClassDef> defs;
    return defs;
}

constexpr size_t kFoldBuffer = 64;
constexpr size_t kInlineParams = 12;

inline char16_t foldUnit(char16_t c) noexcept { return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c; }

// Folds into buf when the name fits; else into spill.
StringView foldInto(StringView name, char16_t* buf, String& spill) {
    if (name.size() <= kFoldBuffer) {
        for (size_t i = 0; i < name.size(); ++i) buf[i] = foldUnit(name[i]);
        return StringView(buf, name.size());
    }
    spill = TypeLibrary::fold(name);
    return spill;
}

std::string narrow(StringView s) { return std::string(s.begin(), s.end()); }

// Brings an argument to a typed parameter's type, with Basic's coercion errors.
void coerceTo(const Variant& src, const ParamInfo& p, Variant& out) {
    if (p.isArray) {
        if (!src.isArray() || src.elementType() != p.type) raiseError(errTypeMismatch);
        out = src;
        return;
    }
    if (p.type == vbVariant) {
        out = src;
        return;
    }
    if (p.type == vbObject) {
        if (!src.isObject()) raiseError(errTypeMismatch);
        out = src;
        return;
    }
    if (src.vt() == p.type) {
        out = src;
        return;
    }
    Variant converted;
    check(convertTo(src, p.type, converted));
    out = std::move(converted);
}

// The per-call buffers; inline for the usual few parameters.
struct Frame {
    Variant* ptrs[kInlineParams];
    Variant locals[kInlineParams];
    std::vector<Variant*> bigPtrs;
    std::vector<Variant> bigLocals;
    Variant** p = ptrs;
    Variant* l = locals;
    explicit Frame(size_t n) {
        if (n > kInlineParams) {
            bigPtrs.resize(n);
            bigLocals.resize(n);
            p = bigPtrs.data();
            l = bigLocals.data();
        }
    }
};

}  // namespace

String TypeLibrary::fold(StringView name) {
    String out(name);
    for (char16_t& c : out) c = foldUnit(c);
    return out;
}

// ---------------------------------------------------------------- classes

const MemberSlot* ClassInfo::find(StringView memberName) const {
    char16_t buf[kFoldBuffer];
    String spill;
    auto it = index_.find(foldInto(memberName, buf, spill));
    return it == index_.end() ? nullptr : &it->second;
}

Object* ClassInfo::sharedInstance() const {
    if (kind != ClassKind::Global || !factory) return nullptr;
    if (instance_.isEmpty()) instance_ = Variant(factory());
    return instance_.asObject();
}

Variant ClassInfo::create() const {
    if (!factory || kind == ClassKind::Runtime || kind == ClassKind::Noncreatable) raiseError(429);
    return Variant(factory());
}

ClassRegistration::ClassRegistration(const char16_t* name, ClassKind kind, Factory factory,
                                     std::initializer_list<MemberDef> members) {
    pendingRegistrations().push_back(ClassDef{name, kind, factory, std::vector<MemberDef>(members)});
}

ClassRegistration::ClassRegistration(const char16_t* name, ClassKind kind, Factory factory, const char16_t* help,
                                     std::initializer_list<MemberDef> members) {
    pendingRegistrations().push_back(ClassDef{name, kind, factory, std::vector<MemberDef>(members), help});
}

TypeLibrary& TypeLibrary::global() {
    static TypeLibrary* lib = [] {
        auto fresh = std::make_unique<TypeLibrary>();
        for (const ClassDef& def : pendingRegistrations()) fresh->add(def);
        return fresh.release();
    }();
    return *lib;
}

ClassInfo& TypeLibrary::classFor(const ClassDef& def) {
    String key = fold(def.name);
    auto it = classIndex_.find(key);
    if (it != classIndex_.end()) {
        ClassInfo& existing = *it->second;
        if (existing.kind != def.kind)
            throw SignatureError("class " + narrow(def.name) + " registered with two different kinds");
        if (def.factory && existing.factory && existing.factory != def.factory)
            throw SignatureError("class " + narrow(def.name) + " registered with two factories");
        if (def.factory) existing.factory = def.factory;
        if (def.help && existing.help.empty()) existing.help = def.help;
        return existing;
    }
    if (def.kind == ClassKind::Runtime && runtime_)
        throw SignatureError("a second runtime library " + narrow(def.name));
    if ((def.kind == ClassKind::Global || def.kind == ClassKind::Creatable) && !def.factory)
        throw SignatureError("class " + narrow(def.name) + " needs a factory");
    auto cls = std::make_unique<ClassInfo>();
    cls->name = def.name;
    cls->kind = def.kind;
    if (def.help) cls->help = def.help;
    cls->factory = def.factory;
    ClassInfo* raw = cls.get();
    classes_.push_back(std::move(cls));
    classIndex_.emplace(std::move(key), raw);
    if (def.kind == ClassKind::Runtime) runtime_ = raw;
    return *raw;
}

void TypeLibrary::add(const ClassDef& def) {
    // Parse everything first, so that a bad signature leaves no half class.
    std::vector<std::unique_ptr<MemberInfo>> parsed;
    for (const MemberDef& md : def.members) {
        if (!md.signature || !md.thunk)
            throw SignatureError("class " + narrow(def.name) + ": a member without signature or thunk");
        MemberInfo m;
        try {
            m = parseSignature(md.signature);
        } catch (const SignatureError& e) {
            throw SignatureError("class " + narrow(def.name) + ": " + e.what());
        }
        m.thunk = md.thunk;
        parsed.push_back(std::make_unique<MemberInfo>(std::move(m)));
    }
    ClassInfo& cls = classFor(def);
    for (auto& m : parsed) {
        m->owner = &cls;
        indexMember(cls, m.get());
        cls.members.push_back(std::move(m));
    }
}

void TypeLibrary::indexMember(ClassInfo& cls, MemberInfo* m) {
    String key = fold(m->name);
    MemberSlot& slot = cls.index_[key];
    const MemberInfo** place = m->kind == MemberKind::PropertyLet   ? &slot.let
                               : m->kind == MemberKind::PropertySet ? &slot.set
                                                                    : &slot.get;
    if (*place)
        throw SignatureError("class " + narrow(cls.name) + ": member " + narrow(m->name) + " registered twice");
    *place = m;

    if (cls.kind != ClassKind::Runtime && cls.kind != ClassKind::Global) return;
    Unqualified& u = unqualified_[key];
    if (cls.kind == ClassKind::Runtime) {
        u.slot = &slot;
        u.owner = &cls;
        u.ambiguous = false;
    } else if (!u.owner) {
        u.slot = &slot;
        u.owner = &cls;
    } else if (u.owner != &cls && u.owner->kind != ClassKind::Runtime) {
        u.ambiguous = true;
    }
}

const ClassInfo* TypeLibrary::findClass(StringView name) const {
    char16_t buf[kFoldBuffer];
    String spill;
    auto it = classIndex_.find(foldInto(name, buf, spill));
    return it == classIndex_.end() ? nullptr : it->second;
}

const ClassInfo* TypeLibrary::classOf(const Object& o) const {
    StringView name = o.className();
    // Class names are usually one static literal: remember the last one.
    if (name.data() == lastClassKey_ && lastClass_) return lastClass_;
    const ClassInfo* cls = findClass(name);
    lastClassKey_ = name.data();
    lastClass_ = cls;
    return cls;
}

std::vector<const ClassInfo*> TypeLibrary::classes() const {
    std::vector<const ClassInfo*> out;
    for (const auto& c : classes_) out.push_back(c.get());
    std::sort(out.begin(), out.end(), [](const ClassInfo* a, const ClassInfo* b) { return fold(a->name) < fold(b->name); });
    return out;
}

const MemberSlot* TypeLibrary::findUnqualified(StringView name, const ClassInfo** owner, bool* ambiguous) const {
    char16_t buf[kFoldBuffer];
    String spill;
    auto it = unqualified_.find(foldInto(name, buf, spill));
    if (it == unqualified_.end()) return nullptr;
    if (owner) *owner = it->second.owner;
    if (ambiguous) *ambiguous = it->second.ambiguous;
    return it->second.slot;
}

// ---------------------------------------------------------------- invoke

const MemberInfo* TypeLibrary::pick(const MemberSlot& slot, MemberKind kind) {
    switch (kind) {
        case MemberKind::PropertyLet: return slot.let;
        case MemberKind::PropertySet: return slot.set;
        default: return slot.get;
    }
}

Variant TypeLibrary::invoke(const ClassInfo& cls, StringView member, std::span<Argument> args, MemberKind kind) const {
    const MemberSlot* slot = cls.find(member);
    if (!slot) raiseError(errNoSuchMember);
    const MemberInfo* m = pick(*slot, kind);
    if (!m) raiseError(kind == MemberKind::Method || kind == MemberKind::PropertyGet ? errNoSuchMember
                                                                                    : errWrongArgumentCount);
    return invoke(*m, nullptr, args);
}

Variant TypeLibrary::invoke(const Variant& object, StringView member, std::span<Argument> args, MemberKind kind) const {
    if (!object.isObject()) raiseError(errNotAnObject);
    Object* o = object.asObject();
    if (!o) raiseError(errObjectVariableNotSet);
    const ClassInfo* cls = classOf(*o);
    if (!cls) raiseError(errNoSuchMember);
    const MemberSlot* slot = cls->find(member);
    if (!slot) raiseError(errNoSuchMember);
    const MemberInfo* m = pick(*slot, kind);
    if (!m) raiseError(kind == MemberKind::Method || kind == MemberKind::PropertyGet ? errNoSuchMember
                                                                                    : errWrongArgumentCount);
    return invoke(*m, o, args);
}

Variant TypeLibrary::invoke(const MemberInfo& m, Object* self, std::span<Argument> args) const {
    try {
        return invokeChecked(m, self, args);
    } catch (const RuntimeError& e) {
        if (!e.source().empty()) throw;
        throw RuntimeError(e.number(), m.qualifiedName(), e.description());
    }
}

Variant TypeLibrary::invokeChecked(const MemberInfo& m, Object* self, std::span<Argument> args) const {
    size_t n = args.size();
    size_t passed = n;
    while (passed > 0 && args[passed - 1].omitted) --passed;
    if (passed < m.minArgs || (!m.hasParamArray && passed > m.maxArgs)) raiseError(errWrongArgumentCount);

    const size_t fixed = m.maxArgs;
    const size_t slots = m.params.size();
    Frame f(slots);

    // Typed `ref` parameters work on a converted copy that goes back after the call.
    size_t writeBack[kInlineParams];
    size_t writeBackCount = 0;
    std::vector<size_t> moreWriteBack;

    for (size_t i = 0; i < fixed; ++i) {
        const ParamInfo& p = m.params[i];
        if (i >= n || args[i].omitted) {
            if (!p.optional) {
                if (i < n && p.type == vbVariant && !p.isArray) {  // an empty required Variant: Missing
                    f.l[i] = Variant::missing();
                    f.p[i] = &f.l[i];
                    continue;
                }
                raiseError(449);
            }
            f.l[i] = p.defaultValue;
            f.p[i] = &f.l[i];
            continue;
        }
        Argument& a = args[i];
        bool plainVariant = p.type == vbVariant && !p.isArray;
        if (plainVariant) {
            if (a.variable && p.byRef) {
                f.p[i] = a.variable;
            } else {
                if (a.variable) a.value = *a.variable;
                f.p[i] = &a.value;
            }
            continue;
        }
        if (a.variable && p.byRef && p.isArray) {
            // A variable still Empty is a dynamic array not yet dimensioned:
            // the member may ReDim it.
            if (!a.variable->isEmpty()) coerceTo(*a.variable, p, f.l[i]);  // checks the type; the alias is the variable itself
            f.l[i].clear();
            f.p[i] = a.variable;
            continue;
        }
        coerceTo(a.get(), p, f.l[i]);
        f.p[i] = &f.l[i];
        if (a.variable && p.byRef) {
            if (writeBackCount < kInlineParams) writeBack[writeBackCount++] = i;
            else moreWriteBack.push_back(i);
        }
    }

    Variant paramArray;
    if (m.hasParamArray) {
        size_t count = n > fixed ? n - fixed : 0;
        if (count == 0) {
            paramArray = Variant::vector({});
        } else {
            paramArray = Variant::array(vbVariant, {ArrayBound{0, int32_t(count) - 1}});
            SafeArray& arr = paramArray.arrayForWrite();
            for (size_t k = 0; k < count; ++k) {
                const Argument& a = args[fixed + k];
                arr.elements()[k] = a.omitted ? Variant::missing() : a.get();
            }
        }
        f.p[fixed] = &paramArray;
    }

    Object* target = self;
    if (!target && m.owner && m.owner->kind == ClassKind::Global) target = m.owner->sharedInstance();

    Call call(target, &m, f.p, slots, passed);
    Variant result = m.thunk(call);

    for (size_t k = 0; k < writeBackCount; ++k) *args[writeBack[k]].variable = std::move(f.l[writeBack[k]]);
    for (size_t i : moreWriteBack) *args[i].variable = std::move(f.l[i]);
    if (m.hasParamArray && n > fixed && paramArray.isArray()) {
        const SafeArray& arr = paramArray.asArray();
        size_t count = std::min(n - fixed, arr.size());
        for (size_t k = 0; k < count; ++k)
            if (Variant* var = args[fixed + k].variable) *var = arr.elements()[k];
    }

    if (!m.hasResult) return Variant();
    if (m.resultType != vbVariant && !m.resultIsArray && result.vt() != m.resultType) {
        if (m.resultType == vbObject) {
            if (!result.isObject()) raiseError(errTypeMismatch);
        } else {
            Variant converted;
            check(convertTo(result, m.resultType, converted));
            return converted;
        }
    }
    return result;
}

}  // namespace qvt
