// Tokenizer and parser of the script host's language.
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

#include "script/Interpreter.h"
#include "script/ScriptSyntax.h"
#include "script/ValueText.h"
#include "frame/Locale.h"

namespace qvt::script {

namespace {

constexpr int kMaxDepth = 400;

[[noreturn]] void syntaxError(const std::string& what, size_t column) {
    std::string d = "Syntax error: " + what + " at column " + std::to_string(column + 1);
    raiseError(errSyntax, u"qvt", fromUtf8(d));
}

bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool isLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool isWordChar(char16_t c) { return isLetter(c) || isDigit(c) || c == u'_'; }
int hexValue(char16_t c) {
    if (isDigit(c)) return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

bool sameWord(StringView a, const char* b) {
    size_t i = 0;
    for (; b[i]; ++i)
        if (i >= a.size() || toLowerChar(a[i]) != toLowerChar(char16_t(b[i]))) return false;
    return i == a.size();
}

// &H / &O literals: Integer when the digits fit 16 bits (so &HFFFF is -1),
// Long when they fit 32; a & suffix forces Long.
Variant radixLiteral(uint64_t value, char16_t suffix, size_t column) {
    if (value > 0xFFFFFFFFull) raiseError(errOverflow);
    if (suffix == u'&') return Variant(int32_t(uint32_t(value)));
    if (suffix == u'%') {
        if (value > 0xFFFF) raiseError(errOverflow);
        return Variant(int16_t(uint16_t(value)));
    }
    if (suffix) syntaxError("bad type suffix", column);
    if (value <= 0xFFFF) return Variant(int16_t(uint16_t(value)));
    return Variant(int32_t(uint32_t(value)));
}

// Currency from decimal text, exact to four places (half-even beyond).
Variant currencyLiteral(const std::string& digits) {
    size_t dot = digits.find('.');
    if (digits.find_first_of("eEdD") != std::string::npos) {
        double d = std::strtod(digits.c_str(), nullptr) * 10000.0;
        if (!(std::fabs(d) < 9.2233720368547758e18)) raiseError(errOverflow);
        return Variant::currency(int64_t(std::nearbyint(d)));
    }
    std::string whole = digits.substr(0, dot);
    std::string frac = dot == std::string::npos ? "" : digits.substr(dot + 1);
    std::string four = frac.substr(0, std::min<size_t>(4, frac.size()));
    four.append(4 - four.size(), '0');
    unsigned __int128 v = 0;
    for (char c : whole + four) {
        v = v * 10 + unsigned(c - '0');
        if (v > (unsigned __int128)INT64_MAX) raiseError(errOverflow);
    }
    if (frac.size() > 4) {
        int next = frac[4] - '0';
        bool rest = frac.find_first_not_of('0', 5) != std::string::npos;
        if (next > 5 || (next == 5 && (rest || (v & 1)))) ++v;
    }
    if (v > (unsigned __int128)INT64_MAX) raiseError(errOverflow);
    return Variant::currency(int64_t(v));
}

Variant numberLiteral(const std::string& digits, bool fractional, char16_t suffix, size_t column) {
    double d = std::strtod(digits.c_str(), nullptr);
    if (!std::isfinite(d)) raiseError(errOverflow);
    bool integral = d == std::floor(d);
    switch (suffix) {
        case u'%':
            if (!integral) syntaxError("an Integer literal needs a whole number", column);
            if (d < -32768 || d > 32767) raiseError(errOverflow);
            return Variant(int16_t(d));
        case u'&':
            if (!integral) syntaxError("a Long literal needs a whole number", column);
            if (d < -2147483648.0 || d > 2147483647.0) raiseError(errOverflow);
            return Variant(int32_t(d));
        case u'!': {
            float f = float(d);
            if (!std::isfinite(f)) raiseError(errOverflow);
            return Variant(f);
        }
        case u'#': return Variant(d);
        case u'@': return currencyLiteral(digits);
        default: break;
    }
    if (!fractional && integral) {
        if (d >= -32768 && d <= 32767) return Variant(int16_t(d));
        if (d >= -2147483648.0 && d <= 2147483647.0) return Variant(int32_t(d));
    }
    return Variant(d);
}

int64_t daysFromCivil(int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = unsigned(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + int64_t(doe) - 719468;
}

}  // namespace

std::optional<double> dateLiteralValue(StringView text) {
    std::string s = toUtf8(text);
    size_t i = 0;
    auto skip = [&] {
        while (i < s.size() && s[i] == ' ') ++i;
    };
    auto number = [&](int& out) {
        size_t start = i;
        long v = 0;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])) && i - start < 6) v = v * 10 + (s[i++] - '0');
        out = int(v);
        return int(i - start);
    };
    auto bad = [] { return std::nullopt; };

    double day = 0, fraction = 0;
    bool haveDate = false, haveTime = false;
    skip();
    size_t save = i;
    int a, b, c;
    int na = number(a);
    if (na > 0 && i < s.size() && (s[i] == '/' || s[i] == '-')) {
        char sep = s[i++];
        int nb = number(b);
        if (nb == 0 || i >= s.size() || s[i] != sep) return bad();
        ++i;
        int nc = number(c);
        if (nc == 0) return bad();
        int year, month, dd;
        if (na >= 3) { year = a; month = b; dd = c; }
        else { month = a; dd = b; year = c; }
        if ((na < 3 && nc <= 2)) {
            int start = locale().twoDigitYearStart;
            year = start - start % 100 + year;
            if (year < start) year += 100;
        }
        static const int mdays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        if (month < 1 || month > 12 || dd < 1 || dd > mdays[month - 1] || year < 100 || year > 9999) return bad();
        bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        if (month == 2 && dd == 29 && !leap) return bad();
        day = double(daysFromCivil(year, unsigned(month), unsigned(dd)) - daysFromCivil(1899, 12, 30));
        haveDate = true;
        skip();
        save = i;
    } else {
        i = save;
    }
    if (i < s.size()) {
        int h, m = 0, sec = 0;
        if (number(h) == 0) return bad();
        bool colon = false;
        if (i < s.size() && s[i] == ':') {
            ++i;
            colon = true;
            if (number(m) == 0) return bad();
            if (i < s.size() && s[i] == ':') {
                ++i;
                if (number(sec) == 0) return bad();
            }
        }
        skip();
        bool ampm = false;
        if (i + 1 < s.size() && (s[i] == 'A' || s[i] == 'a' || s[i] == 'P' || s[i] == 'p') && (s[i + 1] == 'M' || s[i + 1] == 'm')) {
            bool pm = s[i] == 'P' || s[i] == 'p';
            i += 2;
            if (h < 1 || h > 12) return bad();
            h = h % 12 + (pm ? 12 : 0);
            ampm = true;
        }
        if ((!colon && !ampm) || h > 23 || m > 59 || sec > 59) return bad();
        skip();
        fraction = (h * 3600.0 + m * 60.0 + sec) / 86400.0;
        haveTime = true;
    }
    if (i != s.size() || (!haveDate && !haveTime)) return bad();
    return day < 0 ? day - fraction : day + fraction;
}

namespace {

// Is the '#' at `at` the mark of a file number (Print #1, Close #1, #2,
// ... As #f)? Only after the words of the file statements, or after a comma
// of a Close statement, and only where it does not open a date literal, so
// `Print #1/2/2000#` still prints a date.
bool opensFileNumber(const std::vector<Token>& before, StringView line, size_t at) {
    if (before.empty()) return false;
    const Token& prev = before.back();
    bool context = false;
    if (prev.kind == Tok::Word) {
        for (const char* w : {"Print", "Close", "Get", "Put", "Seek", "Input", "Write", "As"})
            if (sameWord(prev.text, w)) context = true;
    } else if (prev.kind == Tok::Symbol && (prev.text == u"?" || prev.text == u",")) {
        if (prev.text == u"?") context = true;
        for (size_t k = before.size(); k-- > 0 && !context;) {
            if (before[k].kind == Tok::Symbol && before[k].text == u":") break;
            if (before[k].kind == Tok::Word && sameWord(before[k].text, "Close")) context = true;
        }
    }
    if (!context) return false;
    size_t close = line.find(u'#', at + 1);
    return close == StringView::npos || !dateLiteralValue(line.substr(at + 1, close - at - 1));
}

}  // namespace

double parseDateLiteral(StringView text) {
    if (std::optional<double> d = dateLiteralValue(text)) return *d;
    raiseError(errSyntax, u"qvt", u"Syntax error: bad date literal #" + String(text) + u"#");
}

std::vector<Token> tokenize(StringView line) {
    std::vector<Token> out;
    size_t i = 0, n = line.size();
    while (i < n) {
        char16_t c = line[i];
        if (c == u' ' || c == u'\t' || c == u'\r' || c == u'\n') {
            ++i;
            continue;
        }
        if (c == u'\'') break;
        Token t;
        t.column = i;
        t.spaceBefore = i > 0 && (line[i - 1] == u' ' || line[i - 1] == u'\t');
        if (c == u'"') {
            String s;
            ++i;
            for (;;) {
                if (i >= n) syntaxError("unterminated string", t.column);
                if (line[i] == u'"') {
                    if (i + 1 < n && line[i + 1] == u'"') {
                        s.push_back(u'"');
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                s.push_back(line[i++]);
            }
            t.kind = Tok::Text;
            t.value = Variant(std::move(s));
        } else if (c == u'#' && opensFileNumber(out, line, i)) {
            t.kind = Tok::Symbol;
            t.text = u"#";
            ++i;
        } else if (c == u'#') {
            size_t close = line.find(u'#', i + 1);
            if (close == StringView::npos) syntaxError("unterminated date literal", t.column);
            t.kind = Tok::Date;
            t.value = Variant::date(parseDateLiteral(line.substr(i + 1, close - i - 1)));
            i = close + 1;
        } else if (isDigit(c) || (c == u'.' && i + 1 < n && isDigit(line[i + 1]))) {
            std::string digits;
            bool fractional = false;
            while (i < n && isDigit(line[i])) digits.push_back(char(line[i++]));
            if (i < n && line[i] == u'.') {
                fractional = true;
                digits.push_back('.');
                ++i;
                while (i < n && isDigit(line[i])) digits.push_back(char(line[i++]));
            }
            if (i < n && (line[i] == u'e' || line[i] == u'E' || line[i] == u'd' || line[i] == u'D')) {
                size_t j = i + 1;
                if (j < n && (line[j] == u'+' || line[j] == u'-')) ++j;
                if (j < n && isDigit(line[j])) {
                    fractional = true;
                    digits.push_back('e');
                    for (size_t k = i + 1; k < j; ++k) digits.push_back(char(line[k]));
                    i = j;
                    while (i < n && isDigit(line[i])) digits.push_back(char(line[i++]));
                }
            }
            char16_t suffix = 0;
            if (i < n && (line[i] == u'%' || line[i] == u'&' || line[i] == u'!' || line[i] == u'#' || line[i] == u'@'))
                suffix = line[i++];
            if (i < n && isWordChar(line[i])) syntaxError("bad number", t.column);
            t.kind = Tok::Number;
            t.value = numberLiteral(digits, fractional, suffix, t.column);
        } else if (c == u'&' && i + 1 < n && (line[i + 1] == u'H' || line[i + 1] == u'h' || line[i + 1] == u'O' || line[i + 1] == u'o')) {
            bool hex = line[i + 1] == u'H' || line[i + 1] == u'h';
            i += 2;
            uint64_t v = 0;
            int digits = 0;
            while (i < n) {
                int d = hexValue(line[i]);
                if (d < 0 || (!hex && d > 7)) break;
                v = v * (hex ? 16 : 8) + uint64_t(d);
                if (v > 0xFFFFFFFFull) raiseError(errOverflow);
                ++digits;
                ++i;
            }
            if (digits == 0) syntaxError("digits expected", t.column);
            char16_t suffix = 0;
            if (i < n && (line[i] == u'&' || line[i] == u'%')) suffix = line[i++];
            if (i < n && isWordChar(line[i])) syntaxError("bad number", t.column);
            t.kind = Tok::Number;
            t.value = radixLiteral(v, suffix, t.column);
        } else if (isLetter(c) || c == u'_') {
            size_t start = i;
            while (i < n && isWordChar(line[i])) ++i;
            if (i < n && line[i] == u'$') ++i;
            t.kind = Tok::Word;
            t.text = String(line.substr(start, i - start));
            if (sameWord(t.text, "Rem") && (out.empty() || out.back().text == u":")) break;
        } else {
            static const char16_t* const twoChar[] = {u"<>", u"<=", u">=", u"=<", u"=>"};
            t.kind = Tok::Symbol;
            bool matched = false;
            for (const char16_t* two : twoChar) {
                if (i + 1 < n && line[i] == two[0] && line[i + 1] == two[1]) {
                    t.text = two;
                    if (t.text == u"=<") t.text = u"<=";
                    if (t.text == u"=>") t.text = u">=";
                    i += 2;
                    matched = true;
                    break;
                }
            }
            if (!matched) {
                static const StringView single = u"+-*/\\^&=<>().,:?;";
                if (single.find(c) == StringView::npos) syntaxError("unexpected character", t.column);
                t.text = String(1, c);
                ++i;
            }
        }
        out.push_back(std::move(t));
    }
    Token end;
    end.column = n;
    out.push_back(std::move(end));
    return out;
}

// ---------------------------------------------------------------- parser

namespace {

VarType typeFromWord(StringView w) {
    static const struct {
        const char* name;
        VarType t;
    } types[] = {{"Variant", vbVariant}, {"String", vbString}, {"Long", vbLong}, {"Integer", vbInteger},
                 {"Double", vbDouble}, {"Single", vbSingle}, {"Currency", vbCurrency}, {"Date", vbDate},
                 {"Boolean", vbBoolean}, {"Byte", vbByte}, {"Object", vbObject}};
    for (const auto& t : types)
        if (sameWord(w, t.name)) return t.t;
    return vbEmpty;
}

bool isNumberType(VarType t) {
    return t == vbInteger || t == vbLong || t == vbSingle || t == vbDouble || t == vbCurrency || t == vbByte ||
           t == vbDecimal;
}

class Parser {
public:
    explicit Parser(const std::vector<Token>& t) : t_(t) {}

    std::vector<Statement> line() {
        std::vector<Statement> out;
        statements(out, false);
        if (!atEnd()) fail("unexpected '" + toUtf8(cur().text) + "'");
        return out;
    }

    NodePtr expressionOnly() {
        NodePtr e = expression();
        if (!atEnd()) fail("unexpected text after the expression");
        return e;
    }

private:
    const Token& cur() const { return t_[pos_]; }
    bool atEnd() const { return cur().kind == Tok::End; }
    // The token `ahead` places on (past the end reads as the End token).
    bool isSymbol(const char16_t* s, size_t ahead = 0) const {
        return pos_ + ahead < t_.size() && t_[pos_ + ahead].kind == Tok::Symbol && t_[pos_ + ahead].text == s;
    }
    bool isWord(const char* w, size_t ahead = 0) const {
        return pos_ + ahead < t_.size() && t_[pos_ + ahead].kind == Tok::Word && sameWord(t_[pos_ + ahead].text, w);
    }
    bool acceptSymbol(const char16_t* s) {
        if (!isSymbol(s)) return false;
        ++pos_;
        return true;
    }
    bool acceptWord(const char* w) {
        if (!isWord(w)) return false;
        ++pos_;
        return true;
    }
    [[noreturn]] void fail(const std::string& what) const { syntaxError(what, cur().column); }
    void expectSymbol(const char16_t* s) {
        if (!acceptSymbol(s)) fail(std::string("'").append(toUtf8(s)).append("' expected"));
    }
    String name() {
        if (cur().kind != Tok::Word || isKeyword(cur().text)) fail("name expected");
        return t_[pos_++].text;
    }
    static bool isKeyword(StringView w) {
        static const char* const words[] = {"And", "Or", "Xor", "Eqv", "Imp", "Not", "Mod", "Like", "Is", "New",
                                             "True", "False", "Null", "Empty", "Nothing", "Then", "Else", "To"};
        for (const char* k : words)
            if (sameWord(w, k)) return true;
        return false;
    }
    bool statementEnd(size_t ahead = 0) const {
        return pos_ + ahead >= t_.size() || t_[pos_ + ahead].kind == Tok::End || isSymbol(u":", ahead) ||
               isWord("Else", ahead);
    }

    // ---- statements

    void statements(std::vector<Statement>& out, bool inIf) {
        for (;;) {
            if (atEnd()) return;
            if (inIf && isWord("Else")) return;
            if (acceptSymbol(u":")) continue;
            out.push_back(statement(inIf));
            if (!statementEnd()) fail("end of statement expected");
        }
    }

    Statement statement(bool inIf) {
        Statement s;
        if (Statement f; fileStatement(f)) return f;
        if (acceptSymbol(u"?") || acceptWord("Print")) {
            s.kind = Statement::Print;
            if (!statementEnd()) s.expr = expression();
            return s;
        }
        if (acceptWord("Dim")) {
            s.kind = Statement::Dim;
            do s.dims.push_back(dimItem(true));
            while (acceptSymbol(u","));
            return s;
        }
        if (acceptWord("ReDim")) {
            s.kind = Statement::ReDim;
            s.preserve = acceptWord("Preserve");
            do {
                DimItem d = dimItem(true);
                if (!d.hasParens) fail("ReDim needs bounds");
                s.dims.push_back(std::move(d));
            } while (acceptSymbol(u","));
            return s;
        }
        if (acceptWord("Erase")) {
            s.kind = Statement::Erase;
            do s.dims.push_back(DimItem{name(), {}, false, vbVariant});
            while (acceptSymbol(u","));
            return s;
        }
        if (acceptWord("Set")) {
            s.kind = Statement::SetAssign;
            s.target = reference();
            expectSymbol(u"=");
            s.expr = expression();
            return s;
        }
        if (acceptWord("Let")) {
            s.kind = Statement::Assign;
            s.target = reference();
            expectSymbol(u"=");
            s.expr = expression();
            return s;
        }
        if (acceptWord("Call")) {
            s.kind = Statement::CallDiscard;
            s.expr = reference();
            if (s.expr->kind == Node::Paren) fail("a member name expected after Call");
            return s;
        }
        if (acceptWord("If")) {
            if (inIf) fail("nested If on one line");
            s.kind = Statement::If;
            s.expr = expression();
            if (!acceptWord("Then")) fail("Then expected");
            statements(s.thenPart, true);
            if (acceptWord("Else")) statements(s.elsePart, true);
            return s;
        }
        if (isWord("On") && pos_ + 1 < t_.size() && sameWord(t_[pos_ + 1].text, "Error")) {
            pos_ += 2;
            if (acceptWord("Resume")) {
                if (!acceptWord("Next")) fail("Next expected");
                s.kind = Statement::OnErrorResumeNext;
                return s;
            }
            if (acceptWord("GoTo") && cur().kind == Tok::Number && cur().value.vt() == vbInteger &&
                cur().value.asInteger() == 0) {
                ++pos_;
                s.kind = Statement::OnErrorGoTo0;
                return s;
            }
            fail("only On Error Resume Next and On Error GoTo 0 are supported");
        }
        // An assignment, a call without parentheses, or an expression to print.
        if (cur().kind == Tok::Word && !isKeyword(cur().text)) {
            size_t start = pos_;
            NodePtr ref = reference(true);
            if (acceptSymbol(u"=")) {
                s.kind = Statement::Assign;
                s.target = std::move(ref);
                s.expr = expression();
                return s;
            }
            if ((ref->kind == Node::Name || ref->kind == Node::Member) && startsArgument()) {
                auto call = std::make_unique<Node>();
                call->kind = Node::Apply;
                call->depth = ref->depth + 1;
                call->a = std::move(ref);
                do call->args.push_back(isSymbol(u",") ? nullptr : expression());
                while (acceptSymbol(u","));
                s.kind = Statement::CallDiscard;
                s.expr = std::move(call);
                return s;
            }
            if (statementEnd() && ref->kind != Node::Paren) {
                s.kind = Statement::Print;
                s.expr = std::move(ref);
                return s;
            }
            pos_ = start;
        }
        s.kind = Statement::Print;
        s.expr = expression();
        return s;
    }

    // ---- file statements, read into calls of the runtime's file operations

    static NodePtr literalNode(Variant v) {
        auto n = std::make_unique<Node>();
        n->kind = Node::Literal;
        n->value = std::move(v);
        return n;
    }
    static NodePtr callNode(const char16_t* member, std::vector<NodePtr> args) {
        auto callee = std::make_unique<Node>();
        callee->kind = Node::Name;
        callee->name = member;
        auto call = std::make_unique<Node>();
        call->kind = Node::Apply;
        int depth = 1;
        for (const NodePtr& a : args)
            if (a) depth = std::max(depth, a->depth);
        call->depth = depth + 1;
        call->a = std::move(callee);
        call->args = std::move(args);
        return call;
    }
    static Statement callStatement(const char16_t* member, std::vector<NodePtr> args) {
        Statement s;
        s.kind = Statement::CallDiscard;
        s.expr = callNode(member, std::move(args));
        return s;
    }
    NodePtr fileNumber() {
        acceptSymbol(u"#");
        return expression();
    }
    // The words of an Open clause, joined by blanks ("Read Write", "Lock Read").
    String clauseWords(std::initializer_list<const char*> allowed) {
        String out;
        while (cur().kind == Tok::Word) {
            bool ok = false;
            for (const char* w : allowed) ok = ok || isWord(w);
            if (!ok) break;
            if (!out.empty()) out.push_back(u' ');
            out.append(t_[pos_++].text);
        }
        return out;
    }

    bool fileStatement(Statement& s) {
        if (isWord("Open") && statementHasWord("For")) {
            ++pos_;
            NodePtr path = expression();
            if (!acceptWord("For")) fail("For expected");
            String mode = clauseWords({"Input", "Output", "Append", "Binary", "Random"});
            if (mode.empty()) fail("file mode expected");
            String access;
            if (acceptWord("Access")) {
                access = clauseWords({"Read", "Write"});
                if (access.empty()) fail("Read or Write expected");
            }
            String lock = clauseWords({"Shared", "Lock", "Read", "Write"});
            if (!acceptWord("As")) fail("As expected");
            NodePtr number = fileNumber();
            if (acceptWord("Len")) {  // record length: accepted, records are not kept
                expectSymbol(u"=");
                expression();
            }
            std::vector<NodePtr> args;
            args.push_back(std::move(path));
            args.push_back(literalNode(Variant(std::move(mode))));
            args.push_back(std::move(number));
            args.push_back(literalNode(Variant(std::move(access))));
            args.push_back(literalNode(Variant(std::move(lock))));
            s = callStatement(u"Open", std::move(args));
            return true;
        }
        if (isWord("Close") && (isSymbol(u"#", 1) || statementEnd(1))) {
            ++pos_;
            std::vector<NodePtr> args;
            if (!statementEnd()) {
                do args.push_back(fileNumber());
                while (acceptSymbol(u","));
            }
            s = callStatement(u"Close", std::move(args));
            return true;
        }
        if (isWord("Line") && isWord("Input", 1) && isSymbol(u"#", 2)) {
            pos_ += 2;
            NodePtr number = fileNumber();
            expectSymbol(u",");
            s.kind = Statement::Assign;
            s.target = reference();
            std::vector<NodePtr> args;
            args.push_back(std::move(number));
            s.expr = callNode(u"LineInput", std::move(args));
            return true;
        }
        if ((isWord("Print") || isSymbol(u"?")) && isSymbol(u"#", 1)) {
            ++pos_;
            std::vector<NodePtr> args;
            args.push_back(fileNumber());
            if (acceptSymbol(u",")) {
                // Each value, then ";" or "," as written, or nothing at the line end.
                while (!statementEnd()) {
                    if (acceptSymbol(u";")) args.push_back(literalNode(Variant(String(u";"))));
                    else if (acceptSymbol(u",")) args.push_back(literalNode(Variant(String(u","))));
                    else args.push_back(expression());
                }
            }
            s = callStatement(u"PrintFile", std::move(args));
            return true;
        }
        if ((isWord("Get") || isWord("Put")) && isSymbol(u"#", 1)) {
            const char16_t* member = isWord("Get") ? u"Get" : u"Put";
            ++pos_;
            std::vector<NodePtr> args;
            args.push_back(fileNumber());
            expectSymbol(u",");
            args.push_back(isSymbol(u",") ? nullptr : expression());
            expectSymbol(u",");
            args.push_back(expression());
            s = callStatement(member, std::move(args));
            return true;
        }
        if (isWord("Seek") && isSymbol(u"#", 1)) {
            ++pos_;
            std::vector<NodePtr> args;
            args.push_back(fileNumber());
            expectSymbol(u",");
            args.push_back(expression());
            s = callStatement(u"SeekTo", std::move(args));
            return true;
        }
        if (isWord("Name") && statementHasWord("As")) {
            ++pos_;
            NodePtr from = expression();
            if (!acceptWord("As")) fail("As expected");
            std::vector<NodePtr> args;
            args.push_back(std::move(from));
            args.push_back(expression());
            s = callStatement(u"Name", std::move(args));
            return true;
        }
        return false;
    }
    // Does the statement at the current token contain the word `w`? Tells the
    // file statements (Open ... For, Name ... As) from the call forms.
    bool statementHasWord(const char* w) const {
        for (size_t ahead = 1; !statementEnd(ahead); ++ahead)
            if (isWord(w, ahead)) return true;
        return false;
    }

    // Could the current token open an argument of a call without parentheses?
    bool startsArgument() const {
        switch (cur().kind) {
            case Tok::Number: case Tok::Text: case Tok::Date: return true;
            case Tok::Word:
                return !isKeyword(cur().text) || isWord("True") || isWord("False") || isWord("Null") ||
                       isWord("Empty") || isWord("Nothing") || isWord("New") || isWord("Not");
            case Tok::Symbol: return isSymbol(u",");
            default: return false;
        }
    }

    DimItem dimItem(bool allowBounds) {
        DimItem d;
        d.name = name();
        if (allowBounds && acceptSymbol(u"(")) {
            d.hasParens = true;
            if (!isSymbol(u")")) {
                do {
                    NodePtr first = expression();
                    if (acceptWord("To")) d.bounds.emplace_back(std::move(first), expression());
                    else d.bounds.emplace_back(nullptr, std::move(first));
                } while (acceptSymbol(u","));
            }
            expectSymbol(u")");
        }
        if (acceptWord("As")) {
            if (cur().kind != Tok::Word) fail("type expected");
            d.elementType = typeFromWord(cur().text);
            if (d.elementType == vbEmpty) fail("unknown type");
            ++pos_;
        }
        return d;
    }

    // ---- expressions, lowest precedence first

    NodePtr binary(Op op, NodePtr l, NodePtr r) {
        auto n = std::make_unique<Node>();
        n->kind = Node::Binary;
        n->op = op;
        n->depth = std::max(l->depth, r->depth) + 1;
        if (n->depth > kMaxDepth) raiseError(errExpressionTooComplex);
        bool arithmetic = op == Op::Pow || op == Op::Mul || op == Op::Div || op == Op::IntDiv || op == Op::Mod ||
                          op == Op::Add || op == Op::Sub;
        n->typedNumber = arithmetic && l->typedNumber && r->typedNumber;
        n->a = std::move(l);
        n->b = std::move(r);
        return n;
    }
    NodePtr unary(Op op, NodePtr x) {
        auto n = std::make_unique<Node>();
        n->kind = Node::Unary;
        n->op = op;
        n->depth = x->depth + 1;
        if (n->depth > kMaxDepth) raiseError(errExpressionTooComplex);
        n->typedNumber = op != Op::Not && x->typedNumber;
        n->a = std::move(x);
        return n;
    }
    struct Guard {
        int& d;
        explicit Guard(int& depth) : d(depth) {
            if (++d > kMaxDepth) raiseError(errExpressionTooComplex);
        }
        ~Guard() { --d; }
    };

    NodePtr expression() {
        Guard g(nesting_);
        return imp();
    }
    NodePtr imp() {
        NodePtr l = eqv();
        while (acceptWord("Imp")) l = binary(Op::Imp, std::move(l), eqv());
        return l;
    }
    NodePtr eqv() {
        NodePtr l = xorOp();
        while (acceptWord("Eqv")) l = binary(Op::Eqv, std::move(l), xorOp());
        return l;
    }
    NodePtr xorOp() {
        NodePtr l = orOp();
        while (acceptWord("Xor")) l = binary(Op::Xor, std::move(l), orOp());
        return l;
    }
    NodePtr orOp() {
        NodePtr l = andOp();
        while (acceptWord("Or")) l = binary(Op::Or, std::move(l), andOp());
        return l;
    }
    NodePtr andOp() {
        NodePtr l = notOp();
        while (acceptWord("And")) l = binary(Op::And, std::move(l), notOp());
        return l;
    }
    NodePtr notOp() {
        if (acceptWord("Not")) {
            Guard g(nesting_);
            return unary(Op::Not, notOp());
        }
        return comparison();
    }
    NodePtr comparison() {
        NodePtr l = concat();
        for (;;) {
            Op op;
            if (acceptSymbol(u"=")) op = Op::Eq;
            else if (acceptSymbol(u"<>")) op = Op::Ne;
            else if (acceptSymbol(u"<=")) op = Op::Le;
            else if (acceptSymbol(u">=")) op = Op::Ge;
            else if (acceptSymbol(u"<")) op = Op::Lt;
            else if (acceptSymbol(u">")) op = Op::Gt;
            else if (acceptWord("Like")) op = Op::Like;
            else if (acceptWord("Is")) op = Op::Is;
            else return l;
            l = binary(op, std::move(l), concat());
        }
    }
    NodePtr concat() {
        NodePtr l = additive();
        while (acceptSymbol(u"&")) l = binary(Op::Concat, std::move(l), additive());
        return l;
    }
    NodePtr additive() {
        NodePtr l = modulo();
        for (;;) {
            if (acceptSymbol(u"+")) l = binary(Op::Add, std::move(l), modulo());
            else if (acceptSymbol(u"-")) l = binary(Op::Sub, std::move(l), modulo());
            else return l;
        }
    }
    NodePtr modulo() {
        NodePtr l = intDiv();
        while (acceptWord("Mod")) l = binary(Op::Mod, std::move(l), intDiv());
        return l;
    }
    NodePtr intDiv() {
        NodePtr l = multiplicative();
        while (acceptSymbol(u"\\")) l = binary(Op::IntDiv, std::move(l), multiplicative());
        return l;
    }
    NodePtr multiplicative() {
        NodePtr l = negation();
        for (;;) {
            if (acceptSymbol(u"*")) l = binary(Op::Mul, std::move(l), negation());
            else if (acceptSymbol(u"/")) l = binary(Op::Div, std::move(l), negation());
            else return l;
        }
    }
    // Unary minus binds looser than ^: -2 ^ 2 is -4.
    NodePtr negation() {
        if (acceptSymbol(u"-")) {
            Guard g(nesting_);
            return unary(Op::Neg, negation());
        }
        if (acceptSymbol(u"+")) {
            Guard g(nesting_);
            return unary(Op::Plus, negation());
        }
        return power();
    }
    NodePtr power() {
        NodePtr l = postfix();
        while (acceptSymbol(u"^")) l = binary(Op::Pow, std::move(l), exponent());
        return l;
    }
    NodePtr exponent() {
        if (acceptSymbol(u"-")) {
            Guard g(nesting_);
            return unary(Op::Neg, exponent());
        }
        if (acceptSymbol(u"+")) {
            Guard g(nesting_);
            return unary(Op::Plus, exponent());
        }
        return postfix();
    }

    // A primary with its .member and (arguments) suffixes.
    // At the head of a statement, `Name (x)` with a blank before the
    // parenthesis passes x by value, as Basic reads a call without Call.
    NodePtr reference(bool statementHead = false) { return postfix(statementHead); }

    NodePtr postfix(bool statementHead = false) {
        Guard g(nesting_);
        NodePtr n = primary();
        for (;;) {
            if (acceptSymbol(u".")) {
                if (cur().kind != Tok::Word) fail("member name expected");
                auto m = std::make_unique<Node>();
                m->kind = Node::Member;
                m->name = t_[pos_++].text;
                m->depth = n->depth + 1;
                m->a = std::move(n);
                n = std::move(m);
            } else if (isSymbol(u"(") && n->kind != Node::Literal) {
                size_t open = pos_++;
                auto call = std::make_unique<Node>();
                call->kind = Node::Apply;
                int depth = n->depth;
                if (!isSymbol(u")")) {
                    do {
                        if (isSymbol(u",") || isSymbol(u")")) {
                            call->args.push_back(nullptr);
                        } else {
                            call->args.push_back(expression());
                            depth = std::max(depth, call->args.back()->depth);
                        }
                    } while (acceptSymbol(u","));
                }
                expectSymbol(u")");
                if (statementHead && t_[open].spaceBefore && call->args.size() == 1 && call->args[0] &&
                    (n->kind == Node::Name || n->kind == Node::Member)) {
                    auto paren = std::make_unique<Node>();
                    paren->kind = Node::Paren;
                    paren->depth = call->args[0]->depth + 1;
                    paren->a = std::move(call->args[0]);
                    call->args[0] = std::move(paren);
                }
                statementHead = false;
                call->depth = depth + 1;
                call->a = std::move(n);
                n = std::move(call);
            } else {
                break;
            }
            if (n->depth > kMaxDepth) raiseError(errExpressionTooComplex);
        }
        return n;
    }

    NodePtr primary() {
        auto n = std::make_unique<Node>();
        const Token& t = cur();
        switch (t.kind) {
            case Tok::Number:
                n->value = t.value;
                n->typedNumber = isNumberType(t.value.vt());
                ++pos_;
                return n;
            case Tok::Text:
            case Tok::Date:
                n->value = t.value;
                ++pos_;
                return n;
            case Tok::Word:
                if (acceptWord("True")) n->value = Variant(true);
                else if (acceptWord("False")) n->value = Variant(false);
                else if (acceptWord("Null")) n->value = Variant::null();
                else if (acceptWord("Empty")) n->value = Variant();
                else if (acceptWord("Nothing")) n->value = Variant::nothing();
                else if (acceptWord("New")) {
                    n->kind = Node::New;
                    n->name = name();
                } else {
                    n->kind = Node::Name;
                    n->name = name();
                }
                return n;
            case Tok::Symbol:
                if (acceptSymbol(u"(")) {
                    n->kind = Node::Paren;
                    n->a = expression();
                    n->depth = n->a->depth + 1;
                    n->typedNumber = n->a->typedNumber;
                    expectSymbol(u")");
                    return n;
                }
                fail("unexpected '" + toUtf8(t.text) + "'");
            case Tok::End:
                fail("expression expected");
        }
        fail("expression expected");
    }

    const std::vector<Token>& t_;
    size_t pos_ = 0;
    int nesting_ = 0;
};

}  // namespace

std::vector<Statement> parseLine(const std::vector<Token>& tokens) { return Parser(tokens).line(); }

NodePtr parseExpression(const std::vector<Token>& tokens) { return Parser(tokens).expressionOnly(); }

}  // namespace qvt::script
