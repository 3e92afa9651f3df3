#include "frame/Variant.h"

#include "frame/Conversions.h"
#include "frame/Error.h"

namespace qvt {

Object::~Object() = default;

// A shared string. Single-threaded by design: the library runs on its
// client's one thread, so the count needs no atomics.
struct Variant::StrRep {
    uint32_t refs;
    String text;
};

namespace {
const String kEmptyString;
}

Variant::Variant(const Decimal& d) noexcept {
    clearBits();
    vt_ = vbDecimal;
    decScale_ = d.scale;
    decSign_ = d.negative ? 0x80 : 0;
    decHi_ = d.hi;
    u_.u64 = d.lo;
}

Variant::Variant(String s) {
    clearBits();
    vt_ = vbString;
    if (!s.empty()) u_.str = new StrRep{1, std::move(s)};
}

Variant::Variant(StringView s) {
    clearBits();
    vt_ = vbString;
    if (!s.empty()) u_.str = new StrRep{1, String(s)};
}

Variant::Variant(Object* o) noexcept {
    clearBits();
    vt_ = vbObject;
    u_.obj = o;
    if (o) o->addRef();
}

Decimal Variant::asDecimal() const noexcept {
    Decimal d;
    d.lo = u_.u64;
    d.hi = decHi_;
    d.scale = decScale_;
    d.negative = (decSign_ & 0x80) != 0;
    return d;
}

const String& Variant::asString() const noexcept { return u_.str ? u_.str->text : kEmptyString; }

String& Variant::stringForWrite() {
    if (!u_.str) {
        u_.str = new StrRep{1, String()};
    } else if (u_.str->refs > 1) {
        StrRep* fresh = new StrRep{1, u_.str->text};
        --u_.str->refs;
        u_.str = fresh;
    }
    return u_.str->text;
}

SafeArray& Variant::arrayForWrite() {
    if (u_.arr->refs_ > 1) {
        SafeArray* fresh = new SafeArray(u_.arr->elemType_);
        fresh->bounds_ = u_.arr->bounds_;
        fresh->data_ = u_.arr->data_;
        --u_.arr->refs_;
        u_.arr = fresh;
    }
    return *u_.arr;
}

bool Variant::isNumberType() const noexcept {
    switch (vt_) {
        case vbInteger: case vbLong: case vbSingle: case vbDouble: case vbCurrency:
        case vbDecimal: case vbByte: case vbBoolean:
            return true;
        default:
            return false;
    }
}

void Variant::addRefPayload() noexcept {
    if (vt_ == vbString) {
        if (u_.str) ++u_.str->refs;
    } else if (vt_ == vbObject) {
        if (u_.obj) u_.obj->addRef();
    } else if (u_.arr) {
        ++u_.arr->refs_;
    }
}

void Variant::releasePayload() noexcept {
    if (vt_ == vbString) {
        if (u_.str && --u_.str->refs == 0) delete u_.str;
    } else if (vt_ == vbObject) {
        if (u_.obj) u_.obj->release();
    } else if (u_.arr && --u_.arr->refs_ == 0) {
        delete u_.arr;
    }
}

Variant Variant::array(VarType elementType, std::span<const ArrayBound> bounds) {
    Variant v = unallocatedArray(elementType);
    v.u_.arr->redim(bounds);
    return v;
}

Variant Variant::unallocatedArray(VarType elementType) {
    Variant v;
    v.vt_ = uint16_t(vbArray | elementType);
    v.u_.arr = new SafeArray(elementType);
    return v;
}

Variant Variant::vector(std::span<const Variant> items) {
    ArrayBound b{0, int32_t(items.size()) - 1};
    Variant v = unallocatedArray(vbVariant);
    SafeArray& a = *v.u_.arr;
    a.bounds_.assign(1, b);
    a.data_.assign(items.begin(), items.end());
    return v;
}

// ---------------------------------------------------------------- SafeArray

int32_t SafeArray::lbound(int dimension) const {
    if (dimension < 1 || dimension > int(bounds_.size())) raiseError(errSubscript);
    return bounds_[dimension - 1].lower;
}

int32_t SafeArray::ubound(int dimension) const {
    if (dimension < 1 || dimension > int(bounds_.size())) raiseError(errSubscript);
    return bounds_[dimension - 1].upper;
}

size_t SafeArray::offsetOf(std::span<const int32_t> subscripts) const {
    if (subscripts.size() != bounds_.size()) raiseError(errSubscript);
    size_t offset = 0, stride = 1;
    for (size_t d = 0; d < bounds_.size(); ++d) {
        const ArrayBound& b = bounds_[d];
        int32_t s = subscripts[d];
        if (s < b.lower || s > b.upper) raiseError(errSubscript);
        offset += size_t(int64_t(s) - b.lower) * stride;
        stride *= size_t(b.count());
    }
    return offset;
}

const Variant& SafeArray::at(std::span<const int32_t> subscripts) const { return data_[offsetOf(subscripts)]; }
Variant& SafeArray::at(std::span<const int32_t> subscripts) { return data_[offsetOf(subscripts)]; }

void SafeArray::set(std::span<const int32_t> subscripts, const Variant& value) {
    Variant& slot = at(subscripts);
    if (elemType_ == vbVariant) {
        slot = value;
        return;
    }
    if (elemType_ == vbObject) {
        if (!value.isObject()) raiseError(errTypeMismatch);
        slot = value;
        return;
    }
    Variant converted;
    check(convertTo(value, elemType_, converted));
    slot = std::move(converted);
}

Variant zeroValueOf(VarType t) {
    switch (t) {
        case vbInteger: return Variant(int16_t(0));
        case vbLong: return Variant(int32_t(0));
        case vbSingle: return Variant(0.0f);
        case vbDouble: return Variant(0.0);
        case vbCurrency: return Variant::currency(0);
        case vbDate: return Variant::date(0);
        case vbString: return Variant(String());
        case vbObject: return Variant::nothing();
        case vbError: return Variant::error(0);
        case vbBoolean: return Variant(false);
        case vbDecimal: return Variant(Decimal{});
        case vbByte: return Variant(uint8_t(0));
        default: return Variant();
    }
}

Variant SafeArray::zeroElement() const { return zeroValueOf(elemType_); }

static int64_t totalCount(std::span<const ArrayBound> bounds) {
    int64_t n = 1;
    for (const ArrayBound& b : bounds) {
        if (b.upper < b.lower) raiseError(errSubscript);
        n *= b.count();
        if (n > (int64_t(1) << 31)) raiseError(errOutOfMemory);
    }
    return n;
}

void SafeArray::redim(std::span<const ArrayBound> bounds) {
    if (bounds.empty()) raiseError(errSubscript);
    int64_t n = totalCount(bounds);
    bounds_.assign(bounds.begin(), bounds.end());
    data_.assign(size_t(n), zeroElement());
}

void SafeArray::redimPreserve(std::span<const ArrayBound> bounds) {
    if (!allocated()) {
        redim(bounds);
        return;
    }
    if (bounds.size() != bounds_.size()) raiseError(errSubscript);
    for (size_t d = 0; d + 1 < bounds.size(); ++d)
        if (bounds[d].lower != bounds_[d].lower || bounds[d].upper != bounds_[d].upper) raiseError(errSubscript);
    if (bounds.back().lower != bounds_.back().lower) raiseError(errSubscript);
    int64_t n = totalCount(bounds);
    // The last dimension varies slowest, so preserving is a resize.
    data_.resize(size_t(n), zeroElement());
    bounds_.back().upper = bounds.back().upper;
}

void SafeArray::erase() noexcept {
    bounds_.clear();
    data_.clear();
}

}  // namespace qvt
