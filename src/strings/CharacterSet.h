// A set of characters tested under a compare mode.
#pragma once
#include <algorithm>
#include <cstdint>

#include "frame/Locale.h"
#include "frame/Strings.h"
#include "frame/Variant.h"

namespace qvt {

// Membership of a character in a set under a compare mode, the test
// InStr(1, set, c, compare) <> 0 asked once per character by the set walks
// and filters: the two common modes look the unit up directly, InStr has the
// last word on any other mode (and raises for an invalid one). The set is
// viewed, not copied: it must outlive the test.
class CharacterSet {
public:
    // Keys below 256 go into a bitmap, so the usual test is one lookup; a set
    // with wider keys falls back to scanning it for those.
    CharacterSet(StringView set, int32_t compare) noexcept : set_(set), compare_(compare) {
        if (compare_ != vbBinaryCompare && compare_ != vbTextCompare) return;
        for (char16_t c : set_) {
            const char16_t k = key(c);
            if (k < 256) bits_[k >> 6] |= uint64_t(1) << (k & 63);
            else wide_ = true;
        }
    }
    bool contains(char16_t c) const {
        if (compare_ != vbBinaryCompare && compare_ != vbTextCompare)
            return InStr(1, set_, StringView(&c, 1), compare_) != 0;
        const char16_t k = key(c);
        if (k < 256) return (bits_[k >> 6] >> (k & 63)) & 1;
        return wide_ && std::any_of(set_.begin(), set_.end(), [&](char16_t s) { return key(s) == k; });
    }
    // What a position past the end holds is "", which InStr finds in any
    // non-empty set.
    bool containsNothing() const { return InStr(1, set_, StringView(), compare_) != 0; }

    // Narrow: binary compare and every key in the bitmap; NarrowText the same
    // under text compare; General anything else.
    enum Mode { Narrow, NarrowText, General };
    Mode mode() const noexcept {
        if (wide_) return General;
        return compare_ == vbBinaryCompare ? Narrow : compare_ == vbTextCompare ? NarrowText : General;
    }
    // A key of a narrow set: one lookup, true only for keys below 256.
    bool inBitmap(char16_t k) const noexcept { return k < 256 && ((bits_[k >> 6] >> (k & 63)) & 1); }

private:
    char16_t key(char16_t c) const noexcept { return compare_ == vbTextCompare ? textCompareKey(c) : c; }

    StringView set_;
    int32_t compare_;
    uint64_t bits_[4] = {};
    bool wide_ = false;
};

}  // namespace qvt
