// StringSearches: positional searches on strings and the library's token
// scanner. Positions are 1-based; 0 means "not found".
//
// Two conventions. The plain members take Variants, fix up their text
// arguments left to right (Null at once when one fails), fix up vCompare only
// once the texts are usable (and, in most, only when the pattern is not
// empty), and default a forward start to 1 and a reverse one to the end. A
// found position comes back as a Long, "not found" as an Integer 0.
//
// The ...Fast members are the typed cores: views and Strings in, no fix-ups,
// no Variant temporaries, nothing allocated beyond the result; run-time
// errors (a start below 1, a bad compare mode) rise to the caller. A `ref`
// String token source is a String& cut in place. Library code in inner loops
// calls these directly.
#pragma once
#include <span>

#include "frame/Variant.h"

namespace qvt {

// The work buffer of the buffered token scanner for C++ callers. The text
// still to scan is the buffered part, view(), followed by the caller's
// unread rest. Cutting a token moves a start mark instead of copying the
// buffer, and a refill drops the consumed part once per block, so scanning a
// text of any size costs time in proportion to its length.
class TokenBuffer {
public:
    TokenBuffer() = default;
    explicit TokenBuffer(String text) noexcept : text_(std::move(text)) {}

    // The buffered text (rBuffer of the by-reference form).
    StringView view() const noexcept { return StringView(text_).substr(start_); }
    // True while a scan loop should take another token: something is left
    // and the last token (the one that had no separator after it) has not
    // been taken. An empty text gives no token.
    bool more(StringView rValue) const noexcept { return !lastTaken_ && (!rValue.empty() || start_ < text_.size()); }
    // The buffered text as a String; the buffer is empty afterwards.
    String release();

private:
    friend class StringSearches;
    String text_;
    size_t start_ = 0;
    bool lastTaken_ = false;
};

class StringSearches final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"StringSearches"; }

    // --- tokens -------------------------------------------------------------
    // The text before the first vTokenSep; rValue keeps what follows it. No
    // separator (or an empty one): the whole text, and rValue becomes "".
    Variant GetToken(Variant& rValue, Variant vTokenSep, Variant vCompare) const;
    String GetTokenFast(String& rValue, StringView vTokenSep, int32_t vCompare) const;
    // The same through a work buffer refilled in blocks from rValue. With no
    // separator left in the buffer, the token is the buffer and all of rValue,
    // and the buffer keeps its text: a further call gives that token again.
    String GetTokenBufferedFast(String& rValue, String& rBuffer, StringView vTokenSep, int32_t vCompare) const;
    // The linear form: rValue is a view of the unread text that the call
    // advances; loop while rBuffer.more(rValue).
    String GetTokenBufferedFast(StringView& rValue, TokenBuffer& rBuffer, StringView vTokenSep,
                                int32_t vCompare) const;
    // The token ends at any one character of vCharSeps.
    Variant GetTokenCharSeps(Variant& rValue, Variant vCharSeps, Variant vCompare) const;
    // Drops the text before the first alphanumeric (non-space) character and
    // cuts the run; the character that ends it stays in rValue.
    Variant GetTokenAlphanumeric(Variant& rValue) const;
    Variant GetTokenNonSpace(Variant& rValue) const;
    // One field of a delimited line (quote `"` and separator "," by default).
    // An unquoted field is typed: Double if numeric, else Date if a date, else
    // String. A quoted one stays a String; the first further quote closes it.
    Variant GetPossiblyQuotedField(Variant& rLine, Variant vQuoteString, Variant vFieldSeparator,
                                   Variant vCompare) const;

    // --- positions ----------------------------------------------------------
    // The last vFind lying wholly at or before vStartPos (default: the end).
    // An empty vFind gives the start itself; the Fast form, having no such
    // test, gives the start + 1.
    Variant InStrReverse(Variant vStartPos, Variant vLine, Variant vFind, Variant vCompare) const;
    int32_t InStrReverseFast(int32_t vStartPos, StringView vLine, StringView vFind, int32_t vCompare) const;
    // The first (last) position from vStartPos holding a character of the
    // set; an empty set gives 0.
    Variant InStrCharacters(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    int32_t InStrCharactersFast(int32_t vStartPos, StringView vLine, StringView vFindChars, int32_t vCompare) const;
    // The same through a table of ANSI codes: binary, one pass.
    Variant InStrCharactersBinary(Variant vStartPos, Variant vLine, Variant vFindChars) const;
    Variant InStrCharactersReverse(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    int32_t InStrCharactersReverseFast(int32_t vStartPos, StringView vLine, StringView vFindChars,
                                       int32_t vCompare) const;
    // A character outside the set; with an empty set the start itself.
    Variant InStrNotCharacters(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    Variant InStrNotCharactersReverse(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    // As the four above, giving the character itself, or "".
    Variant FirstMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    Variant FirstNonMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    Variant LastMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    Variant LastNonMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars, Variant vCompare) const;
    // rPositions becomes 0 to count with the non-overlapping positions at 1
    // upward (element 0 Empty). False for an unusable text or an empty vFind.
    bool InStrToVariantVector(Variant& rPositions, Variant vLine, Variant vFind, Variant vCompare) const;

    // --- counting -------------------------------------------------------------
    Variant CountStrings(Variant vLine, Variant vFind, Variant vCompare) const;
    Variant CountOverlappingMatches(Variant vLine, Variant vFind, Variant vCompare) const;
    Variant CountCharacters(Variant vLine, Variant vFindChars, Variant vCompare) const;
    Variant CountLeadingStrings(Variant vLine, Variant vFind, Variant vCompare) const;
    Variant CountTrailingStrings(Variant vLine, Variant vFind, Variant vCompare) const;
    // Line feeds, plus one unless the text ends with one ("" has one line).
    Variant CountLines(Variant vValue) const;

    // --- lengths of parts -----------------------------------------------------
    Variant AverageLengthAnyPart(Variant vValue, Variant vPartSeparator, Variant vCompare) const;
    Variant MaxLengthAnyPart(Variant vValue, Variant vPartSep, Variant vCompare) const;
    Variant MinLengthAnyPart(Variant vValue, Variant vPartSep) const;

    // --- comparing two strings position by position ---------------------------
    Variant FirstMatchingPosition(Variant vOne, Variant vTwo, Variant vCompare) const;
    // All equal: the shorter length + 1 when the lengths differ, else 0.
    Variant FirstNonMatchingPosition(Variant vOne, Variant vTwo, Variant vCompare) const;

    // --- case scans: vLine from the first character of that case on, or "" ----
    Variant FirstLowerCaseForward(Variant vLine) const;
    Variant FirstNonLowerCaseForward(Variant vLine) const;
    Variant FirstUpperCaseForward(Variant vLine) const;
    Variant FirstNonUpperCaseForward(Variant vLine) const;

    // --- text left and right of a match -----------------------------------------
    // The last forms take the last match, overlapping ones included. No match:
    // vIfNotFound when it is usable, else the whole line (the Fast forms
    // return vIfNotFound as given).
    Variant LeftOfFirstMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const;
    Variant LeftOfLastMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const;
    Variant RightOfFirstMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const;
    Variant RightOfLastMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const;
    String LeftOfFirstMatchFast(StringView vLine, StringView vFind, int32_t vCompare, StringView vIfNotFound) const;
    String RightOfFirstMatchFast(StringView vLine, StringView vFind, int32_t vCompare, StringView vIfNotFound) const;
    String LeftOfLastMatchFast(StringView vIn, StringView vPat, int32_t vCompare, StringView vIfNotFound) const;
    String RightOfLastMatchFast(StringView vIn, StringView vPat, int32_t vCompare, StringView vIfNotFound) const;

    Variant LineBeginsWith(Variant vLine, Variant vFind, Variant vCompare) const;
    Variant LineEndsWith(Variant vLine, Variant vFind, Variant vCompare) const;
    bool LineBeginsWithFast(StringView vLine, StringView vFind, int32_t vCompare) const;
    bool LineEndsWithFast(StringView vLine, StringView vFind, int32_t vCompare) const;

    // --- text between delimiters ------------------------------------------------
    // Between the first vLeft and the next vRight; "" when either is missing.
    Variant StringBetweenStrings(Variant vSearch, Variant vLeft, Variant vRight, Variant vCompare) const;
    String StringBetweenStringsFast(StringView vSearch, StringView vLeft, StringView vRight, int32_t vCompare) const;
    // Every such piece joined by vSeparator. With only vLeft: all after its
    // first occurrence; only vRight: all before its first; neither: "". In
    // those three cases vCompare is taken as it is, without a fix-up.
    Variant StringsBetweenStrings(Variant vSearch, Variant vLeft, Variant vRight, Variant vSeparator,
                                  Variant vCompare) const;
    String StringsBetweenStringsFast(StringView vSearch, StringView vLeft, StringView vRight, StringView vSeparator,
                                     int32_t vCompare) const;

    // --- showing matches ----------------------------------------------------------
    // Each match with vContextChars (default 16) characters either side, the
    // text padded with blanks, joined by vSeparator (default CR LF).
    Variant MatchesInContext(Variant vSearch, Variant vFind, Variant vCompare, Variant vContextChars,
                             Variant vSeparator) const;
    // vValue, CR LF, and a line of carets under the matches.
    Variant IndicateMatches(Variant vValue, Variant vFind, Variant vCompare) const;

    // --- per-position extremes --------------------------------------------------------
    // vStrings is the parameter array; its elements are fixed up to Strings
    // in place. Null for an empty list or an unusable element.
    Variant MaxCorrespondingCharacters(Variant vCompare, Variant& vStrings) const;
    Variant MinCorrespondingCharacters(Variant vCompare, Variant& vStrings) const;
};

// The typed core of Max/MinCorrespondingCharacters: at each position the
// largest (smallest) character under vCompare, earlier strings winning ties;
// a string too short offers "", which reads as a blank when it wins.
String maxCorrespondingCharacters(std::span<const StringView> vStrings, int32_t vCompare);
String minCorrespondingCharacters(std::span<const StringView> vStrings, int32_t vCompare);

// The shared instance.
StringSearches& stringSearches() noexcept;

}  // namespace qvt
