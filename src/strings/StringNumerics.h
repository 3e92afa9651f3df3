// StringNumerics: arithmetic on the character codes of strings.
#pragma once
#include "frame/Variant.h"

namespace qvt {

// The characters of DOS (8.3) file names, in code order: the default
// character set of IncrementStringWithinCharacterSet.
inline constexpr char16_t DOSFileNameCharacters[] =
    u"!#$%&'()-0123456789@ABCDEFGHIJKLMNOPQRSTUVWXYZ^_`{}~";

class StringNumerics final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"StringNumerics"; }

    // Position by position on the codes (a position only one text has keeps
    // its character). vWrap (default False): the sum wraps modulo 256
    // instead of stopping at 255; the average is taken the short way round
    // the circle of 256 codes.
    Variant AddStringCharacters(Variant vString1, Variant vString2, Variant vWrap) const;
    Variant AverageStrings(Variant vString1, Variant vString2, Variant vWrap) const;
    // Two upper-case hexadecimal digits per character, and back (characters
    // that are not digits are passed over; an odd last digit stands alone).
    Variant StringToHexadecimalPairs(Variant vString) const;
    Variant HexadecimalPairsToString(Variant vString) const;
    // The high digits and the low digits in two texts, merged alternately.
    Variant HexadecimalHiLoStringsToString(Variant vHiString, Variant vLoString) const;
    // Adds one to the text read as a number whose digits are the codes
    // vLowest to vHighest (characters or codes; default 0 and 255): the
    // last character steps up, and one at vHighest wraps to vLowest and
    // carries. A carry out of the first character prepends the digit one.
    Variant IncrementString(Variant vString, Variant vLowest, Variant vHighest) const;
    // The same with the digits of vCharacterSet in order (default
    // DOSFileNameCharacters); a character outside the set becomes the first.
    Variant IncrementStringWithinCharacterSet(Variant vString, Variant vCharacterSet) const;
    // "st", "nd", "rd" or "th"; with the number in front.
    Variant NumberSuffix(Variant vNumber) const;
    Variant NumberAndSuffix(Variant vNumber) const;
    // Every code combined with a number, the result kept to 0..255.
    Variant StringCharactersBitwiseAndNumber(Variant vString, Variant vNumber) const;
    Variant StringCharactersBitwiseOrNumber(Variant vString, Variant vNumber) const;
    Variant StringCharactersBitwiseXorNumber(Variant vString, Variant vNumber) const;
    // -1, 0 or 1 comparing dotted versions part by part: as numbers where
    // both parts are Integer numbers, else as text.
    Variant VersionNumberCompare(Variant vVersion1, Variant vVersion2) const;

private:
    template <class Combine>
    Variant pairwise(Variant& vString1, Variant& vString2, Variant& vWrap, Combine combine) const;
    template <class Op>
    Variant bitwise(Variant& vString, Variant& vNumber, Op op) const;
};

StringNumerics& stringNumerics() noexcept;

}  // namespace qvt
