#include "frame/Format.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/Conversions.h"
#include "frame/DateMath.h"
#include "frame/Locale.h"
#include "frame/NumberFormat.h"

namespace qvt {

namespace {

// ------------------------------------------------------------ decimal digits

// A non-negative value as decimal digits: value = 0.d1d2d3... x 10^exp, no
// leading or trailing zeros in digits; zero has no digits.
struct Digits {
    std::string d;
    int exp = 0;
    bool zero() const { return d.empty(); }
};

void normalise(Digits& v) {
    size_t lead = 0;
    while (lead < v.d.size() && v.d[lead] == '0') ++lead;
    v.d.erase(0, lead);
    v.exp -= int(lead);
    while (!v.d.empty() && v.d.back() == '0') v.d.pop_back();
    if (v.d.empty()) v.exp = 0;
}

// An unsigned integer text with `scale` digits after the point.
Digits fromInteger(std::string text, int scale) {
    Digits v;
    v.exp = int(text.size()) - scale;
    v.d = std::move(text);
    normalise(v);
    return v;
}

Digits fromReal(double x, int significant) {
    Digits v;
    if (x == 0) return v;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*e", significant - 1, std::fabs(x));
    const char* e = std::strchr(buf, 'e');
    for (const char* p = buf; p < e; ++p)
        if (*p >= '0' && *p <= '9') v.d += *p;
    v.exp = std::atoi(e + 1) + 1;
    normalise(v);
    return v;
}

std::string decimalIntegerText(const Decimal& dec) {
    unsigned __int128 n = (static_cast<unsigned __int128>(dec.hi) << 64) | dec.lo;
    if (n == 0) return "0";
    std::string s;
    while (n > 0) {
        s.insert(s.begin(), char('0' + int(n % 10)));
        n /= 10;
    }
    return s;
}

// The digits and sign of a number-like Variant (numbers, Boolean, Date,
// Empty). False for other types.
bool digitsOf(const Variant& v, Digits& out, bool& negative) {
    negative = false;
    auto integer = [&](int64_t x) {
        negative = x < 0;
        const uint64_t m = negative ? 0 - static_cast<uint64_t>(x) : static_cast<uint64_t>(x);
        out = fromInteger(std::to_string(m), 0);
    };
    switch (v.vt()) {
        case vbEmpty: out = Digits{}; return true;
        case vbByte: integer(v.asByte()); return true;
        case vbInteger:
        case vbBoolean: integer(v.asInteger()); return true;
        case vbLong: integer(v.asLong()); return true;
        case vbCurrency: {
            const int64_t c = v.asCurrency();
            negative = c < 0;
            const uint64_t m = negative ? 0 - static_cast<uint64_t>(c) : static_cast<uint64_t>(c);
            out = fromInteger(std::to_string(m), 4);
            return true;
        }
        case vbDecimal: {
            const Decimal dec = v.asDecimal();
            out = fromInteger(decimalIntegerText(dec), dec.scale);
            negative = dec.negative && !out.zero();
            return true;
        }
        case vbSingle: negative = v.asSingle() < 0; out = fromReal(v.asSingle(), 7); return true;
        case vbDouble: negative = v.asDouble() < 0; out = fromReal(v.asDouble(), 15); return true;
        case vbDate: negative = v.asDate() < 0; out = fromReal(v.asDate(), 15); return true;
        default: return false;
    }
}

// Keeps the first `keep` digits, rounding half away from zero.
void roundDigits(Digits& v, int keep) {
    if (v.zero() || keep >= int(v.d.size())) return;
    if (keep < 0) {
        v = Digits{};
        return;
    }
    const bool up = v.d[size_t(keep)] >= '5';
    v.d.resize(size_t(keep));
    if (up) {
        int i = keep - 1;
        while (i >= 0 && v.d[size_t(i)] == '9') v.d[size_t(i--)] = '0';
        if (i < 0) {
            v.d.insert(v.d.begin(), '1');
            ++v.exp;
        } else {
            ++v.d[size_t(i)];
        }
    }
    normalise(v);
}

char digitAt(const Digits& v, int index) {  // index 0 is the first digit
    return index >= 0 && index < int(v.d.size()) ? v.d[size_t(index)] : '0';
}

// ------------------------------------------------------------ pattern text

char16_t lower(char16_t c) { return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c; }

bool startsWithFolded(StringView s, size_t i, std::u16string_view word) {
    if (i + word.size() > s.size()) return false;
    for (size_t k = 0; k < word.size(); ++k)
        if (lower(s[i + k]) != word[k]) return false;
    return true;
}

// Sections split at ";" outside quotes and escapes.
std::vector<String> splitSections(StringView p) {
    std::vector<String> out(1);
    for (size_t i = 0; i < p.size(); ++i) {
        const char16_t c = p[i];
        if (c == u'"') {
            const size_t end = p.find(u'"', i + 1);
            const size_t stop = end == StringView::npos ? p.size() : end + 1;
            out.back() += p.substr(i, stop - i);
            i = stop - 1;
        } else if (c == u'\\' && i + 1 < p.size()) {
            out.back() += p.substr(i, 2);
            ++i;
        } else if (c == u';') {
            out.emplace_back();
        } else {
            out.back() += c;
        }
    }
    return out;
}

struct Classification {
    bool digits = false;  // 0 or #
    bool date = false;    // a date token
    bool text = false;    // @ & < > !
};

Classification classify(StringView s) {
    Classification c;
    for (size_t i = 0; i < s.size(); ++i) {
        const char16_t ch = s[i];
        if (ch == u'"') {
            const size_t end = s.find(u'"', i + 1);
            if (end == StringView::npos) break;
            i = end;
        } else if (ch == u'\\') {
            ++i;
        } else if (ch == u'0' || ch == u'#') {
            c.digits = true;
        } else if (ch == u'@' || ch == u'&' || ch == u'<' || ch == u'>' || ch == u'!') {
            c.text = true;
        } else if (startsWithFolded(s, i, u"am/pm") || startsWithFolded(s, i, u"a/p") ||
                   startsWithFolded(s, i, u"ampm") || startsWithFolded(s, i, u"ttttt")) {
            c.date = true;
        } else {
            switch (lower(ch)) {
                case u'd': case u'm': case u'y': case u'h': case u'n':
                case u's': case u'w': case u'q': case u'c':
                    c.date = true;
                    break;
                default: break;
            }
        }
    }
    return c;
}

// ------------------------------------------------------------ numbers

struct NumToken {
    enum Kind { Zero, Hash, Point, Exp, Literal } kind;
    String text;  // Literal: the text; Exp: "E" or "e"
    bool expPlus = false;
};

enum class Region { Integer, Fraction, Exponent };

struct NumPattern {
    std::vector<NumToken> tokens;
    std::vector<Region> regions;  // per token
    bool grouping = false;
    int scaleCommas = 0;
    bool percent = false;
    bool hasPoint = false;
    bool hasExp = false;
    int intPlaces = 0;
    int fracPlaces = 0;
    int expZeros = 0;
};

NumPattern parseNumeric(StringView s) {
    NumPattern p;
    Region region = Region::Integer;
    std::vector<size_t> commas;  // token index at each integer-part comma
    auto literal = [&](StringView text) {
        if (!p.tokens.empty() && p.tokens.back().kind == NumToken::Literal && p.regions.back() == region) {
            p.tokens.back().text += text;
        } else {
            p.tokens.push_back({NumToken::Literal, String(text)});
            p.regions.push_back(region);
        }
    };
    auto token = [&](NumToken t) {
        p.tokens.push_back(std::move(t));
        p.regions.push_back(region);
    };
    for (size_t i = 0; i < s.size(); ++i) {
        const char16_t c = s[i];
        if (c == u'"') {
            const size_t end = s.find(u'"', i + 1);
            const size_t stop = end == StringView::npos ? s.size() : end;
            literal(s.substr(i + 1, stop - i - 1));
            i = stop;
        } else if (c == u'\\') {
            if (i + 1 < s.size()) literal(s.substr(++i, 1));
        } else if (c == u'0' || c == u'#') {
            token({c == u'0' ? NumToken::Zero : NumToken::Hash, {}});
            if (region == Region::Integer) ++p.intPlaces;
            else if (region == Region::Fraction) ++p.fracPlaces;
            else if (c == u'0') ++p.expZeros;
        } else if (c == u'.' && region == Region::Integer) {
            token({NumToken::Point, {}});
            p.hasPoint = true;
            region = Region::Fraction;
        } else if (c == u',') {
            if (region == Region::Integer) commas.push_back(p.tokens.size());
        } else if (c == u'%') {
            p.percent = true;
            literal(u"%");
        } else if ((c == u'E' || c == u'e') && !p.hasExp && i + 1 < s.size() && (s[i + 1] == u'+' || s[i + 1] == u'-')) {
            NumToken t{NumToken::Exp, String(1, c)};
            t.expPlus = s[i + 1] == u'+';
            ++i;
            region = Region::Exponent;
            token(std::move(t));
            p.hasExp = true;
        } else {
            literal(s.substr(i, 1));
        }
    }
    for (size_t at : commas) {
        bool placeholderAfter = false;
        for (size_t k = at; k < p.tokens.size() && p.regions[k] == Region::Integer; ++k)
            if (p.tokens[k].kind == NumToken::Zero || p.tokens[k].kind == NumToken::Hash) placeholderAfter = true;
        if (placeholderAfter) p.grouping = true;
        else ++p.scaleCommas;
    }
    return p;
}

String renderNumeric(const NumPattern& p, Digits v, bool negative) {
    const LocaleConfig& loc = locale();
    if (!v.zero()) v.exp += (p.percent ? 2 : 0) - 3 * p.scaleCommas;

    String intDigits;     // the integer digits to place
    int expShown = 0;
    if (p.hasExp) {
        const int total = std::max(p.intPlaces + p.fracPlaces, 1);
        roundDigits(v, total);
        if (!v.zero()) expShown = v.exp - p.intPlaces;
        for (int k = 0; k < p.intPlaces; ++k) intDigits += char16_t(digitAt(v, k));
        v.exp = p.intPlaces;  // the fraction reads on from there
    } else {
        roundDigits(v, v.exp + p.fracPlaces);
        for (int k = 0; k < v.exp; ++k) intDigits += char16_t(digitAt(v, k));
        int firstZero = -1, index = 0;
        for (size_t k = 0; k < p.tokens.size(); ++k) {
            if (p.regions[k] != Region::Integer) continue;
            if (p.tokens[k].kind == NumToken::Zero && firstZero < 0) firstZero = index;
            if (p.tokens[k].kind == NumToken::Zero || p.tokens[k].kind == NumToken::Hash) ++index;
        }
        const int wanted = firstZero < 0 ? 0 : p.intPlaces - firstZero;
        if (int(intDigits.size()) < wanted) intDigits.insert(0, size_t(wanted) - intDigits.size(), u'0');
    }

    // How many fraction digits to write: up to the last 0 placeholder, or
    // the last non-zero digit, whichever is further.
    int fracShow = 0;
    {
        int q = 0;
        for (size_t k = 0; k < p.tokens.size(); ++k) {
            if (p.regions[k] != Region::Fraction) continue;
            const auto kind = p.tokens[k].kind;
            if (kind != NumToken::Zero && kind != NumToken::Hash) continue;
            if (kind == NumToken::Zero || digitAt(v, v.exp + q) != '0') fracShow = q + 1;
            ++q;
        }
    }

    String out;
    if (negative) out += u'-';
    const int len = int(intDigits.size());
    auto emitDigits = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            out += intDigits[size_t(i)];
            const int right = len - 1 - i;
            if (p.grouping && right > 0 && right % 3 == 0) out += loc.thousandsSeparator;
        }
    };
    const int lead = len - p.intPlaces;  // digits the first placeholder takes beyond its own
    int place = 0, q = 0;
    bool intWritten = p.intPlaces > 0;
    for (size_t k = 0; k < p.tokens.size(); ++k) {
        const NumToken& t = p.tokens[k];
        const Region r = p.regions[k];
        switch (t.kind) {
            case NumToken::Zero:
            case NumToken::Hash:
                if (r == Region::Integer) {
                    if (place == 0) {
                        if (lead >= 0) emitDigits(0, lead + 1);
                    } else if (lead + place >= 0) {
                        emitDigits(lead + place, lead + place + 1);
                    }
                    ++place;
                } else if (r == Region::Fraction) {
                    if (q < fracShow) out += char16_t(digitAt(v, v.exp + q));
                    ++q;
                }
                break;
            case NumToken::Point:
                if (!intWritten) {
                    emitDigits(0, len);
                    intWritten = true;
                }
                out += loc.decimalPoint;
                break;
            case NumToken::Exp: {
                out += t.text;
                if (expShown < 0) out += u'-';
                else if (t.expPlus) out += u'+';
                std::string e = std::to_string(std::abs(expShown));
                const size_t width = size_t(std::max(p.expZeros, 1));
                if (e.size() < width) e.insert(0, width - e.size(), '0');
                for (char c : e) out += char16_t(c);
                break;
            }
            case NumToken::Literal: out += t.text; break;
        }
    }
    return out;
}

// ------------------------------------------------------------ dates

DateParts partsOf(double date) {
    DateParts parts{};
    check(splitDate(date, parts));
    return parts;
}

String renderDate(StringView s, double date, int32_t firstDay, int32_t firstWeek);

String generalDate(double date, int32_t firstDay, int32_t firstWeek) {
    const LocaleConfig& loc = locale();
    const DateParts p = partsOf(date);
    const bool hasTime = p.hour != 0 || p.minute != 0 || p.second != 0;
    double day = 0;
    check(dateFromParts(p.year, p.month, p.day, day));
    String out;
    if (day != 0) out = renderDate(loc.shortDatePattern, date, firstDay, firstWeek);
    if (hasTime || day == 0) {
        if (!out.empty()) out += u' ';
        out += renderDate(loc.longTimePattern, date, firstDay, firstWeek);
    }
    return out;
}

String renderDate(StringView s, double date, int32_t firstDay, int32_t firstWeek) {
    const LocaleConfig& loc = locale();
    const DateParts p = partsOf(date);
    // A 12-hour clock when the pattern has an AM/PM token.
    bool twelve = false;
    for (size_t i = 0; i < s.size() && !twelve; ++i) {
        if (s[i] == u'"') {
            const size_t end = s.find(u'"', i + 1);
            if (end == StringView::npos) break;
            i = end;
        } else if (s[i] == u'\\') {
            ++i;
        } else {
            twelve = startsWithFolded(s, i, u"am/pm") || startsWithFolded(s, i, u"a/p") || startsWithFolded(s, i, u"ampm");
        }
    }
    const bool pm = p.hour >= 12;
    String out;
    bool afterHour = false;
    size_t i = 0;
    auto run = [&](char16_t c) {  // length of the run of c (any case) at i
        size_t n = 0;
        while (i + n < s.size() && lower(s[i + n]) == c) ++n;
        return n;
    };
    while (i < s.size()) {
        const char16_t c = s[i];
        const char16_t lc = lower(c);
        if (c == u'"') {
            const size_t end = s.find(u'"', i + 1);
            const size_t stop = end == StringView::npos ? s.size() : end;
            out += s.substr(i + 1, stop - i - 1);
            i = stop + 1;
            continue;
        }
        if (c == u'\\') {
            if (i + 1 < s.size()) out += s[i + 1];
            i += 2;
            continue;
        }
        if (startsWithFolded(s, i, u"am/pm")) {
            out += pm ? s.substr(i + 3, 2) : s.substr(i, 2);
            i += 5;
            continue;
        }
        if (startsWithFolded(s, i, u"a/p")) {
            out += pm ? s[i + 2] : s[i];
            i += 3;
            continue;
        }
        if (startsWithFolded(s, i, u"ampm")) {
            out += pm ? loc.pmWord : loc.amWord;
            i += 4;
            continue;
        }
        if (startsWithFolded(s, i, u"ttttt")) {
            out += renderDate(loc.longTimePattern, date, firstDay, firstWeek);
            i += 5;
            afterHour = false;
            continue;
        }
        size_t n = 0;
        switch (lc) {
            case u'd':
                n = std::min<size_t>(run(u'd'), 6);
                if (n == 1) out += formatInteger(p.day);
                else if (n == 2) out += twoDigits(p.day);
                else if (n == 3) out += loc.dayAbbreviations[p.weekday - 1];
                else if (n == 4) out += loc.dayNames[p.weekday - 1];
                else if (n == 5) out += renderDate(loc.shortDatePattern, date, firstDay, firstWeek);
                else out += renderDate(loc.longDatePattern, date, firstDay, firstWeek);
                afterHour = false;
                break;
            case u'm':
                n = std::min<size_t>(run(u'm'), 4);
                if (n <= 2 && afterHour) out += n == 1 ? formatInteger(p.minute) : twoDigits(p.minute);
                else if (n == 1) out += formatInteger(p.month);
                else if (n == 2) out += twoDigits(p.month);
                else if (n == 3) out += loc.monthAbbreviations[p.month - 1];
                else out += loc.monthNames[p.month - 1];
                afterHour = false;
                break;
            case u'y':
                n = run(u'y');
                if (n >= 4) {
                    n = 4;
                    String y = formatInteger(p.year);
                    if (y.size() < 4) y.insert(0, 4 - y.size(), u'0');
                    out += y;
                } else if (n >= 2) {
                    n = 2;
                    out += twoDigits(p.year % 100);
                } else {
                    out += formatInteger(p.dayOfYear);
                }
                afterHour = false;
                break;
            case u'h': {
                n = std::min<size_t>(run(u'h'), 2);
                int h = p.hour;
                if (twelve) h = h % 12 == 0 ? 12 : h % 12;
                out += n == 1 ? formatInteger(h) : twoDigits(h);
                afterHour = true;
                break;
            }
            case u'n':
                n = std::min<size_t>(run(u'n'), 2);
                out += n == 1 ? formatInteger(p.minute) : twoDigits(p.minute);
                afterHour = false;
                break;
            case u's':
                n = std::min<size_t>(run(u's'), 2);
                out += n == 1 ? formatInteger(p.second) : twoDigits(p.second);
                afterHour = false;
                break;
            case u'w':
                n = std::min<size_t>(run(u'w'), 2);
                out += n == 1 ? formatInteger(weekday(date, firstDay)) : formatInteger(weekOfYear(date, firstDay, firstWeek));
                afterHour = false;
                break;
            case u'q':
                n = 1;
                out += formatInteger((p.month - 1) / 3 + 1);
                afterHour = false;
                break;
            case u'c':
                n = 1;
                out += generalDate(date, firstDay, firstWeek);
                afterHour = false;
                break;
            case u':':
                n = 1;
                out += loc.timeSeparator;
                break;
            case u'/':
                n = 1;
                out += loc.dateSeparator;
                break;
            default:
                n = 1;
                out += c;
                break;
        }
        i += n;
    }
    return out;
}

// ------------------------------------------------------------ strings

String renderText(StringView s, String value) {
    int places = 0;
    bool fromLeft = false;
    int caseMode = 0;  // 1 lower, 2 upper
    for (size_t i = 0; i < s.size(); ++i) {
        const char16_t c = s[i];
        if (c == u'"') {
            const size_t end = s.find(u'"', i + 1);
            if (end == StringView::npos) break;
            i = end;
        } else if (c == u'\\') {
            ++i;
        } else if (c == u'@' || c == u'&') {
            ++places;
        } else if (c == u'!') {
            fromLeft = true;
        } else if ((c == u'<' || c == u'>') && caseMode == 0) {
            caseMode = c == u'<' ? 1 : 2;
        }
    }
    for (char16_t& ch : value) ch = caseMode == 1 ? toLowerChar(ch) : caseMode == 2 ? toUpperChar(ch) : ch;
    const int len = int(value.size());
    const int blanks = fromLeft ? 0 : std::max(places - len, 0);  // leading placeholders without a character
    String out;
    int place = 0, next = 0;
    for (size_t i = 0; i < s.size(); ++i) {
        const char16_t c = s[i];
        if (c == u'"') {
            const size_t end = s.find(u'"', i + 1);
            const size_t stop = end == StringView::npos ? s.size() : end;
            out += s.substr(i + 1, stop - i - 1);
            i = stop;
        } else if (c == u'\\') {
            if (i + 1 < s.size()) out += s[++i];
        } else if (c == u'@' || c == u'&') {
            if (place >= blanks && next < len) out += value[size_t(next++)];
            else if (c == u'@') out += u' ';
            ++place;
        } else if (c == u'!' || c == u'<' || c == u'>') {
        } else {
            out += c;
        }
    }
    out += StringView(value).substr(size_t(next));
    return out;
}

// ------------------------------------------------------------ named formats

enum class Named { None, GeneralNumber, Numeric, YesNo, TrueFalse, OnOff, Date };

Named lookupNamed(StringView pattern, String& expanded) {
    const LocaleConfig& loc = locale();
    String key;
    for (char16_t c : pattern) key += lower(c);
    if (key == u"general number") return Named::GeneralNumber;
    if (key == u"currency") {
        const String sym = u"\"" + loc.currencySymbol + u"\"";
        expanded = sym + u"#,##0.00;(" + sym + u"#,##0.00)";
        return Named::Numeric;
    }
    if (key == u"fixed") { expanded = u"0.00"; return Named::Numeric; }
    if (key == u"standard") { expanded = u"#,##0.00"; return Named::Numeric; }
    if (key == u"percent") { expanded = u"0.00%"; return Named::Numeric; }
    if (key == u"scientific") { expanded = u"0.00E+00"; return Named::Numeric; }
    if (key == u"yes/no") return Named::YesNo;
    if (key == u"true/false") return Named::TrueFalse;
    if (key == u"on/off") return Named::OnOff;
    if (key == u"general date") { expanded = u"c"; return Named::Date; }
    if (key == u"long date") { expanded = loc.longDatePattern; return Named::Date; }
    if (key == u"medium date") { expanded = loc.mediumDatePattern; return Named::Date; }
    if (key == u"short date") { expanded = loc.shortDatePattern; return Named::Date; }
    if (key == u"long time") { expanded = loc.longTimePattern; return Named::Date; }
    if (key == u"medium time") { expanded = loc.mediumTimePattern; return Named::Date; }
    if (key == u"short time") { expanded = loc.shortTimePattern; return Named::Date; }
    return Named::None;
}

// ------------------------------------------------------------ dispatch

bool isNumberLike(const Variant& v) { return v.isNumberType() || v.vt() == vbDate || v.isEmpty(); }

// A String as a number (through the locale's parser); false if it is none.
bool numberFromText(const Variant& v, Variant& out) {
    double d = 0;
    if (!IsNumeric(v) || toDouble(v, d) != 0) return false;
    out = Variant(d);
    return true;
}

bool dateFromText(const Variant& v, double& out) { return parseDate(v.asString(), out) == 0; }

double dateOf(const Variant& v) {
    double d = 0;
    check(toDate(v, d));
    return d;
}

String formatNumeric(const std::vector<String>& sections, const Variant& value) {
    Digits digits;
    bool negative = false;
    digitsOf(value, digits, negative);
    if (digits.zero()) negative = false;
    if (digits.zero() && sections.size() >= 3 && !sections[2].empty())
        return renderNumeric(parseNumeric(sections[2]), digits, false);
    if (negative && sections.size() >= 2 && !sections[1].empty())
        return renderNumeric(parseNumeric(sections[1]), digits, false);
    if (sections[0].empty()) return CStr(value);
    return renderNumeric(parseNumeric(sections[0]), digits, negative);
}

// The formatted text, or Null (only for a Null value without a Null section).
Variant formatValue(const Variant& value, StringView pattern, int32_t firstDay, int32_t firstWeek) {
    if (firstDay < 0 || firstDay > 7 || firstWeek < 0 || firstWeek > 3) raiseError(errInvalidCall);
    if (firstDay == 0) firstDay = vbSunday;
    if (firstWeek == 0) firstWeek = vbFirstJan1;
    if (value.isObject() || value.isArray() || value.isError()) raiseError(errTypeMismatch);

    if (pattern.empty()) return value.isNull() ? Variant::null() : Variant(CStr(value));

    String expanded;
    const Named named = lookupNamed(pattern, expanded);
    if (value.isNull()) {
        if (named == Named::None) {
            const std::vector<String> sections = splitSections(pattern);
            if (sections.size() >= 4) return Variant(renderNumeric(parseNumeric(sections[3]), Digits{}, false));
        }
        return Variant::null();
    }

    // Named formats that are no pattern.
    if (named == Named::GeneralNumber || named == Named::YesNo || named == Named::TrueFalse || named == Named::OnOff) {
        Variant number = value;
        if (value.isString() && !numberFromText(value, number)) return value;
        if (named == Named::GeneralNumber) {
            if (number.vt() == vbDate || number.vt() == vbBoolean) number = Variant(dateOf(number));
            if (number.isEmpty()) return Variant(u"0");
            return Variant(CStr(number));
        }
        Digits d;
        bool negative = false;
        digitsOf(number, d, negative);
        const LocaleConfig& loc = locale();
        if (named == Named::YesNo) return Variant(d.zero() ? loc.noWord : loc.yesWord);
        if (named == Named::OnOff) return Variant(d.zero() ? loc.offWord : loc.onWord);
        return Variant(d.zero() ? loc.falseWord : loc.trueWord);
    }

    const StringView active = named == Named::None ? pattern : StringView(expanded);
    const std::vector<String> sections = splitSections(active);
    Classification kind = classify(sections[0]);
    if (named == Named::Date) kind = Classification{false, true, false};
    if (named == Named::Numeric) kind = Classification{true, false, false};
    const bool datePattern = kind.date && !kind.digits;

    if (value.isString()) {
        const String& s = value.asString();
        if (kind.text && !kind.digits && !kind.date) {
            if (s.empty() && sections.size() >= 2) return Variant(renderText(sections[1], s));
            return Variant(renderText(sections[0], s));
        }
        Variant number;
        if (datePattern) {
            double d = 0;
            if (dateFromText(value, d)) return Variant(renderDate(sections[0], d, firstDay, firstWeek));
            if (numberFromText(value, number)) return Variant(renderDate(sections[0], dateOf(number), firstDay, firstWeek));
            return value;
        }
        if (numberFromText(value, number)) return Variant(formatNumeric(sections, number));
        return value;
    }

    // Numbers, Booleans, Dates and Empty.
    if (kind.text && !kind.digits && !kind.date)
        return Variant(renderText(sections[0], value.isEmpty() ? String() : CStr(value)));
    if (datePattern) return Variant(renderDate(sections[0], dateOf(value), firstDay, firstWeek));
    if (value.vt() == vbDate) return Variant(formatNumeric(sections, Variant(value.asDate())));
    if (!isNumberLike(value)) raiseError(errTypeMismatch);
    return Variant(formatNumeric(sections, value));
}

}  // namespace

int32_t weekOfYear(double date, int32_t firstDay, int32_t firstWeek) {
    if (firstDay == 0) firstDay = vbSunday;
    if (firstWeek == 0) firstWeek = vbFirstJan1;
    const DateParts p = partsOf(date);
    const double day = std::floor(date);
    for (int year = p.year; year >= p.year - 1; --year) {
        double jan1 = 0;
        if (dateFromParts(year, 1, 1, jan1) != 0) break;
        const int wd = weekday(jan1, firstDay);  // 1..7 from firstDay
        double start = jan1 - (wd - 1);
        if (firstWeek == vbFirstFourDays && 8 - wd < 4) start += 7;
        if (firstWeek == vbFirstFullWeek && wd != 1) start += 7;
        if (day >= start) return static_cast<int32_t>(std::floor((day - start) / 7)) + 1;
    }
    return 1;
}

String FormatText(const Variant& value, StringView pattern, int32_t firstDayOfWeek, int32_t firstWeekOfYear) {
    Variant v = formatValue(value, pattern, firstDayOfWeek, firstWeekOfYear);
    if (v.isNull()) raiseError(errInvalidUseOfNull);
    return v.asString();
}

Variant Format(const Variant& value, StringView pattern, int32_t firstDayOfWeek, int32_t firstWeekOfYear) {
    return formatValue(value, pattern, firstDayOfWeek, firstWeekOfYear);
}

}  // namespace qvt
