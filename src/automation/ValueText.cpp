#include "automation/ValueText.h"

#include <charconv>
#include <functional>

#include "frame/Conversions.h"

namespace qvt {

namespace {

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out.push_back(char(cp));
    } else if (cp < 0x800) {
        out.push_back(char(0xC0 | (cp >> 6)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(char(0xE0 | (cp >> 12)));
        out.push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(char(0xF0 | (cp >> 18)));
        out.push_back(char(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    }
}

bool isHigh(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLow(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void jsonString(std::string& out, StringView s) {
    static const char* hex = "0123456789abcdef";
    out.push_back('"');
    for (size_t i = 0; i < s.size(); ++i) {
        char16_t c = s[i];
        switch (c) {
            case u'"': out += "\\\""; continue;
            case u'\\': out += "\\\\"; continue;
            case u'\n': out += "\\n"; continue;
            case u'\r': out += "\\r"; continue;
            case u'\t': out += "\\t"; continue;
            case u'\b': out += "\\b"; continue;
            case u'\f': out += "\\f"; continue;
            default: break;
        }
        if (c < 0x20 || c == 0x7F || ((isHigh(c) || isLow(c)) && !(isHigh(c) && i + 1 < s.size() && isLow(s[i + 1])))) {
            out += "\\u";
            for (int shift = 12; shift >= 0; shift -= 4) out.push_back(hex[(c >> shift) & 0xF]);
        } else if (isHigh(c)) {
            appendUtf8(out, 0x10000 + ((uint32_t(c) - 0xD800) << 10) + (uint32_t(s[i + 1]) - 0xDC00));
            ++i;
        } else {
            appendUtf8(out, c);
        }
    }
    out.push_back('"');
}

template <class T>
void shortest(std::string& out, T x) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, x);
    out.append(buf, r.ptr);
}

std::string typeName(const Variant& v) {
    return toUtf8(typeNameOf(v.vt()));
}

std::string cstrOrEmpty(const Variant& v) {
    String s;
    if (toText(v, s) != 0) return {};
    return toUtf8(s);
}

void json(std::string& out, const Variant& v);

// Elements nested by the first dimension: element (i1, i2, ...) sits at
// out[i1][i2]...; memory order has the first subscript fastest.
void jsonArrayLevel(std::string& out, const SafeArray& a, size_t dim, size_t offset, size_t stride) {
    const ArrayBound& b = a.bounds()[dim];
    out.push_back('[');
    size_t count = size_t(b.count());
    for (size_t i = 0; i < count; ++i) {
        if (i) out.push_back(',');
        size_t at = offset + i * stride;
        if (dim + 1 == a.bounds().size()) json(out, a.elements()[at]);
        else jsonArrayLevel(out, a, dim + 1, at, stride * count);
    }
    out.push_back(']');
}

void json(std::string& out, const Variant& v) {
    if (v.isArray()) {
        const SafeArray& a = v.asArray();
        out += "{\"type\":";
        jsonString(out, typeNameOf(v.vt()));
        out += ",\"bounds\":[";
        for (size_t d = 0; d < a.bounds().size(); ++d) {
            if (d) out.push_back(',');
            out += "[" + std::to_string(a.bounds()[d].lower) + "," + std::to_string(a.bounds()[d].upper) + "]";
        }
        out += "],\"value\":";
        if (a.allocated()) jsonArrayLevel(out, a, 0, 0, 1);
        else out += "[]";
        out.push_back('}');
        return;
    }
    out += "{\"type\":\"" + typeName(v) + "\"";
    switch (v.vt()) {
        case vbEmpty: case vbNull: break;
        case vbInteger: out += ",\"value\":" + std::to_string(v.asInteger()); break;
        case vbLong: out += ",\"value\":" + std::to_string(v.asLong()); break;
        case vbByte: out += ",\"value\":" + std::to_string(v.asByte()); break;
        case vbSingle: out += ",\"value\":"; shortest(out, v.asSingle()); break;
        case vbDouble: out += ",\"value\":"; shortest(out, v.asDouble()); break;
        case vbCurrency: out += ",\"value\":\"" + currencyText(v.asCurrency()) + "\""; break;
        case vbDecimal: out += ",\"value\":\"" + decimalText(v.asDecimal()) + "\""; break;
        case vbBoolean: out += v.asBoolean() ? ",\"value\":true" : ",\"value\":false"; break;
        case vbString: out += ",\"value\":"; jsonString(out, v.asString()); break;
        case vbError: out += ",\"value\":" + std::to_string(v.asErrorCode()); break;
        case vbDate: {
            out += ",\"value\":";
            shortest(out, v.asDate());
            String text;
            toText(v, text);
            out += ",\"text\":";
            jsonString(out, text);
            break;
        }
        case vbObject:
            if (Object* o = v.asObject()) {
                out += ",\"class\":";
                jsonString(out, o->className());
            } else {
                out += ",\"value\":null";
            }
            break;
        default: break;
    }
    out.push_back('}');
}

void printArrayLevel(std::string& out, const SafeArray& a, size_t dim, size_t offset, size_t stride) {
    const ArrayBound& b = a.bounds()[dim];
    size_t count = size_t(b.count());
    out.push_back('{');
    for (size_t i = 0; i < count; ++i) {
        if (i) out += ", ";
        size_t at = offset + i * stride;
        if (dim + 1 == a.bounds().size()) {
            const Variant& e = a.elements()[at];
            if (e.isString()) out += "\"" + toUtf8(e.asString()) + "\"";
            else out += toPrintText(e);
        } else {
            printArrayLevel(out, a, dim + 1, at, stride * count);
        }
    }
    out.push_back('}');
}

}  // namespace

String fromUtf8(std::string_view s) {
    String out;
    out.reserve(s.size());
    size_t i = 0;
    while (i < s.size()) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        uint32_t cp;
        size_t len;
        if (c < 0x80) { cp = c; len = 1; }
        else if ((c & 0xE0) == 0xC0) { cp = c & 0x1F; len = 2; }
        else if ((c & 0xF0) == 0xE0) { cp = c & 0x0F; len = 3; }
        else if ((c & 0xF8) == 0xF0) { cp = c & 0x07; len = 4; }
        else { out.push_back(0xFFFD); ++i; continue; }
        bool ok = i + len <= s.size();
        for (size_t k = 1; ok && k < len; ++k) {
            unsigned char cc = static_cast<unsigned char>(s[i + k]);
            if ((cc & 0xC0) != 0x80) ok = false;
            else cp = (cp << 6) | (cc & 0x3F);
        }
        static const uint32_t minimum[5] = {0, 0, 0x80, 0x800, 0x10000};
        if (!ok || cp < minimum[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            out.push_back(0xFFFD);
            ++i;
            continue;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(char16_t(0xD800 + (cp >> 10)));
            out.push_back(char16_t(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(char16_t(cp));
        }
        i += len;
    }
    return out;
}

std::string toUtf8(StringView s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        char16_t c = s[i];
        if (isHigh(c) && i + 1 < s.size() && isLow(s[i + 1])) {
            appendUtf8(out, 0x10000 + ((uint32_t(c) - 0xD800) << 10) + (uint32_t(s[i + 1]) - 0xDC00));
            ++i;
        } else if (isHigh(c) || isLow(c)) {
            appendUtf8(out, 0xFFFD);
        } else {
            appendUtf8(out, c);
        }
    }
    return out;
}

std::string currencyText(int64_t t) {
    uint64_t mag = t < 0 ? uint64_t(0) - uint64_t(t) : uint64_t(t);
    std::string out = t < 0 ? "-" : "";
    out += std::to_string(mag / 10000);
    uint64_t frac = mag % 10000;
    if (frac) {
        std::string f = std::to_string(frac);
        f.insert(0, 4 - f.size(), '0');
        while (f.back() == '0') f.pop_back();
        out += "." + f;
    }
    return out;
}

std::string decimalText(const Decimal& d) {
    unsigned __int128 mag = (static_cast<unsigned __int128>(d.hi) << 64) | d.lo;
    std::string digits;
    do {
        digits.insert(digits.begin(), char('0' + int(mag % 10)));
        mag /= 10;
    } while (mag != 0);
    if (d.scale > 0) {
        if (digits.size() <= d.scale) digits.insert(0, d.scale - digits.size() + 1, '0');
        digits.insert(digits.size() - d.scale, ".");
        while (digits.back() == '0') digits.pop_back();
        if (digits.back() == '.') digits.pop_back();
    }
    if (d.negative && digits != "0") digits.insert(0, "-");
    return digits;
}

std::string toJson(const Variant& v) {
    std::string out;
    json(out, v);
    return out;
}

std::string errorToJson(const RuntimeError& e) {
    std::string out = "{\"error\":" + std::to_string(e.number()) + ",\"description\":";
    jsonString(out, e.description());
    out += ",\"source\":";
    jsonString(out, e.source());
    out.push_back('}');
    return out;
}

std::string toPrintText(const Variant& v) {
    switch (v.vt()) {
        case vbEmpty: return {};
        case vbNull: return "Null";
        case vbString: return toUtf8(v.asString());
        case vbObject:
            if (Object* o = v.asObject()) return "<" + toUtf8(o->className()) + ">";
            return "Nothing";
        default: break;
    }
    if (v.isArray()) {
        const SafeArray& a = v.asArray();
        if (!a.allocated()) return "{}";
        std::string out;
        printArrayLevel(out, a, 0, 0, 1);
        return out;
    }
    return cstrOrEmpty(v);
}

}  // namespace qvt
