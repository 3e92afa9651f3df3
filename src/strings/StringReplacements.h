// StringReplacements: find and replace, strip and translate.
//
// A global class. Text arguments are fixed up as Strings (a failure gives
// Null), vCompare as a compare mode, an omitted vReplace is "". Run-time
// errors of the runtime operations (a bad count, an invalid Like pattern)
// are not trapped. The ...Fast forms take typed arguments and do no fix-ups.
#pragma once
#include "frame/Variant.h"

namespace qvt {

// How a character argument of ReplaceCharacter (and of the markers of
// DifferenceString) resolves: the first unit of a String, Chr of a number.
enum class CharacterArgument { Character, EmptyText, Unusable };
// `out` receives the character when the result is Character. Chr of a code
// outside 0 to 255 raises 5.
CharacterArgument characterArgument(const Variant& v, char16_t& out);

class StringReplacements final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"StringReplacements"; }

    // The runtime's Replace from position 1: all occurrences, the first
    // one, or vNTimes of them (default 1; -1 for all).
    Variant ReplaceString(Variant vLine, Variant vFind, Variant vReplace = Variant::missing(),
                          Variant vCompare = Variant::missing()) const;
    String ReplaceStringFast(StringView vLine, StringView vFind, StringView vReplace, int32_t vCompare) const;
    // In place; rLine becomes Null when it or vFind cannot be used.
    void StrRep(Variant& rLine, Variant vFind, Variant vReplace = Variant::missing(),
                Variant vCompare = Variant::missing()) const;
    Variant ReplaceStringOnce(Variant vLine, Variant vFind, Variant vReplace = Variant::missing(),
                              Variant vCompare = Variant::missing()) const;
    Variant ReplaceStringNTimes(Variant vLine, Variant vFind, Variant vReplace = Variant::missing(),
                                Variant vCompare = Variant::missing(), Variant vNTimes = Variant::missing()) const;
    // Replaces the first occurrence until none is left, so replaced text can
    // form new matches. Gives "" when vReplace itself holds vFind, since the
    // loop would never end.
    Variant ReplaceStringRecursively(Variant vLine, Variant vFind, Variant vReplace = Variant::missing(),
                                     Variant vCompare = Variant::missing()) const;
    // One left-to-right pass over vValue with the pairs of
    // "find sep replacement sep ...": at each position the last pair that
    // matches wins, and replaced text is never scanned again.
    Variant ReplaceStringMultiple(Variant vValue, Variant vFindReplacePairs, Variant vSeparator,
                                  Variant vCompare = Variant::missing()) const;
    // Shortest matches of a Like pattern, left to right; the character after
    // each replacement is skipped and cannot begin a match.
    Variant ReplaceLikeString(Variant vLine, Variant vLike, Variant vReplace = Variant::missing(),
                              Variant vCompare = Variant::missing()) const;
    // Every occurrence of one character overwritten by another (each a
    // String's first character or a character code).
    Variant ReplaceCharacter(Variant vSearch, Variant vFromChar, Variant vToChar,
                             Variant vCompare = Variant::missing()) const;

    Variant StripString(Variant vLine, Variant vFind, Variant vCompare = Variant::missing()) const;
    Variant StripFirstMatch(Variant vLine, Variant vFind, Variant vCompare = Variant::missing()) const;
    Variant StripLastMatch(Variant vLine, Variant vFind, Variant vCompare = Variant::missing()) const;
    // A prefix or suffix cut off only when it is there.
    Variant StripMatchingBeginLine(Variant vLine, Variant vFind, Variant vCompare = Variant::missing()) const;
    Variant StripMatchingEndLine(Variant vLine, Variant vFind, Variant vCompare = Variant::missing()) const;
    String StripMatchingBeginLineFast(StringView vLine, StringView vFind, int32_t vCompare) const;
    String StripMatchingEndLineFast(StringView vLine, StringView vFind, int32_t vCompare) const;
    // Everything before the first Chr$(0).
    Variant StripNilCharacterForward(Variant vLine) const;

    // Each character of vLine found in vFrom becomes the character at the
    // same place of vTo (the longer of the two is cut to the shorter); the
    // first entry for a character wins.
    Variant TranslateString(Variant vLine, Variant vFrom, Variant vTo, Variant vCompare = Variant::missing()) const;
    // The same map written as from, to, from, to...; an unpaired last
    // character is ignored.
    Variant TranslateStringUsingCharacterPairs(Variant vLine, Variant vFromToChars,
                                               Variant vCompare = Variant::missing()) const;
    // Code c becomes character c + 1 of vTable; codes past its end stay.
    Variant TranslateStringUsingTable(Variant vLine, Variant vTable) const;
};

StringReplacements& stringReplacements() noexcept;

}  // namespace qvt
