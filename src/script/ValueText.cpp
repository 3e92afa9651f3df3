#include "script/ValueText.h"

#include <charconv>
#include <functional>

#include "frame/Conversions.h"
#include "frame/NumberFormat.h"
#include "frame/Utf8.h"

namespace qvt {

namespace {

// Currency and Decimal travel as the exact decimal text, '.' whatever the locale.
std::string exactText(const Variant& v) {
    String t;
    if (v.vt() == vbCurrency) appendCurrency(t, v.asCurrency(), u'.');
    else appendDecimal(t, v.asDecimal(), u'.');
    return toUtf8(t);
}



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
        if (c < 0x20 || c == 0x7F || ((isHighSurrogate(c) || isLowSurrogate(c)) && !(isHighSurrogate(c) && i + 1 < s.size() && isLowSurrogate(s[i + 1])))) {
            out += "\\u";
            for (int shift = 12; shift >= 0; shift -= 4) out.push_back(hex[(c >> shift) & 0xF]);
        } else if (isHighSurrogate(c)) {
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
            out.append("[").append(std::to_string(a.bounds()[d].lower)).append(",");
            out.append(std::to_string(a.bounds()[d].upper)).append("]");
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
        case vbCurrency: out += ",\"value\":\"" + exactText(v) + "\""; break;
        case vbDecimal: out += ",\"value\":\"" + exactText(v) + "\""; break;
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
            if (e.isString()) out.append("\"").append(toUtf8(e.asString())).append("\"");
            else out += toPrintText(e);
        } else {
            printArrayLevel(out, a, dim + 1, at, stride * count);
        }
    }
    out.push_back('}');
}

}  // namespace





std::string toJson(const Variant& v) {
    std::string out;
    json(out, v);
    return out;
}

std::string toJsonString(StringView s) {
    std::string out;
    jsonString(out, s);
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
            if (Object* o = v.asObject()) return std::string("<").append(toUtf8(o->className())).append(">");
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
