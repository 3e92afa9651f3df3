#include "script/Interpreter.h"

#include <vector>

#include "script/ScriptSyntax.h"
#include "script/ValueText.h"
#include "frame/Conversions.h"
#include "frame/Operators.h"
#include "frame/Strings.h"

namespace qvt {

using namespace script;

namespace {

bool isNumberType(VarType t) {
    return t == vbInteger || t == vbLong || t == vbSingle || t == vbDouble || t == vbCurrency || t == vbByte ||
           t == vbDecimal;
}

// A literal number, arithmetic of such, or a call of a member with a typed
// numeric result: a String compared with it converts to a number.
bool typedNumberSide(const Node& n) {
    if (n.typedNumber) return true;
    if ((n.kind == Node::Apply || n.kind == Node::Member || n.kind == Node::Name) && n.resolved)
        return n.resolved->hasResult && !n.resolved->resultIsArray && isNumberType(n.resolved->resultType);
    return false;
}

bool truth(const Variant& v) { return !v.isNull() && CBool(v); }

}  // namespace

struct Interpreter::Impl {
    struct Var {
        Variant value;
        VarType type = vbVariant;  // As T of a scalar: assignments convert
        bool fixedArray = false;
    };

    const TypeLibrary& lib;
    std::unordered_map<String, Var> vars;
    bool resumeNext = false;
    const Node* lastSubCall = nullptr;

    explicit Impl(const TypeLibrary& l) : lib(l) {}

    Var* find(StringView name) {
        auto it = vars.find(TypeLibrary::fold(name));
        return it == vars.end() ? nullptr : &it->second;
    }
    Var& make(StringView name) { return vars[TypeLibrary::fold(name)]; }

    // ---------------------------------------------------------- calls

    std::vector<Argument> arguments(const Node& call) {
        std::vector<Argument> args;
        args.reserve(call.args.size());
        for (const NodePtr& a : call.args) {
            if (!a) {
                args.push_back(Argument::none());
            } else if (a->kind == Node::Name && refersToVariable(a->name)) {
                args.push_back(Argument::byVariable(make(a->name).value));
            } else {
                args.emplace_back(eval(*a));
            }
        }
        return args;
    }

    // A bare name passed as an argument is a variable (made on first use)
    // unless it names a member or a class.
    bool refersToVariable(StringView name) {
        if (find(name)) return true;
        if (lib.findUnqualified(name, nullptr, nullptr)) return false;
        return lib.findClass(name) == nullptr;
    }

    Variant callMember(const Node& node, const MemberInfo& m, Object* self, std::vector<Argument>& args) {
        node.resolved = &m;
        Variant r = lib.invoke(m, self, args);
        if (!m.hasResult) lastSubCall = &node;
        return r;
    }

    const MemberInfo* pickGet(const MemberSlot* slot) {
        if (!slot || !slot->get) raiseError(errNoSuchMember);
        return slot->get;
    }

    // Class.Member or object.Member with the given arguments.
    Variant callQualified(const Node& node, const Node& member, std::vector<Argument>& args) {
        const Node& left = *member.a;
        if (left.kind == Node::Name && !find(left.name)) {
            if (const ClassInfo* cls = lib.findClass(left.name)) {
                if (cls->kind != ClassKind::Global && cls->kind != ClassKind::Runtime) raiseError(errNotAnObject);
                return callMember(node, *pickGet(cls->find(member.name)), nullptr, args);
            }
        }
        Variant target = eval(left);
        if (!target.isObject()) raiseError(errNotAnObject);
        Object* o = target.asObject();
        if (!o) raiseError(errObjectVariableNotSet);
        const ClassInfo* cls = lib.classOf(*o);
        if (!cls) raiseError(errNoSuchMember);
        return callMember(node, *pickGet(cls->find(member.name)), o, args);
    }

    // An unqualified name called as a function: a runtime operation, then
    // the one global member of that name.
    const MemberInfo* unqualified(StringView name) {
        bool ambiguous = false;
        const MemberSlot* slot = lib.findUnqualified(name, nullptr, &ambiguous);
        if (!slot) return nullptr;
        if (ambiguous) raiseError(errNoSuchMember);
        return pickGet(slot);
    }

    Variant index(const Variant& target, const Node& call) {
        if (!target.isArray()) raiseError(target.isObject() ? errNoSuchMember : errTypeMismatch);
        std::vector<int32_t> subs = subscripts(call);
        return target.asArray().at(subs);
    }

    std::vector<int32_t> subscripts(const Node& call) {
        std::vector<int32_t> subs;
        for (const NodePtr& a : call.args) {
            if (!a) raiseError(errSubscript);
            subs.push_back(CLng(eval(*a)));
        }
        return subs;
    }

    // ---------------------------------------------------------- expressions

    Variant eval(const Node& n) {
        switch (n.kind) {
            case Node::Literal: return n.value;
            case Node::Paren: return eval(*n.a);
            case Node::Name: return evalName(n);
            case Node::Member: {
                std::vector<Argument> none;
                return callQualified(n, n, none);
            }
            case Node::Apply: return evalApply(n);
            case Node::New: {
                const ClassInfo* cls = lib.findClass(n.name);
                if (!cls) raiseError(429);
                return cls->create();
            }
            case Node::Unary: {
                Variant x = eval(*n.a);
                switch (n.op) {
                    case Op::Neg: return opNeg(x);
                    case Op::Not: return opNot(x);
                    default: return x;
                }
            }
            case Node::Binary: return evalBinary(n);
        }
        return Variant();
    }

    Variant evalName(const Node& n) {
        if (Var* v = find(n.name)) return v->value;
        if (const MemberInfo* m = unqualified(n.name)) {
            std::vector<Argument> none;
            return callMember(n, *m, nullptr, none);
        }
        if (const ClassInfo* cls = lib.findClass(n.name))
            if (Object* o = cls->sharedInstance()) return Variant(o);
        return Variant();  // a variable never assigned
    }

    Variant evalApply(const Node& n) {
        const Node& callee = *n.a;
        if (callee.kind == Node::Name) {
            if (Var* v = find(callee.name)) return index(v->value, n);
            if (const MemberInfo* m = unqualified(callee.name)) {
                std::vector<Argument> args = arguments(n);
                return callMember(n, *m, nullptr, args);
            }
            raiseError(errSubOrFunctionNotDefined);
        }
        if (callee.kind == Node::Member) {
            std::vector<Argument> args = arguments(n);
            return callQualified(n, callee, args);
        }
        return index(eval(callee), n);
    }

    Variant evalBinary(const Node& n) {
        Variant a = eval(*n.a);
        Variant b = eval(*n.b);
        switch (n.op) {
            case Op::Pow: return opPow(a, b);
            case Op::Mul: return opMul(a, b);
            case Op::Div: return opDiv(a, b);
            case Op::IntDiv: return opIntDiv(a, b);
            case Op::Mod: return opMod(a, b);
            case Op::Add: return opAdd(a, b);
            case Op::Sub: return opSub(a, b);
            case Op::Concat: return opConcat(a, b);
            case Op::And: return opAnd(a, b);
            case Op::Or: return opOr(a, b);
            case Op::Xor: return opXor(a, b);
            case Op::Eqv: return opEqv(a, b);
            case Op::Imp: return opImp(a, b);
            case Op::Like: {
                if (a.isNull() || b.isNull()) return Variant::null();
                String s, p;
                check(toText(a, s));
                check(toText(b, p));
                return Variant(Like(s, p, vbBinaryCompare));
            }
            case Op::Is: {
                if (!a.isObject() || !b.isObject()) raiseError(errNotAnObject);
                return Variant(a.asObject() == b.asObject());
            }
            default: break;
        }
        CompareOp op = n.op == Op::Eq   ? CompareOp::Eq
                       : n.op == Op::Ne ? CompareOp::Ne
                       : n.op == Op::Lt ? CompareOp::Lt
                       : n.op == Op::Le ? CompareOp::Le
                       : n.op == Op::Gt ? CompareOp::Gt
                                        : CompareOp::Ge;
        CompareSite site = typedNumberSide(*n.a) || typedNumberSide(*n.b) ? CompareSite::NumericLiteral
                                                                          : CompareSite::Variants;
        return opCompare(op, a, b, vbBinaryCompare, site);
    }

    // ---------------------------------------------------------- statements

    void assignVariable(StringView name, Variant value, bool isSet) {
        if (!isSet && value.isObject()) raiseError(value.isNothing() ? errObjectVariableNotSet : errNoSuchMember);
        if (isSet && !value.isObject()) raiseError(errNotAnObject);
        Var& v = make(name);
        if (v.fixedArray) raiseError(errArrayFixed);
        if (v.type != vbVariant && !value.isArray()) {
            if (v.type == vbObject) {
                if (!value.isObject()) raiseError(errTypeMismatch);
            } else {
                Variant converted;
                check(convertTo(value, v.type, converted));
                value = std::move(converted);
            }
        }
        v.value = std::move(value);
    }

    void assign(const Node& target, const Node& expr, bool isSet) {
        switch (target.kind) {
            case Node::Name:
                assignVariable(target.name, eval(expr), isSet);
                return;
            case Node::Member: {
                std::vector<Argument> none;
                assignMember(target, none, eval(expr), isSet);
                return;
            }
            case Node::Apply: {
                const Node& callee = *target.a;
                if (callee.kind == Node::Member) {
                    std::vector<Argument> args = arguments(target);
                    assignMember(callee, args, eval(expr), isSet);
                    return;
                }
                if (callee.kind == Node::Name) {
                    Var* v = find(callee.name);
                    if (!v) raiseError(errSubOrFunctionNotDefined);
                    if (!v->value.isArray()) raiseError(errTypeMismatch);
                    std::vector<int32_t> subs = subscripts(target);
                    Variant value = eval(expr);
                    if (isSet != value.isObject()) raiseError(isSet ? errNotAnObject : errObjectVariableNotSet);
                    v->value.arrayForWrite().set(subs, value);
                    return;
                }
                break;
            }
            default: break;
        }
        raiseError(errSyntax, u"qvt", u"Syntax error: cannot assign to this expression");
    }

    // obj.Prop [(args)] = value: Property Let, or Set for Set statements.
    void assignMember(const Node& member, std::vector<Argument>& args, Variant value, bool isSet) {
        const Node& left = *member.a;
        const ClassInfo* cls = nullptr;
        Object* self = nullptr;
        Variant holder;
        if (left.kind == Node::Name && !find(left.name)) cls = lib.findClass(left.name);
        if (!cls) {
            holder = eval(left);
            if (!holder.isObject()) raiseError(errNotAnObject);
            self = holder.asObject();
            if (!self) raiseError(errObjectVariableNotSet);
            cls = lib.classOf(*self);
            if (!cls) raiseError(errNoSuchMember);
        }
        const MemberSlot* slot = cls->find(member.name);
        if (!slot) raiseError(errNoSuchMember);
        const MemberInfo* m = isSet ? slot->set : slot->let;
        if (!m) raiseError(errWrongArgumentCount);
        args.emplace_back(std::move(value));
        lib.invoke(*m, self, args);
    }

    void dim(const DimItem& d, bool redim, bool preserve) {
        Var& v = make(d.name);
        if (!d.hasParens) {
            v = Var{};
            v.type = d.elementType;
            v.value = zeroValueOf(d.elementType);
            return;
        }
        std::vector<ArrayBound> bounds;
        for (const auto& [lower, upper] : d.bounds) {
            ArrayBound b;
            b.lower = lower ? CLng(eval(*lower)) : 0;
            b.upper = CLng(eval(*upper));
            bounds.push_back(b);
        }
        if (!redim) {
            v = Var{};
            v.value = bounds.empty() ? Variant::unallocatedArray(d.elementType) : Variant::array(d.elementType, bounds);
            v.fixedArray = !bounds.empty();
            return;
        }
        if (v.fixedArray) raiseError(errArrayFixed);
        if (bounds.empty()) raiseError(errSubscript);
        if (v.value.isArray() && (preserve || d.elementType == vbVariant)) {
            SafeArray& a = v.value.arrayForWrite();
            if (preserve) a.redimPreserve(bounds);
            else a.redim(bounds);
        } else {
            v.value = Variant::array(d.elementType, bounds);
        }
    }

    void erase(StringView name) {
        Var* v = find(name);
        if (!v || !v->value.isArray()) raiseError(errTypeMismatch);
        SafeArray& a = v->value.arrayForWrite();
        if (v->fixedArray) {
            for (Variant& e : a.elements()) e = a.zeroElement();
        } else {
            a.erase();
        }
    }

    void execute(const Statement& s, Output& out) {
        switch (s.kind) {
            case Statement::Print: {
                if (!s.expr) return;
                lastSubCall = nullptr;
                Variant v = eval(*s.expr);
                if (lastSubCall == s.expr.get()) return;  // a Sub has no value to show
                out.value(v);
                return;
            }
            case Statement::Assign: assign(*s.target, *s.expr, false); return;
            case Statement::SetAssign: assign(*s.target, *s.expr, true); return;
            case Statement::CallDiscard: eval(*s.expr); return;
            case Statement::Dim:
                for (const DimItem& d : s.dims) dim(d, false, false);
                return;
            case Statement::ReDim:
                for (const DimItem& d : s.dims) dim(d, true, s.preserve);
                return;
            case Statement::Erase:
                for (const DimItem& d : s.dims) erase(d.name);
                return;
            case Statement::If:
                runBlock(truth(eval(*s.expr)) ? s.thenPart : s.elsePart, out);
                return;
            case Statement::OnErrorResumeNext: resumeNext = true; return;
            case Statement::OnErrorGoTo0: resumeNext = false; return;
            case Statement::Empty: return;
        }
    }

    void runBlock(const std::vector<Statement>& block, Output& out) {
        for (const Statement& s : block) {
            if (!resumeNext) {
                execute(s, out);
                continue;
            }
            try {
                execute(s, out);
            } catch (const RuntimeError& e) {
                Err().set(e);
            }
        }
    }
};

Interpreter::Interpreter(const TypeLibrary& lib) : impl_(std::make_unique<Impl>(lib)) {}
Interpreter::~Interpreter() = default;

bool Interpreter::runLine(std::string_view line, Output& out) {
    try {
        std::vector<Token> tokens = tokenize(fromUtf8(line));
        std::vector<Statement> statements = parseLine(tokens);
        impl_->runBlock(statements, out);
        return true;
    } catch (const RuntimeError& e) {
        // Errors of the host's own evaluation come from the script itself.
        RuntimeError shown = e.source().empty() ? RuntimeError(e.number(), u"qvt", e.description()) : e;
        Err().set(shown);
        out.error(shown);
    } catch (const std::bad_alloc&) {
        RuntimeError e(errOutOfMemory);
        Err().set(e);
        out.error(e);
    }
    return false;
}

Variant Interpreter::evaluate(std::string_view expression) {
    std::vector<Token> tokens = tokenize(fromUtf8(expression));
    NodePtr node = parseExpression(tokens);
    return impl_->eval(*node);
}

Variant* Interpreter::variable(StringView name) {
    Impl::Var* v = impl_->find(name);
    return v ? &v->value : nullptr;
}

}  // namespace qvt
