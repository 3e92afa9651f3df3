// The tagged value every member receives and returns.
//
// A Variant is 16 bytes: the VarType tag, then the payload. Numbers live
// inline, so copying a number is a plain 16-byte copy. Strings and arrays
// are shared behind a reference count and copied on first write: that keeps
// value semantics (a copy never sees the original change) while making the
// copies the fix-ups and sorts do in their inner loops cheap. Objects are
// shared as Automation objects are.
#pragma once
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/Decimal.h"

namespace qvt {

using String = std::u16string;
using StringView = std::u16string_view;

enum VarType : uint16_t {
    vbEmpty = 0,
    vbNull = 1,
    vbInteger = 2,
    vbLong = 3,
    vbSingle = 4,
    vbDouble = 5,
    vbCurrency = 6,
    vbDate = 7,
    vbString = 8,
    vbObject = 9,
    vbError = 10,
    vbBoolean = 11,
    vbVariant = 12,
    vbDataObject = 13,
    vbDecimal = 14,
    vbByte = 17,
    vbArray = 8192,
};

// The code an omitted optional Variant argument carries (0x80020004).
constexpr int32_t kMissingCode = -2147352572;

// Compare modes of StrComp, InStr and friends.
enum CompareMode : int32_t { vbBinaryCompare = 0, vbTextCompare = 1, vbDatabaseCompare = 2 };

// A reference-counted Automation object. Classes of the library derive from it.
class Object {
public:
    Object() noexcept = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();
    // The class name a client sees (TypeName, the type library).
    virtual std::u16string_view className() const noexcept = 0;

    void addRef() noexcept { ++refs_; }
    void release() noexcept {
        if (--refs_ == 0) delete this;
    }
    uint32_t refCount() const noexcept { return refs_; }

private:
    uint32_t refs_ = 0;
};

struct ArrayBound {
    int32_t lower = 0;
    int32_t upper = -1;
    int64_t count() const noexcept { return int64_t(upper) - lower + 1; }
};

class SafeArray;

class Variant {
public:
    Variant() noexcept { clearBits(); }
    explicit Variant(int16_t v) noexcept { clearBits(); vt_ = vbInteger; u_.i16 = v; }
    explicit Variant(int32_t v) noexcept { clearBits(); vt_ = vbLong; u_.i32 = v; }
    explicit Variant(float v) noexcept { clearBits(); vt_ = vbSingle; u_.f32 = v; }
    explicit Variant(double v) noexcept { clearBits(); vt_ = vbDouble; u_.f64 = v; }
    explicit Variant(bool v) noexcept { clearBits(); vt_ = vbBoolean; u_.i16 = v ? -1 : 0; }
    explicit Variant(uint8_t v) noexcept { clearBits(); vt_ = vbByte; u_.u8 = v; }
    explicit Variant(const Decimal& d) noexcept;
    explicit Variant(String s);
    explicit Variant(StringView s);
    explicit Variant(const char16_t* s) : Variant(StringView(s)) {}
    // Takes a reference on the object; nullptr is Nothing.
    explicit Variant(Object* o) noexcept;

    static Variant currency(int64_t tenThousandths) noexcept { Variant v; v.vt_ = vbCurrency; v.u_.i64 = tenThousandths; return v; }
    static Variant date(double days) noexcept { Variant v; v.vt_ = vbDate; v.u_.f64 = days; return v; }
    static Variant error(int32_t code) noexcept { Variant v; v.vt_ = vbError; v.u_.i32 = code; return v; }
    static Variant null() noexcept { Variant v; v.vt_ = vbNull; return v; }
    static Variant missing() noexcept { return error(kMissingCode); }
    static Variant nothing() noexcept { Variant v; v.vt_ = vbObject; return v; }
    static Variant boolean(bool b) noexcept { return Variant(b); }
    // An allocated array of the element type with the given bounds, elements
    // set to the type's zero value.
    static Variant array(VarType elementType, std::span<const ArrayBound> bounds);
    static Variant array(VarType elementType, std::initializer_list<ArrayBound> bounds) {
        return array(elementType, std::span<const ArrayBound>(bounds.begin(), bounds.size()));
    }
    // An array with no dimensions (a dynamic array before ReDim).
    static Variant unallocatedArray(VarType elementType);
    // A 0-based Variant vector of the given values (Array(...)).
    static Variant vector(std::span<const Variant> items);
    static Variant vector(std::initializer_list<Variant> items) {
        return vector(std::span<const Variant>(items.begin(), items.size()));
    }

    Variant(const Variant& o) noexcept { copyFrom(o); }
    Variant(Variant&& o) noexcept { std::memcpy(static_cast<void*>(this), &o, sizeof(Variant)); o.clearBits(); }
    Variant& operator=(const Variant& o) noexcept {
        if (this != &o) {
            Variant tmp(o);
            swap(tmp);
        }
        return *this;
    }
    Variant& operator=(Variant&& o) noexcept {
        if (this != &o) {
            release();
            std::memcpy(static_cast<void*>(this), &o, sizeof(Variant));
            o.clearBits();
        }
        return *this;
    }
    ~Variant() { release(); }

    void swap(Variant& o) noexcept {
        alignas(Variant) unsigned char tmp[sizeof(Variant)];
        std::memcpy(tmp, static_cast<void*>(this), sizeof(Variant));
        std::memcpy(static_cast<void*>(this), &o, sizeof(Variant));
        std::memcpy(static_cast<void*>(&o), tmp, sizeof(Variant));
    }
    // Back to Empty.
    void clear() noexcept { release(); clearBits(); }

    // --- the tag
    VarType vt() const noexcept { return VarType(vt_); }
    bool isEmpty() const noexcept { return vt_ == vbEmpty; }
    bool isNull() const noexcept { return vt_ == vbNull; }
    bool isString() const noexcept { return vt_ == vbString; }
    bool isArray() const noexcept { return (vt_ & vbArray) != 0; }
    bool isObject() const noexcept { return vt_ == vbObject; }
    bool isNothing() const noexcept { return vt_ == vbObject && u_.obj == nullptr; }
    bool isError() const noexcept { return vt_ == vbError; }
    bool isMissing() const noexcept { return vt_ == vbError && u_.i32 == kMissingCode; }
    // Integer, Long, Single, Double, Currency, Decimal, Byte, Boolean.
    bool isNumberType() const noexcept;
    VarType elementType() const noexcept { return VarType(vt_ & ~vbArray); }

    // --- raw payloads; valid only for the matching tag
    int16_t asInteger() const noexcept { return u_.i16; }
    int32_t asLong() const noexcept { return u_.i32; }
    float asSingle() const noexcept { return u_.f32; }
    double asDouble() const noexcept { return u_.f64; }
    int64_t asCurrency() const noexcept { return u_.i64; }
    double asDate() const noexcept { return u_.f64; }
    bool asBoolean() const noexcept { return u_.i16 != 0; }
    uint8_t asByte() const noexcept { return u_.u8; }
    int32_t asErrorCode() const noexcept { return u_.i32; }
    Decimal asDecimal() const noexcept;
    const String& asString() const noexcept;
    Object* asObject() const noexcept { return u_.obj; }
    const SafeArray& asArray() const noexcept { return *u_.arr; }
    // Writable access; a shared string or array is copied first.
    String& stringForWrite();
    SafeArray& arrayForWrite();

    // Identity of the shared payload (for tests of copy-on-write).
    const void* payloadIdentity() const noexcept { return u_.ptr; }

private:
    struct StrRep;
    friend class SafeArray;

    void clearBits() noexcept { std::memset(static_cast<void*>(this), 0, sizeof(Variant)); }
    bool ownsPayload() const noexcept { return vt_ == vbString || vt_ == vbObject || (vt_ & vbArray); }
    void copyFrom(const Variant& o) noexcept {
        std::memcpy(static_cast<void*>(this), &o, sizeof(Variant));
        if (ownsPayload()) addRefPayload();
    }
    void addRefPayload() noexcept;
    void release() noexcept {
        if (ownsPayload()) releasePayload();
    }
    void releasePayload() noexcept;

    uint16_t vt_;
    uint8_t decScale_;  // Decimal: scale, as the OLE layout keeps it beside the tag
    uint8_t decSign_;   // Decimal: 0x80 when negative
    uint32_t decHi_;    // Decimal: high 32 bits of the 96-bit integer
    union {
        int16_t i16;
        int32_t i32;
        float f32;
        double f64;
        int64_t i64;
        uint64_t u64;
        uint8_t u8;
        StrRep* str;
        Object* obj;
        SafeArray* arr;
        void* ptr;
    } u_;
};

static_assert(sizeof(Variant) == 16, "a Variant is 16 bytes");

// An array of any element type, with one or more dimensions and arbitrary
// bounds. Elements are stored as Variants of the element type, first
// subscript fastest (the memory order For Each visits).
class SafeArray {
public:
    explicit SafeArray(VarType elementType) noexcept : elemType_(elementType) {}

    VarType elementType() const noexcept { return elemType_; }
    bool allocated() const noexcept { return !bounds_.empty(); }
    int dimensions() const noexcept { return int(bounds_.size()); }
    // Dimension numbers are 1-based; a missing dimension raises error 9.
    int32_t lbound(int dimension = 1) const;
    int32_t ubound(int dimension = 1) const;
    const std::vector<ArrayBound>& bounds() const noexcept { return bounds_; }
    size_t size() const noexcept { return data_.size(); }

    // Elements by subscripts (error 9 outside the bounds or on a wrong count).
    const Variant& at(std::span<const int32_t> subscripts) const;
    Variant& at(std::span<const int32_t> subscripts);
    const Variant& at(int32_t i) const { return at(std::span<const int32_t>(&i, 1)); }
    Variant& at(int32_t i) { return at(std::span<const int32_t>(&i, 1)); }
    // Stores a value converted to the element type (error 13, 6, 94 as a
    // conversion gives them).
    void set(std::span<const int32_t> subscripts, const Variant& value);
    void set(int32_t i, const Variant& value) { set(std::span<const int32_t>(&i, 1), value); }

    // Elements in memory order.
    std::span<const Variant> elements() const noexcept { return data_; }
    std::span<Variant> elements() noexcept { return data_; }

    // ReDim: new bounds, every element set to the zero value.
    void redim(std::span<const ArrayBound> bounds);
    // ReDim Preserve: only the last dimension's upper bound may change (error
    // 9 otherwise); kept elements stay.
    void redimPreserve(std::span<const ArrayBound> bounds);
    // Erase of a dynamic array: unallocated again.
    void erase() noexcept;

    // The zero value an element of this type starts as.
    Variant zeroElement() const;

private:
    friend class Variant;
    size_t offsetOf(std::span<const int32_t> subscripts) const;

    uint32_t refs_ = 1;
    VarType elemType_;
    std::vector<ArrayBound> bounds_;
    std::vector<Variant> data_;
};

// The zero value of a VarType (0 of numbers, "" of String, Nothing of
// Object, Empty of Variant).
Variant zeroValueOf(VarType t);

}  // namespace qvt
