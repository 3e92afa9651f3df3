// ArrayConversions: text to arrays and back, element-wise copies between
// String and Variant arrays, and moving single rows and columns between
// matrices and vectors.
//
// A matrix is array(column, row). Members return True on success and False
// on a bad argument, leaving the receiving variable as it was.
#pragma once
#include <vector>

#include "frame/Variant.h"

namespace qvt {

class ArrayConversions final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArrayConversions"; }

    // The parts of vFromLine between the separators (default CR LF), found
    // by InStr under vCompare, at subscripts 0 to count - 1. An empty
    // separator gives False and leaves rLines alone.
    bool StringToVariantVector(Variant& rLines, Variant vFromLine, Variant vSeparator = Variant::missing(),
                               Variant vCompare = Variant::missing()) const;
    // Rows split on vRowSeparator (default CR LF), then each on
    // vColumnSeparator (default ","): rTo(1 To widest row, 1 To rows), the
    // cells a short row lacks left Empty.
    bool StringToVariantMatrix(Variant& rTo, Variant vFm, Variant vColumnSeparator = Variant::missing(),
                               Variant vRowSeparator = Variant::missing(), Variant vCompare = Variant::missing()) const;
    // Elements 1 to UBound (Null as ""), joined; "" for a bad argument.
    String VariantVectorToString(const Variant& vLines, Variant vColumnSeparator) const;
    // Rows 1 to UBound(2), each of its columns 1 to UBound(1).
    String VariantMatrixToString(const Variant& vLines, Variant vColumnSeparator, Variant vRowSeparator) const;

    // Element-wise copies with the source's bounds; towards String through
    // VariantToString.
    bool StringVectorToVariantVector(Variant& rTo, const Variant& vFm) const;
    bool VariantVectorToStringVector(Variant& rTo, const Variant& vFm) const;
    bool StringMatrixToVariantMatrix(Variant& rTo, const Variant& vFm) const;
    bool VariantMatrixToStringMatrix(Variant& rTo, const Variant& vFm) const;

    // One column (a subscript of dimension 1) or one row of a matrix as a
    // vector with that dimension's bounds.
    bool VariantMatrixColumnToVector(Variant& rTo, const Variant& vFm, Variant vColumnNumber) const;
    bool VariantMatrixRowToVector(Variant& rTo, const Variant& vFm, Variant vRowNumber) const;
    // A vector laid over one column or row of a dimensioned matrix, at the
    // subscripts both have.
    bool VariantVectorToMatrixColumn(Variant& rTo, const Variant& vFm, Variant vColumnNumber) const;
    bool VariantVectorToMatrixRow(Variant& rTo, const Variant& vFm, Variant vRowNumber) const;
};

ArrayConversions& arrayConversions() noexcept;

// The splitting loop of StringToVariantVector, shared by every member that
// splits a text: the parts of `line` between the occurrences of `separator`,
// found left to right by InStr under `compare`. The text after the last
// separator is the last part, so an empty line gives one empty part and a
// trailing separator an empty last part. An empty separator gives the whole
// line as the one part. StringToVariantVector stores these at 0 to n - 1.
std::vector<String> splitParts(StringView line, StringView separator, int32_t compare);

// The split for members that walk elements 1 to UBound: a Variant vector
// with the parts at subscripts 1 to n and subscript 0 left Empty.
Variant splitToOneBased(StringView line, StringView separator, int32_t compare);

}  // namespace qvt
