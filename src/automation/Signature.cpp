// Parsing of member signatures written in the member-table notation.
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "automation/TypeLibrary.h"

namespace qvt {

namespace {

struct TypeName {
    const char* name;
    VarType type;
};

constexpr TypeName kTypes[] = {
    {"Variant", vbVariant}, {"String", vbString},   {"Long", vbLong},       {"Integer", vbInteger},
    {"Double", vbDouble},   {"Single", vbSingle},   {"Currency", vbCurrency}, {"Date", vbDate},
    {"Decimal", vbDecimal}, {"Boolean", vbBoolean}, {"Byte", vbByte},       {"Object", vbObject},
};

bool iequals(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

String widen(std::string_view s) { return String(s.begin(), s.end()); }

class SignatureParser {
public:
    explicit SignatureParser(std::string_view text) : s_(text) {}

    MemberInfo parse() {
        MemberInfo m;
        std::string_view first = word();
        if (iequals(first, "Property")) {
            std::string_view k = word();
            if (iequals(k, "Get")) m.kind = MemberKind::PropertyGet;
            else if (iequals(k, "Let")) m.kind = MemberKind::PropertyLet;
            else if (iequals(k, "Set")) m.kind = MemberKind::PropertySet;
            else fail("Property must be followed by Get, Let or Set");
            first = word();
        } else if (iequals(first, "Sub") || iequals(first, "Function")) {
            first = word();
        }
        if (first.empty()) fail("member name expected");
        if (peek() == '$') {
            ++pos_;
            first = s_.substr(first.data() - s_.data(), first.size() + 1);
        }
        m.name = widen(first);
        if (accept('(')) {
            if (!accept(')')) {
                do m.params.push_back(param());
                while (accept(','));
                expect(')');
            }
        }
        if (accept('-')) {
            expect('>');
            m.hasResult = true;
            typeClause(m.resultType, m.resultIsArray);
        }
        skipBlanks();
        if (pos_ != s_.size()) fail("unexpected text at the end");
        validate(m);
        return m;
    }

private:
    [[noreturn]] void fail(const std::string& why) const {
        throw SignatureError("malformed signature \"" + std::string(s_) + "\": " + why + " (at column " +
                             std::to_string(pos_ + 1) + ")");
    }
    void skipBlanks() {
        while (pos_ < s_.size() && s_[pos_] == ' ') ++pos_;
    }
    char peek() {
        skipBlanks();
        return pos_ < s_.size() ? s_[pos_] : '\0';
    }
    bool accept(char c) {
        if (peek() != c) return false;
        ++pos_;
        return true;
    }
    void expect(char c) {
        if (!accept(c)) fail(std::string("'") + c + "' expected");
    }
    std::string_view word() {
        skipBlanks();
        size_t start = pos_;
        if (pos_ < s_.size() && (std::isalpha(static_cast<unsigned char>(s_[pos_])) || s_[pos_] == '_')) {
            while (pos_ < s_.size() && (std::isalnum(static_cast<unsigned char>(s_[pos_])) || s_[pos_] == '_')) ++pos_;
        }
        return s_.substr(start, pos_ - start);
    }
    bool acceptWord(std::string_view w) {
        size_t save = pos_;
        if (iequals(word(), w)) return true;
        pos_ = save;
        return false;
    }
    VarType scalarType() {
        std::string_view w = word();
        for (const TypeName& t : kTypes)
            if (iequals(w, t.name)) return t.type;
        fail(w.empty() ? "type expected" : "unknown type '" + std::string(w) + "'");
    }
    void typeClause(VarType& type, bool& isArray) {
        if (acceptWord("array")) {
            if (!acceptWord("of")) fail("'array of' expected");
            type = scalarType();
            isArray = true;
            return;
        }
        type = scalarType();
        if (accept('(')) {
            expect(')');
            isArray = true;
            explicitArray_ = true;
        }
    }

    ParamInfo param() {
        ParamInfo p;
        bool bracket = accept('[');
        p.optional = bracket;
        if (acceptWord("ref")) p.byRef = true;
        std::string_view name = word();
        if (name.empty()) fail("parameter name expected");
        p.name = widen(name);
        explicitArray_ = false;
        if (accept(':')) typeClause(p.type, p.isArray);
        p.paramArray = p.isArray && !explicitArray_;  // decided finally in validate()
        if (bracket) {
            if (accept('=')) {
                p.hasDefault = true;
                p.defaultValue = literal(p.type);
            } else if (p.type != vbVariant && !p.isArray) {
                p.defaultValue = zeroValueOf(p.type);
            } else {
                p.defaultValue = Variant::missing();
            }
            expect(']');
        }
        return p;
    }

    // A default: a number, "text", True or False, made the parameter's type.
    Variant literal(VarType type) {
        skipBlanks();
        if (accept('"')) {
            std::string text;
            for (;;) {
                if (pos_ >= s_.size()) fail("unterminated string");
                char c = s_[pos_++];
                if (c == '"') {
                    if (pos_ < s_.size() && s_[pos_] == '"') {
                        text.push_back('"');
                        ++pos_;
                        continue;
                    }
                    break;
                }
                text.push_back(c);
            }
            if (type != vbString && type != vbVariant) fail("a text default needs a String or Variant parameter");
            return Variant(widen(text));
        }
        size_t start = pos_;
        if (pos_ < s_.size() && (s_[pos_] == '-' || s_[pos_] == '+')) ++pos_;
        while (pos_ < s_.size() && (std::isdigit(static_cast<unsigned char>(s_[pos_])) || s_[pos_] == '.' ||
                                    s_[pos_] == 'e' || s_[pos_] == 'E'))
            ++pos_;
        std::string number(s_.substr(start, pos_ - start));
        if (number.empty()) {
            if (acceptWord("True")) return typedBoolean(type, true);
            if (acceptWord("False")) return typedBoolean(type, false);
            fail("default value expected");
        }
        char* end = nullptr;
        double d = std::strtod(number.c_str(), &end);
        if (*end != '\0') fail("bad number '" + number + "'");
        bool integral = d == std::floor(d);
        switch (type) {
            case vbVariant:
                if (integral && d >= -32768 && d <= 32767) return Variant(int16_t(d));
                if (integral && d >= -2147483648.0 && d <= 2147483647.0) return Variant(int32_t(d));
                return Variant(d);
            case vbInteger:
                if (!integral || d < -32768 || d > 32767) fail("default out of the Integer range");
                return Variant(int16_t(d));
            case vbLong:
                if (!integral || d < -2147483648.0 || d > 2147483647.0) fail("default out of the Long range");
                return Variant(int32_t(d));
            case vbByte:
                if (!integral || d < 0 || d > 255) fail("default out of the Byte range");
                return Variant(uint8_t(d));
            case vbDouble: return Variant(d);
            case vbSingle: return Variant(float(d));
            case vbCurrency: return Variant::currency(int64_t(std::llround(d * 10000.0)));
            case vbDate: return Variant::date(d);
            case vbBoolean: return Variant(d != 0);
            default: fail("a numeric default does not fit this parameter's type");
        }
    }
    Variant typedBoolean(VarType type, bool b) {
        if (type != vbBoolean && type != vbVariant) fail("a Boolean default needs a Boolean or Variant parameter");
        return Variant(b);
    }

    void validate(MemberInfo& m) {
        bool sawOptional = false;
        for (size_t i = 0; i < m.params.size(); ++i) {
            ParamInfo& p = m.params[i];
            for (size_t j = 0; j < i; ++j)
                if (TypeLibrary::fold(m.params[j].name) == TypeLibrary::fold(p.name))
                    fail("duplicate parameter name");
            bool last = i + 1 == m.params.size();
            // `ref name: array of Variant` in last place is a parameter array.
            p.paramArray = p.paramArray && last && p.byRef && !p.optional && p.type == vbVariant;
            if (p.isArray && p.optional) fail("an array parameter cannot be optional");
            if (p.optional) sawOptional = true;
            else if (sawOptional && !p.paramArray) fail("a required parameter follows an optional one");
        }
        m.hasParamArray = !m.params.empty() && m.params.back().paramArray;
        size_t fixed = m.params.size() - (m.hasParamArray ? 1 : 0);
        m.maxArgs = uint16_t(fixed);
        m.minArgs = 0;
        for (size_t i = 0; i < fixed; ++i)
            if (!m.params[i].optional) m.minArgs = uint16_t(i + 1);
        switch (m.kind) {
            case MemberKind::PropertyGet:
                if (!m.hasResult) fail("a Property Get needs a result type");
                break;
            case MemberKind::PropertyLet:
            case MemberKind::PropertySet:
                if (m.hasResult) fail("a Property Let or Set has no result");
                if (fixed == 0) fail("a Property Let or Set takes the assigned value as its last parameter");
                break;
            case MemberKind::Method:
                break;
        }
    }

    std::string_view s_;
    size_t pos_ = 0;
    bool explicitArray_ = false;
};

}  // namespace

MemberInfo parseSignature(std::string_view text) { return SignatureParser(text).parse(); }

static String typeText(VarType t, bool isArray) {
    String name;
    for (const TypeName& n : kTypes)
        if (n.type == t) name = widen(n.name);
    return isArray ? u"array of " + name : name;
}

static String literalText(const Variant& v) {
    if (v.isString()) return u"\"" + v.asString() + u"\"";
    std::string s;
    switch (v.vt()) {
        case vbInteger: s = std::to_string(v.asInteger()); break;
        case vbLong: s = std::to_string(v.asLong()); break;
        case vbByte: s = std::to_string(v.asByte()); break;
        case vbBoolean: s = v.asBoolean() ? "True" : "False"; break;
        case vbDouble: case vbDate: {
            char buf[32];
            std::snprintf(buf, sizeof buf, "%.15g", v.vt() == vbDate ? v.asDate() : v.asDouble());
            s = buf;
            break;
        }
        case vbSingle: {
            char buf[32];
            std::snprintf(buf, sizeof buf, "%.7g", double(v.asSingle()));
            s = buf;
            break;
        }
        case vbCurrency: {
            char buf[40];
            std::snprintf(buf, sizeof buf, "%.4f", double(v.asCurrency()) / 10000.0);
            s = buf;
            break;
        }
        default: break;
    }
    return widen(s);
}

String ParamInfo::typeDisplay(bool last) const {
    // A plain array in the last place is written T() so that it does not
    // read as a parameter array.
    return isArray && !paramArray && last && byRef && type == vbVariant ? typeText(type, false) + u"()"
                                                                       : typeText(type, isArray);
}

String ParamInfo::defaultDisplay() const { return hasDefault ? literalText(defaultValue) : String(); }

String ParamInfo::display(bool last) const {
    String out;
    if (optional) out += u'[';
    if (byRef) out += u"ref ";
    out += name + u": " + typeDisplay(last);
    if (hasDefault) out += u" = " + defaultDisplay();
    if (optional) out += u']';
    return out;
}

String MemberInfo::resultDisplay() const { return hasResult ? typeText(resultType, resultIsArray) : String(); }

String MemberInfo::display() const {
    String out;
    switch (kind) {
        case MemberKind::PropertyGet: out = u"Property Get "; break;
        case MemberKind::PropertyLet: out = u"Property Let "; break;
        case MemberKind::PropertySet: out = u"Property Set "; break;
        case MemberKind::Method: break;
    }
    out += name;
    if (!params.empty() || kind == MemberKind::Method) {
        out += u'(';
        for (size_t i = 0; i < params.size(); ++i) {
            if (i) out += u", ";
            out += params[i].display(i + 1 == params.size());
        }
        out += u')';
    }
    if (hasResult) out += u" -> " + resultDisplay();
    return out;
}

String MemberInfo::qualifiedName() const { return owner ? owner->name + u"." + name : name; }

}  // namespace qvt
