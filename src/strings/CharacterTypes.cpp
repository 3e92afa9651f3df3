#include "strings/CharacterTypes.h"

#include <algorithm>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Strings.h"
#include "strings/StringSearches.h"
#include "structures/ArrayOthers.h"

namespace qvt {

namespace {

// The classification of the Windows-1252 page. It is data, used exactly as
// written: Ø and ø (216, 248) class as punctuation and ß (223) as upper case.
constexpr char16_t kCTypeANSI[] =
    u"BBBBBBBBBCCCCCBBBBBBBBBBBBBBBBBBSPPPPPPPPPPPPPPPXXXXXXXXXXPPPPPPPWWWWWWUUUUUUUUUUUUUUUUUUUUPPPPPP"
    u"MMMMMMLLLLLLLLLLLLLLLLLLLLPPPPBBBPPPPPPPPUPUBBBBPPPPPPPPPLPLBBUSPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPUUU"
    u"UUUUUUUUUUUUUUUUUUUUPPUUUUUUULLLLLLLLLLLLLLLLLLLLLLLPPLLLLLLL";
static_assert(std::size(kCTypeANSI) == 257);

// V vowel, C consonant, S neither. Y counts as a consonant; so do the
// accented consonants of the upper half.
constexpr char16_t kVowels[] =
    u"SSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSVCCCVCCCVCCCCCVCCCCCVCCCCCSSSSSS"
    u"VCCCVCCCVCCCCCVCCCCCVCCCCCSSSSSSSSSSSSSSSCSVSSSSSSSSSSSSSCSVSSCSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSVVV"
    u"VVVVCVVVVVVVVCCVVVVVSSVVVVCCCVVVVVVVCVVVVVVVVVCVVVVVSSVVVVCCC";
static_assert(std::size(kVowels) == 257);

// The plain look-alike of each code: controls become a blank, the accented
// letters their base letter, typographic marks their ASCII counterpart.
constexpr char16_t kNonExtended[] =
    u"                                "
    u" !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~ "
    u"E ,f\".++^%S<O Z  ''\"\"*--~Ts>o zY"   // 128..159
    u" !cL*Y|S\"Ca<--R-o+23'uP.,1o>424?"    // 160..191
    u"AAAAAAACEEEEIIIIDNOOOOO*OUUUUYPB"     // 192..223
    u"aaaaaaaceeeeiiiidnooooo/ouuuuypy";    // 224..255
static_assert(std::size(kNonExtended) == 257);

int32_t letterMask(char16_t letter) noexcept {
    switch (letter) {
        case u'B': return CharTypeControl;
        case u'C': return CharTypeCntrl;
        case u'D': return CharTypeDigit;
        case u'X': return CharTypeHexDigit;
        case u'L': return CharTypeLower;
        case u'M': return CharTypeHexLower;
        case u'P': return CharTypePunctuation;
        case u'S': return CharTypeWhitespace;
        case u'U': return CharTypeUpper;
        case u'W': return CharTypeHexUpper;
        default: return CharTypeNone;
    }
}

// Accent composition. Each entry is a letter (or symbol) and a mark as a
// Windows-1252 user types them, and the code of the result; the order of the
// two characters does not matter. Marks: ` acute ' ^ ~ " (or :) for the
// diaeresis, o * . for the ring, , cedilla, / stroke, < caron, - bar.
// Two characters as smaller then larger, in binary order.
String orderedPair(StringView a, StringView b) {
    const StringView pair[] = {a, b};
    return minCorrespondingCharacters(pair, vbBinaryCompare) + maxCorrespondingCharacters(pair, vbBinaryCompare);
}

struct Composition {
    char16_t pair[3];  // two characters and the terminator
    uint8_t code;
};
constexpr Composition kCompositions[] = {
    {u"A`", 192}, {u"A'", 193}, {u"A^", 194}, {u"A~", 195}, {u"A\"", 196}, {u"A:", 196}, {u"Ao", 197},
    {u"A*", 197}, {u"A.", 197}, {u"AE", 198}, {u"C,", 199}, {u"E`", 200}, {u"E'", 201}, {u"E^", 202},
    {u"E\"", 203}, {u"E:", 203}, {u"I`", 204}, {u"I'", 205}, {u"I^", 206}, {u"I\"", 207}, {u"I:", 207},
    {u"D-", 208}, {u"N~", 209}, {u"O`", 210}, {u"O'", 211}, {u"O^", 212}, {u"O~", 213}, {u"O\"", 214},
    {u"O:", 214}, {u"xx", 215}, {u"O/", 216}, {u"U`", 217}, {u"U'", 218}, {u"U^", 219}, {u"U\"", 220},
    {u"U:", 220}, {u"Y'", 221}, {u"TH", 222}, {u"ss", 223},
    {u"a`", 224}, {u"a'", 225}, {u"a^", 226}, {u"a~", 227}, {u"a\"", 228}, {u"a:", 228}, {u"ao", 229},
    {u"a*", 229}, {u"a.", 229}, {u"ae", 230}, {u"c,", 231}, {u"e`", 232}, {u"e'", 233}, {u"e^", 234},
    {u"e\"", 235}, {u"e:", 235}, {u"i`", 236}, {u"i'", 237}, {u"i^", 238}, {u"i\"", 239}, {u"i:", 239},
    {u"d-", 240}, {u"n~", 241}, {u"o`", 242}, {u"o'", 243}, {u"o^", 244}, {u"o~", 245}, {u"o\"", 246},
    {u"o:", 246}, {u":-", 247}, {u"o/", 248}, {u"u`", 249}, {u"u'", 250}, {u"u^", 251}, {u"u\"", 252},
    {u"u:", 252}, {u"y'", 253}, {u"th", 254}, {u"y\"", 255}, {u"y:", 255},
    {u"S<", 138}, {u"s<", 154}, {u"Z<", 142}, {u"z<", 158}, {u"OE", 140}, {u"oe", 156}, {u"Y\"", 159},
    {u"Y:", 159}, {u"E=", 128}, {u"C=", 128}, {u"TM", 153},
    {u"!!", 161}, {u"c/", 162}, {u"c|", 162}, {u"L-", 163}, {u"Y=", 165}, {u"so", 167}, {u"co", 169},
    {u"a_", 170}, {u"<<", 171}, {u"or", 174}, {u"oo", 176}, {u"+-", 177}, {u"^2", 178}, {u"^3", 179},
    {u"mu", 181}, {u"P!", 182}, {u"^1", 185}, {u"o_", 186}, {u">>", 187}, {u"14", 188}, {u"12", 189},
    {u"34", 190}, {u"??", 191},
};

String text(StringView s) { return String(s); }

}  // namespace

bool characterCode(const Variant& v, uint8_t& code) noexcept {
    if (v.isString()) {
        const String& s = v.asString();
        if (s.empty()) return false;
        code = unicodeToAnsi(s[0]);
        return true;
    }
    int32_t n;
    if (!v.isNumberType() || toLong(v, n) != 0 || n < 0 || n > 255) return false;
    code = static_cast<uint8_t>(n);
    return true;
}

// --- the classification table ---------------------------------------------

Variant CharacterTypes::CType() const { return Variant(custom_ ? ctype_ : CTypeANSI()); }

void CharacterTypes::CType(const Variant& vCType) {
    custom_ = vCType.isString();
    ctype_ = custom_ ? vCType.asString() : String();
    loaded_ = false;
}

String CharacterTypes::CTypeANSI() const { return text(kCTypeANSI); }

String CharacterTypes::CTypeUSASCII() const {
    String s = CTypeANSI();
    s[127] = u'B';
    std::fill(s.begin() + 128, s.end(), u'N');
    return s;
}

void CharacterTypes::load() const noexcept {
    masks_.fill(0);
    const StringView s = custom_ ? StringView(ctype_) : StringView(kCTypeANSI);
    const size_t n = std::min<size_t>(s.size(), 256);
    for (size_t i = 0; i < n; ++i) masks_[i] = static_cast<uint8_t>(letterMask(s[i]));
    loaded_ = true;
}

bool CharacterTypes::IsVowel(const Variant& vCharacter) const noexcept {
    uint8_t code;
    return characterCode(vCharacter, code) && kVowels[code] == u'V';
}

bool CharacterTypes::IsConsonant(const Variant& vCharacter) const noexcept {
    uint8_t code;
    return characterCode(vCharacter, code) && kVowels[code] == u'C';
}

bool CharacterTypes::IsNotLowerCase(const Variant& vCharacter) const noexcept {
    uint8_t code;
    return characterCode(vCharacter, code) && !has(code, CharTypeLower);
}

bool CharacterTypes::IsNotUpperCase(const Variant& vCharacter) const noexcept {
    uint8_t code;
    return characterCode(vCharacter, code) && !has(code, CharTypeUpper);
}

// --- character lists -------------------------------------------------------

String CharacterTypes::EveryCharacter() const {
    String s(256, u'\0');
    for (int i = 0; i < 256; ++i) s[i] = ansiToUnicode(static_cast<uint8_t>(i));
    return s;
}

Variant CharacterTypes::EveryCharacterOfType(Variant vCharType) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vCharType), [&] {
        String s;
        for (int i = 0; i < 256; ++i)
            if (has(static_cast<uint8_t>(i), vCharType.asLong())) s.push_back(ansiToUnicode(static_cast<uint8_t>(i)));
        return Variant(std::move(s));
    });
}

Variant CharacterTypes::EveryCharacterWithinRange(Variant vLower, Variant vUpper) const {
    uint8_t lower = 0, upper = 0;
    return fixUpFrame(characterCode(vLower, lower) && characterCode(vUpper, upper), [&] {
        String s;
        for (int i = lower; i <= upper; ++i) s.push_back(ansiToUnicode(static_cast<uint8_t>(i)));
        return Variant(std::move(s));
    });
}

// --- display tables ----------------------------------------------------------

namespace {

// The cells of a display table, cells[row][column], as a Variant matrix
// (column, row) printed by FormatVariantMatrix.
Variant formatTable(const std::vector<std::vector<String>>& cells, const Variant& separator) {
    size_t columns = 0;
    for (const auto& row : cells) columns = std::max(columns, row.size());
    Variant m = Variant::array(vbVariant, {ArrayBound{1, int32_t(columns)}, ArrayBound{1, int32_t(cells.size())}});
    SafeArray& a = m.arrayForWrite();
    for (size_t r = 0; r < cells.size(); ++r)
        for (size_t c = 0; c < cells[r].size(); ++c) a.elements()[r * columns + c] = Variant(cells[r][c]);
    return arrayOthers().FormatVariantMatrix(m, separator);
}

String decimalText(int n) {
    std::string s = std::to_string(n);
    return String(s.begin(), s.end());
}

String hexText(int n, int digits) {
    static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    String s(static_cast<size_t>(digits), u'0');
    for (int i = digits - 1; i >= 0; --i, n >>= 4) s[static_cast<size_t>(i)] = kDigits[n & 15];
    return s;
}

}  // namespace

// A cell shows the character when the table classes it as printable, and
// stays blank for controls and unassigned codes.
Variant CharacterTypes::CharacterTableHexadecimal(Variant vColumnSeparator) const {
    fixUps().FixUpVariantToStringSub(vColumnSeparator, Variant(u" "));
    return fixUpFrame(vColumnSeparator.isString(), [&] {
        std::vector<std::vector<String>> rows(17);
        rows[0].push_back(u"");
        for (int c = 0; c < 16; ++c) rows[0].push_back(hexText(c, 1));
        for (int r = 0; r < 16; ++r) {
            rows[r + 1].push_back(hexText(r * 16, 2));
            for (int c = 0; c < 16; ++c) rows[r + 1].push_back(printable(r * 16 + c));
        }
        return formatTable(rows, vColumnSeparator);
    });
}

Variant CharacterTypes::CharacterTableDecimal(Variant vColumnSeparator) const {
    fixUps().FixUpVariantToStringSub(vColumnSeparator, Variant(u" "));
    return fixUpFrame(vColumnSeparator.isString(), [&] {
        std::vector<std::vector<String>> rows(27);
        rows[0].push_back(u"");
        for (int c = 0; c < 10; ++c) rows[0].push_back(decimalText(c));
        for (int r = 0; r < 26; ++r) {
            rows[r + 1].push_back(decimalText(r * 10));
            for (int c = 0; c < 10 && r * 10 + c < 256; ++c) rows[r + 1].push_back(printable(r * 10 + c));
        }
        return formatTable(rows, vColumnSeparator);
    });
}

// One row per alphanumeric character: the character, its decimal and its
// hexadecimal code.
Variant CharacterTypes::CharacterTableAlphanumeric(Variant vColumnSeparator) const {
    fixUps().FixUpVariantToStringSub(vColumnSeparator, Variant(u" "));
    return fixUpFrame(vColumnSeparator.isString(), [&] {
        std::vector<std::vector<String>> rows;
        rows.push_back({u"Char", u"Dec", u"Hex"});
        for (int i = 0; i < 256; ++i)
            if (has(static_cast<uint8_t>(i), CharTypeAlNum))
                rows.push_back({String(1, ansiToUnicode(static_cast<uint8_t>(i))), decimalText(i), hexText(i, 2)});
        return formatTable(rows, vColumnSeparator);
    });
}

String CharacterTypes::printable(int code) const {
    const auto b = static_cast<uint8_t>(code);
    return has(b, CharTypePrint) && b != 32 ? String(1, ansiToUnicode(b)) : String();
}

// --- extended characters ---------------------------------------------------

String CharacterTypes::NonExtendedCharacters() const { return text(kNonExtended); }

Variant CharacterTypes::ToNonExtended(Variant vString) const {
    if (vString.isNumberType()) {
        uint8_t code;
        return characterCode(vString, code) ? Variant(String(1, kNonExtended[code])) : Variant::null();
    }
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        for (char16_t& c : vString.stringForWrite()) c = kNonExtended[unicodeToAnsi(c)];
        return vString;
    });
}

Variant CharacterTypes::ComposeCharacter(Variant vCharacters) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vCharacters) && vCharacters.asString().size() == 2, [&] {
        // The pair in order, so that either order of typing matches.
        const StringView s = vCharacters.asString();
        const String typed = orderedPair(s.substr(0, 1), s.substr(1, 1));
        for (const Composition& k : kCompositions)
            if (orderedPair(StringView(k.pair, 1), StringView(k.pair + 1, 1)) == typed)
                return Variant(String(1, ansiToUnicode(k.code)));
        return Variant(u"");
    });
}

// --- case ------------------------------------------------------------------

char16_t CharacterTypes::mapCase(char16_t c, bool upper) const noexcept {
    if (upper) return has(c, CharTypeLower) ? toUpperChar(c) : c;
    return has(c, CharTypeUpper) ? toLowerChar(c) : c;
}

// mode: 0 lower, 1 upper, 2 swap.
Variant CharacterTypes::mapText(Variant vString, int mode) const {
    if (vString.isNumberType()) {
        uint8_t code;
        if (!characterCode(vString, code)) return Variant::null();
        const char16_t c = ansiToUnicode(code);
        return Variant(int32_t(unicodeToAnsi(mapCase(c, mode == 1 || (mode == 2 && has(c, CharTypeLower))))));
    }
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        for (char16_t& c : vString.stringForWrite()) c = mapCase(c, mode == 1 || (mode == 2 && has(c, CharTypeLower)));
        return vString;
    });
}

Variant CharacterTypes::ToLower(Variant vCharacter) const { return mapText(std::move(vCharacter), 0); }
Variant CharacterTypes::ToUpper(Variant vCharacter) const { return mapText(std::move(vCharacter), 1); }
Variant CharacterTypes::SwapUpperAndLowerCase(Variant vString) const {
    if (vString.isNumberType()) return Variant::null();
    return mapText(std::move(vString), 2);
}

// Each character takes the case of the model's character at its position;
// past the end of the model, the case of the model's last letter. Characters
// facing a model character that is not a letter keep their case.
Variant CharacterTypes::CapitalizeLike(Variant vString, Variant vModel) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vString) && f.FixUpVariantToStringFn(vModel), [&] {
        const String& model = vModel.asString();
        auto caseOf = [&](char16_t m) { return has(m, CharTypeUpper) ? 1 : has(m, CharTypeLower) ? 0 : -1; };
        int lastCase = -1;
        for (char16_t m : model)
            if (caseOf(m) >= 0) lastCase = caseOf(m);
        String& s = vString.stringForWrite();
        for (size_t i = 0; i < s.size(); ++i) {
            const int want = i < model.size() ? caseOf(model[i]) : lastCase;
            if (want >= 0) s[i] = mapCase(s[i], want == 1);
        }
        return vString;
    });
}

namespace {

// The in-place members: a text argument (a number becomes its text) is
// replaced by op of it; an argument that is not text stays as it is.
template <class Op>
void inPlace(Variant& rString, Op op) {
    if (fixUps().FixUpVariantToStringFn(rString)) rString = Variant(op(rString.asString()));
}

}  // namespace

void CharacterTypes::LCaseInPlace(Variant& rString) const { inPlace(rString, [](StringView s) { return LCase(s); }); }
void CharacterTypes::UCaseInPlace(Variant& rString) const { inPlace(rString, [](StringView s) { return UCase(s); }); }
void CharacterTypes::LTrimInPlace(Variant& rString) const { inPlace(rString, [](StringView s) { return LTrim(s); }); }
void CharacterTypes::RTrimInPlace(Variant& rString) const { inPlace(rString, [](StringView s) { return RTrim(s); }); }
void CharacterTypes::TrimInPlace(Variant& rString) const { inPlace(rString, [](StringView s) { return Trim(s); }); }

CharacterTypes& characterTypes() noexcept { return globalInstance<CharacterTypes>(); }

}  // namespace qvt

// --- type library ------------------------------------------------------------


namespace qvt {

namespace {

template <int32_t N>
Variant constant(Call&) {
    return Variant(N);
}

#define QVT_CONSTANT(name) {"Property Get " #name " -> Long", constant<name>}
#define QVT_TEST(name) \
    {#name "(vCharacter: Variant) -> Boolean", [](Call& c) { return Variant(c.self<CharacterTypes>().name(c[0])); }}
#define QVT_TEXT(name) \
    {#name "(vString: Variant) -> Variant", [](Call& c) { return c.self<CharacterTypes>().name(c[0]); }}
#define QVT_IN_PLACE(name) \
    {#name "(ref rString: Variant)", [](Call& c) { c.self<CharacterTypes>().name(c[0]); return Variant(); }}
#define QVT_TABLE(name) \
    {#name "([vColumnSeparator: Variant]) -> Variant", [](Call& c) { return c.self<CharacterTypes>().name(c[0]); }}

const ClassRegistration kCharacterTypes(u"CharacterTypes", ClassKind::Global, globalFactory<CharacterTypes>,
    u"Classifies characters by table: letters, digits, blanks, punctuation and case, with case mapping and accents.", {
    {"Property Get CType -> Variant", [](Call& c) { return c.self<CharacterTypes>().CType(); }},
    {"Property Let CType(vCType: Variant)", [](Call& c) { c.self<CharacterTypes>().CType(c[0]); return Variant(); }},
    {"CTypeANSI -> String", [](Call& c) { return Variant(c.self<CharacterTypes>().CTypeANSI()); }},
    {"CTypeUSASCII -> String", [](Call& c) { return Variant(c.self<CharacterTypes>().CTypeUSASCII()); }},
    {"EveryCharacter -> String", [](Call& c) { return Variant(c.self<CharacterTypes>().EveryCharacter()); }},
    {"EveryCharacterOfType(vCharType: Variant) -> Variant",
     [](Call& c) { return c.self<CharacterTypes>().EveryCharacterOfType(c[0]); }},
    {"EveryCharacterWithinRange(vLower: Variant, vUpper: Variant) -> Variant",
     [](Call& c) { return c.self<CharacterTypes>().EveryCharacterWithinRange(c[0], c[1]); }},
    QVT_TABLE(CharacterTableAlphanumeric),
    QVT_TABLE(CharacterTableDecimal),
    QVT_TABLE(CharacterTableHexadecimal),
    {"NonExtendedCharacters -> String", [](Call& c) { return Variant(c.self<CharacterTypes>().NonExtendedCharacters()); }},
    QVT_TEXT(ToNonExtended),
    {"ComposeCharacter(vCharacters: Variant) -> Variant",
     [](Call& c) { return c.self<CharacterTypes>().ComposeCharacter(c[0]); }},
    {"CapitalizeLike(vString: Variant, vModel: Variant) -> Variant",
     [](Call& c) { return c.self<CharacterTypes>().CapitalizeLike(c[0], c[1]); }},
    QVT_TEXT(SwapUpperAndLowerCase),
    {"ToLower(vCharacter: Variant) -> Variant", [](Call& c) { return c.self<CharacterTypes>().ToLower(c[0]); }},
    {"ToUpper(vCharacter: Variant) -> Variant", [](Call& c) { return c.self<CharacterTypes>().ToUpper(c[0]); }},
    QVT_IN_PLACE(LCaseInPlace),
    QVT_IN_PLACE(UCaseInPlace),
    QVT_IN_PLACE(LTrimInPlace),
    QVT_IN_PLACE(RTrimInPlace),
    QVT_IN_PLACE(TrimInPlace),
    QVT_TEST(IsAlNum), QVT_TEST(IsAlpha), QVT_TEST(IsCarriage), QVT_TEST(IsCntrl), QVT_TEST(IsDigit),
    QVT_TEST(IsGraph), QVT_TEST(IsLower), QVT_TEST(IsPrint), QVT_TEST(IsPunct), QVT_TEST(IsSpace),
    QVT_TEST(IsUpper), QVT_TEST(IsXDigit), QVT_TEST(IsVowel), QVT_TEST(IsConsonant), QVT_TEST(IsNotLowerCase),
    QVT_TEST(IsNotUpperCase),
    // CharacterTypeConstants
    QVT_CONSTANT(CharTypeNone), QVT_CONSTANT(CharTypeCarriage), QVT_CONSTANT(CharTypeControl),
    QVT_CONSTANT(CharTypeCntrl), QVT_CONSTANT(CharTypeDigit), QVT_CONSTANT(CharTypeHexadecimal),
    QVT_CONSTANT(CharTypeHexDigit), QVT_CONSTANT(CharTypeLower), QVT_CONSTANT(CharTypeHexLower),
    QVT_CONSTANT(CharTypePunctuation), QVT_CONSTANT(CharTypeWhitespace), QVT_CONSTANT(CharTypeSpace),
    QVT_CONSTANT(CharTypeUpper), QVT_CONSTANT(CharTypeHexUpper), QVT_CONSTANT(CharTypeAlpha),
    QVT_CONSTANT(CharTypeAlNum), QVT_CONSTANT(CharTypeGraph), QVT_CONSTANT(CharTypePrint),
    // ASCIIValueConstants
    QVT_CONSTANT(AscEOF), QVT_CONSTANT(AscNil), QVT_CONSTANT(AscTab), QVT_CONSTANT(AscLF),
    QVT_CONSTANT(AscVerticalTab), QVT_CONSTANT(AscFormFeed), QVT_CONSTANT(AscCR), QVT_CONSTANT(AscEscape),
    QVT_CONSTANT(AscSpace), QVT_CONSTANT(AscExclamation), QVT_CONSTANT(AscDoubleQuote), QVT_CONSTANT(AscHash),
    QVT_CONSTANT(AscDollar), QVT_CONSTANT(AscPercent), QVT_CONSTANT(AscAmpersand), QVT_CONSTANT(AscApostrophe),
    QVT_CONSTANT(AscLeftParenthesis), QVT_CONSTANT(AscRightParenthesis), QVT_CONSTANT(AscAsterisk),
    QVT_CONSTANT(AscPlus), QVT_CONSTANT(AscComma), QVT_CONSTANT(AscMinus), QVT_CONSTANT(AscPeriod),
    QVT_CONSTANT(AscSlash), QVT_CONSTANT(AscZero), QVT_CONSTANT(AscNine), QVT_CONSTANT(AscColon),
    QVT_CONSTANT(AscSemicolon), QVT_CONSTANT(AscLessThan), QVT_CONSTANT(AscEquals), QVT_CONSTANT(AscGreaterThan),
    QVT_CONSTANT(AscQuestion), QVT_CONSTANT(AscAt), QVT_CONSTANT(AscUpperA), QVT_CONSTANT(AscUpperZ),
    QVT_CONSTANT(AscLeftBracket), QVT_CONSTANT(AscBackslash), QVT_CONSTANT(AscRightBracket), QVT_CONSTANT(AscCaret),
    QVT_CONSTANT(AscUnderscore), QVT_CONSTANT(AscGrave), QVT_CONSTANT(AscLowerA), QVT_CONSTANT(AscLowerZ),
    QVT_CONSTANT(AscLeftBrace), QVT_CONSTANT(AscVerticalBar), QVT_CONSTANT(AscRightBrace), QVT_CONSTANT(AscTilde),
    QVT_CONSTANT(AscDelete), QVT_CONSTANT(AscNonBreakingSpace), QVT_CONSTANT(AscDegrees),
});

#undef QVT_CONSTANT
#undef QVT_TEST
#undef QVT_TEXT
#undef QVT_IN_PLACE
#undef QVT_TABLE

}  // namespace

}  // namespace qvt
