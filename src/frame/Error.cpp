#include "frame/Error.h"

#include <algorithm>

namespace qvt {

namespace {

struct ErrorEntry {
    ErrNo number;
    const char16_t* text;
};

// The runtime's descriptions, in number order.
constexpr ErrorEntry kErrors[] = {
    {3, u"Return without GoSub"},
    {5, u"Invalid procedure call or argument"},
    {6, u"Overflow"},
    {7, u"Out of memory"},
    {9, u"Subscript out of range"},
    {10, u"This array is fixed or temporarily locked"},
    {11, u"Division by zero"},
    {13, u"Type mismatch"},
    {14, u"Out of string space"},
    {16, u"Expression too complex"},
    {17, u"Can't perform requested operation"},
    {18, u"User interrupt occurred"},
    {20, u"Resume without error"},
    {28, u"Out of stack space"},
    {35, u"Sub or Function not defined"},
    {47, u"Too many DLL application clients"},
    {48, u"Error in loading DLL"},
    {49, u"Bad DLL calling convention"},
    {51, u"Internal error"},
    {52, u"Bad file name or number"},
    {53, u"File not found"},
    {54, u"Bad file mode"},
    {55, u"File already open"},
    {57, u"Device I/O error"},
    {58, u"File already exists"},
    {59, u"Bad record length"},
    {61, u"Disk full"},
    {62, u"Input past end of file"},
    {63, u"Bad record number"},
    {67, u"Too many files"},
    {68, u"Device unavailable"},
    {70, u"Permission denied"},
    {71, u"Disk not ready"},
    {74, u"Can't rename with different drive"},
    {75, u"Path/File access error"},
    {76, u"Path not found"},
    {91, u"Object variable or With block variable not set"},
    {92, u"For loop not initialized"},
    {93, u"Invalid pattern string"},
    {94, u"Invalid use of Null"},
    {321, u"Invalid file format"},
    {322, u"Can't create necessary temporary file"},
    {380, u"Invalid property value"},
    {381, u"Invalid property-array index"},
    {383, u"Set not supported (read-only property)"},
    {394, u"Get not supported (write-only property)"},
    {422, u"Property not found"},
    {423, u"Property or method not found"},
    {424, u"Object required"},
    {429, u"ActiveX component can't create object"},
    {438, u"Object doesn't support this property or method"},
    {440, u"Automation error"},
    {445, u"Object doesn't support this action"},
    {446, u"Object doesn't support named arguments"},
    {448, u"Named argument not found"},
    {449, u"Argument not optional"},
    {450, u"Wrong number of arguments or invalid property assignment"},
    {451, u"Property let procedure not defined and property get procedure did not return an object"},
    {457, u"This key is already associated with an element of this collection"},
    {458, u"Variable uses an Automation type not supported in Visual Basic"},
    {460, u"Invalid clipboard format"},
    {461, u"Method or data member not found"},
    {735, u"Can't save file to TEMP"},
    {744, u"Search text not found"},
    {746, u"Replacements too long"},
};

std::string narrow(const String& s) {
    std::string out;
    out.reserve(s.size());
    for (char16_t c : s) out.push_back(c < 0x80 ? char(c) : '?');
    return out;
}

}  // namespace

String errorText(ErrNo number) {
    auto it = std::lower_bound(std::begin(kErrors), std::end(kErrors), number,
                               [](const ErrorEntry& e, ErrNo n) { return e.number < n; });
    if (it != std::end(kErrors) && it->number == number) return it->text;
    return u"Application-defined or object-defined error";
}

RuntimeError::RuntimeError(ErrNo number) : RuntimeError(number, String(), errorText(number)) {}

RuntimeError::RuntimeError(ErrNo number, String source, String description)
    : number_(number), source_(std::move(source)), description_(std::move(description)) {
    what_ = "run-time error " + std::to_string(number_) + ": " + narrow(description_);
}

void raiseError(ErrNo number) { throw RuntimeError(number); }

void raiseError(ErrNo number, String source, String description) {
    if (description.empty()) description = errorText(number);
    throw RuntimeError(number, std::move(source), std::move(description));
}

void ErrObject::Raise(ErrNo number, String source, String description) {
    raiseError(number, std::move(source), std::move(description));
}

ErrObject& Err() noexcept {
    static ErrObject err;
    return err;
}

}  // namespace qvt
