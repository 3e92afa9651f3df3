// StringManipulations: cutting, pasting, rotating, shifting, repeating,
// hashing and comparing strings, quoting, and grep patterns to Like.
//
// A global class. Text arguments are fixed up as Strings (a failure gives
// Null); positions are 1-based. Run-time errors of the runtime operations
// are not trapped: a start position below 1 reaching Mid raises 5.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class StringManipulations final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"StringManipulations"; }

    // h = (h * 91 + Asc(c)) mod prime over the characters. HashString works
    // in Doubles (prime default 16777213); HashStringFast in Longs, raising 6
    // when h * 91 + Asc(c) leaves the Long range. A prime of 0 raises 11.
    Variant HashString(Variant vValue, Variant vRangePrimeNumber = Variant::missing()) const;
    int32_t HashStringFast(StringView vSymbol, int32_t vPrimeNumber) const;

    // "^ab$" to "ab", "ab" to "*ab*"; a leading \ or a trailing \$ keeps
    // the caret or dollar as a literal.
    Variant GrepToLike(Variant vPattern) const;
    // One marker per position: vIfSame (default blank) where the strings
    // agree under vCompare, vIfDiff (default blank) where they differ or
    // only one of them reaches.
    Variant DifferenceString(Variant vStringOne, Variant vStringTwo, Variant vCompare = Variant::missing(),
                             Variant vIfSame = Variant::missing(), Variant vIfDiff = Variant::missing()) const;
    // The two strings with a marker line between them: ^ under equal
    // positions (CompareStrings) or under different ones (ContrastStrings).
    Variant CompareStrings(Variant vStringOne, Variant vStringTwo, Variant vCompare = Variant::missing()) const;
    Variant ContrastStrings(Variant vStringOne, Variant vStringTwo, Variant vCompare = Variant::missing()) const;
    // Each run of space-type characters to one blank (ends included).
    Variant CompressSpaces(Variant vValue) const;
    // At most vMaxLen characters, cut at a blank, marked "..." on the left
    // or "...." on the right.
    Variant TruncateLeftWithEllipse(Variant vLine, Variant vMaxLen) const;
    Variant TruncateRightWithEllipse(Variant vLine, Variant vMaxLen) const;

    // Wrapped in vQuoteChar (default "") with a one-character quote doubled
    // inside; DoubleQuoteString gives "" for a value that is not text.
    Variant QuoteString(Variant vValue, Variant vQuoteChar = Variant::missing()) const;
    String DoubleQuoteString(Variant vValue) const;
    Variant StripDoubleQuotes(Variant vValue) const;

    // Mid that accepts a start before the string (the length shrinks by the
    // part before position 1).
    Variant MidString(Variant vString, Variant vStart = Variant::missing(), Variant vLength = Variant::missing()) const;
    // vLength characters (default vPos) read backwards from vPos (default the end).
    Variant MidReverse(Variant vString, Variant vPos, Variant vLength = Variant::missing()) const;
    // vFm laid over vTo from the zero-based vOffset, clipped to vTo.
    Variant OverlayString(Variant vTo, Variant vFm, Variant vOffset = Variant::missing()) const;
    // The first two blocks of vAfterColumn characters exchanged (see the
    // padding rules in the source).
    Variant RotateString(Variant vValue, Variant vAfterColumn) const;
    Variant RotateStringLeft(Variant vValue, Variant vPositions = Variant::missing()) const;
    Variant RotateStringRight(Variant vValue, Variant vPositions = Variant::missing()) const;
    // Drop vPositions (default 1) characters from the front or the end.
    Variant ShiftStringLeft(Variant vValue, Variant vPositions = Variant::missing()) const;
    Variant ShiftStringRight(Variant vValue, Variant vPositions = Variant::missing()) const;
    // One position, in place; the Asc of the character that moved or went.
    int16_t StringRotateLeft(Variant& rValue) const;
    int16_t StringRotateRight(Variant& rValue) const;
    int16_t StringShiftLeft(Variant& rValue) const;
    int16_t StringShiftRight(Variant& rValue) const;
    Variant StripLeftNCharacters(Variant vString, Variant vNumChars) const;
    Variant StripRightNCharacters(Variant vString, Variant vNumChars) const;

    // vLength characters (default 1) from vStartPos (default 1) taken out.
    Variant DeleteString(Variant vString, Variant vStartPos = Variant::missing(),
                         Variant vLength = Variant::missing()) const;
    void StrDel(Variant& rString, Variant vStartPos = Variant::missing(), Variant vLength = Variant::missing()) const;
    // vSource put in before vInsertPosition (default 1, clamped to the text).
    Variant InsertString(Variant vDest, Variant vSource, Variant vInsertPosition = Variant::missing()) const;
    void StrIns(Variant& rDest, Variant vSource, Variant vInsertPosition = Variant::missing()) const;

    Variant CharacterEveryNthCharacter(Variant vString, Variant vStart = Variant::missing(),
                                       Variant vStep = Variant::missing()) const;
    Variant StringEveryNthCharacter(Variant vString, Variant vStart = Variant::missing(),
                                    Variant vLength = Variant::missing(), Variant vStep = Variant::missing(),
                                    Variant vTruncate = Variant::missing()) const;
    // Positions 1, 1 + step, ... then 2, 2 + step, ... up to start vStep.
    Variant StringEveryNthCharRepeated(Variant vString, Variant vStep = Variant::missing(),
                                       Variant vTruncate = Variant::missing()) const;
    // The vStep groups of StringEveryNthCharRepeated, joined by vSeparator
    // (default a line break).
    Variant SeparateCharactersIntoNGroups(Variant vString, Variant vStep,
                                          Variant vSeparator = Variant::missing()) const;

    // vRepeat (a String, or a character code) vRepetitions times, or to vLength.
    Variant RepeatString(Variant vRepetitions, Variant vRepeat) const;
    Variant RepeatStringToLength(Variant vLength, Variant vRepeat) const;
    // Each character vNTimes (default 1) times.
    Variant RepeatStringCharacters(Variant vStringChars, Variant vNTimes = Variant::missing()) const;
    Variant ReverseString(Variant vValue) const;
    Variant ReverseEveryNCharacters(Variant vValue, Variant vSize) const;
    Variant SwapCharacters(Variant vValue) const;
    bool SplitStrings(Variant& rOddPosChars, Variant& rEvenPosChars, Variant vValue) const;
    Variant MergeStrings(Variant vOddPosChars, Variant vEvenPosChars) const;
    // The longer string past the length of the shorter.
    Variant StringPastMinLength(Variant vStringOne, Variant vStringTwo) const;

    // rTo & vFrom; CatLine puts a line break between when rTo is not empty.
    void Cat(Variant& rTo, const Variant& vFrom) const;
    void CatLine(Variant& rTo, const Variant& vFrom) const;
};

StringManipulations& stringManipulations() noexcept;

// `unit` repeated and cut to `length` characters ("" for an empty unit or a
// length of 0 or less); the typed core of RepeatStringToLength.
String repeatToLength(StringView unit, int64_t length);

// Odd positions from `odd`, even ones from `even`; the rest of the longer
// text follows. The typed core of MergeStrings.
String mergeAlternately(StringView odd, StringView even);

}  // namespace qvt
