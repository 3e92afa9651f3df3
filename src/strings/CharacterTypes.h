// CharacterTypes: a table-driven classifier of the ANSI page in the manner of
// the C library's <ctype.h>, with a classification string that a client can
// replace, plus case mapping, the extended-character look-alikes and accent
// composition.
//
// A classification string has one letter per code from 0 up; each letter
// stands for a combination of flags (see CharacterTypeConstants):
//   N none, B control, C carriage control, D digit, X hex digit,
//   L lower, M lower hex, P punctuation, S space, U upper, W upper hex.
// The instance turns its string into a 256-entry table of masks at the first
// test; a test is then one lookup, with no allocation.
#pragma once
#include <array>
#include <cstdint>

#include "frame/Locale.h"
#include "frame/Variant.h"

namespace qvt {

enum CharacterTypeConstants : int32_t {
    CharTypeNone = 0,
    CharTypeCarriage = 1,
    CharTypeControl = 2,
    CharTypeCntrl = 3,
    CharTypeDigit = 4,
    CharTypeHexadecimal = 8,
    CharTypeHexDigit = 12,
    CharTypeLower = 16,
    CharTypeHexLower = 24,
    CharTypePunctuation = 32,
    CharTypeWhitespace = 64,
    CharTypeSpace = 65,
    CharTypeUpper = 128,
    CharTypeHexUpper = 136,
    CharTypeAlpha = 144,
    CharTypeAlNum = 148,
    CharTypeGraph = 180,
    CharTypePrint = 244,
};

// Names of the punctuation and boundary codes the library's texts use.
enum ASCIIValueConstants : int32_t {
    AscEOF = -1,
    AscNil = 0,
    AscTab = 9,
    AscLF = 10,
    AscVerticalTab = 11,
    AscFormFeed = 12,
    AscCR = 13,
    AscEscape = 27,
    AscSpace = 32,
    AscExclamation = 33,
    AscDoubleQuote = 34,
    AscHash = 35,
    AscDollar = 36,
    AscPercent = 37,
    AscAmpersand = 38,
    AscApostrophe = 39,
    AscLeftParenthesis = 40,
    AscRightParenthesis = 41,
    AscAsterisk = 42,
    AscPlus = 43,
    AscComma = 44,
    AscMinus = 45,
    AscPeriod = 46,
    AscSlash = 47,
    AscZero = 48,
    AscNine = 57,
    AscColon = 58,
    AscSemicolon = 59,
    AscLessThan = 60,
    AscEquals = 61,
    AscGreaterThan = 62,
    AscQuestion = 63,
    AscAt = 64,
    AscUpperA = 65,
    AscUpperZ = 90,
    AscLeftBracket = 91,
    AscBackslash = 92,
    AscRightBracket = 93,
    AscCaret = 94,
    AscUnderscore = 95,
    AscGrave = 96,
    AscLowerA = 97,
    AscLowerZ = 122,
    AscLeftBrace = 123,
    AscVerticalBar = 124,
    AscRightBrace = 125,
    AscTilde = 126,
    AscDelete = 127,
    AscNonBreakingSpace = 160,
    AscDegrees = 176,
};

// The ANSI code a character argument stands for: the first character of a
// String, or a number taken as a code (0 to 255). False for "", a number out
// of range, and anything else (Null, Empty, Missing, arrays).
bool characterCode(const Variant& v, uint8_t& code) noexcept;

class CharacterTypes final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"CharacterTypes"; }

    // The classification string in use (CTypeANSI until a client sets one).
    Variant CType() const;
    // A String replaces the table (letters past 256 are ignored, unknown
    // letters and missing codes classify as nothing); anything else loads
    // CTypeANSI.
    void CType(const Variant& vCType);
    String CTypeANSI() const;
    String CTypeUSASCII() const;

    // All 256 characters in code order; those whose mask meets the flags;
    // those from one bound to another (each a character or a code).
    String EveryCharacter() const;
    Variant EveryCharacterOfType(Variant vCharType) const;
    Variant EveryCharacterWithinRange(Variant vLower, Variant vUpper) const;

    // Display tables of the page (see docs/characters.md).
    Variant CharacterTableAlphanumeric(Variant vColumnSeparator) const;
    Variant CharacterTableDecimal(Variant vColumnSeparator) const;
    Variant CharacterTableHexadecimal(Variant vColumnSeparator) const;

    // The plain look-alike of every code, and a text mapped through it.
    String NonExtendedCharacters() const;
    Variant ToNonExtended(Variant vString) const;
    // Two characters, letter and mark in either order, to the accented
    // letter of the upper half; "" when the pair makes none.
    Variant ComposeCharacter(Variant vCharacters) const;

    Variant CapitalizeLike(Variant vString, Variant vModel) const;
    Variant SwapUpperAndLowerCase(Variant vString) const;
    // Case mapping by the table: only characters it classes as lower (upper)
    // change. A code gives a code, a String gives the mapped String.
    Variant ToLower(Variant vCharacter) const;
    Variant ToUpper(Variant vCharacter) const;
    void LCaseInPlace(Variant& rString) const;
    void UCaseInPlace(Variant& rString) const;
    void LTrimInPlace(Variant& rString) const;
    void RTrimInPlace(Variant& rString) const;
    void TrimInPlace(Variant& rString) const;

    bool IsAlNum(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeAlNum); }
    bool IsAlpha(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeAlpha); }
    bool IsCarriage(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeCarriage); }
    bool IsCntrl(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeCntrl); }
    bool IsDigit(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeDigit); }
    bool IsGraph(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeGraph); }
    bool IsLower(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeLower); }
    bool IsPrint(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypePrint); }
    bool IsPunct(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypePunctuation); }
    bool IsSpace(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeSpace); }
    bool IsUpper(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeUpper); }
    bool IsXDigit(const Variant& vCharacter) const noexcept { return test(vCharacter, CharTypeHexadecimal); }
    // Vowel and consonant by a fixed table (Y is a consonant).
    bool IsVowel(const Variant& vCharacter) const noexcept;
    bool IsConsonant(const Variant& vCharacter) const noexcept;
    // A character that is not lower (upper) case; False for "".
    bool IsNotLowerCase(const Variant& vCharacter) const noexcept;
    bool IsNotUpperCase(const Variant& vCharacter) const noexcept;

    // Typed tests for the library's own loops: one unit, or one ANSI code.
    bool has(char16_t c, int32_t flags) const noexcept { return has(unicodeToAnsi(c), flags); }
    bool has(uint8_t code, int32_t flags) const noexcept {
        if (!loaded_) load();
        return (masks_[code] & flags) != 0;
    }

private:
    bool test(const Variant& vCharacter, int32_t flags) const noexcept {
        uint8_t code;
        return characterCode(vCharacter, code) && has(code, flags);
    }
    void load() const noexcept;
    // Case mapping of one unit by the table: to upper when `upper`.
    char16_t mapCase(char16_t c, bool upper) const noexcept;
    Variant mapText(Variant vString, int mode) const;
    // A display-table cell: the character when printable, else blank.
    String printable(int code) const;

    String ctype_;
    bool custom_ = false;
    mutable bool loaded_ = false;
    mutable std::array<uint8_t, 256> masks_{};
};

// The shared instance.
CharacterTypes& characterTypes() noexcept;

}  // namespace qvt
