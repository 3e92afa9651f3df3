// Numbered run-time errors.
//
// An error propagates as a C++ exception (RuntimeError) up to the nearest
// handler, as a Basic error does. The three handler forms map to:
//   - "go on with the next statement": onErrorResumeNext(f), which records
//     the error in Err() and returns its number (0 on success);
//   - "go to a clean-up point": an ordinary try/catch or a scope guard;
//   - "handler switched off": no handler at all.
// Hot paths that only need to know whether a conversion would fail (the
// fix-ups) call the non-throwing cores, which return an ErrNo instead.
#pragma once
#include <cstdint>
#include <exception>
#include <string>

#include "frame/Variant.h"

namespace qvt {

// A run-time error number; 0 means success.
using ErrNo = int32_t;

enum : ErrNo {
    errInvalidCall = 5,
    errOverflow = 6,
    errOutOfMemory = 7,
    errSubscript = 9,
    errDivisionByZero = 11,
    errTypeMismatch = 13,
    errBadFileNameOrNumber = 52,
    errFileNotFound = 53,
    errBadFileMode = 54,
    errFileAlreadyOpen = 55,
    errFileAlreadyExists = 58,
    errInputPastEnd = 62,
    errBadFileName = 64,
    errPermissionDenied = 70,
    errDiskNotReady = 71,
    errPathFileAccess = 75,
    errPathNotFound = 76,
    errObjectVariableNotSet = 91,
    errInvalidUseOfNull = 94,
    errNotAnObject = 424,
    errNoSuchMember = 438,
    errWrongArgumentCount = 450,
};

class RuntimeError : public std::exception {
public:
    explicit RuntimeError(ErrNo number);
    RuntimeError(ErrNo number, String source, String description);
    ErrNo number() const noexcept { return number_; }
    const String& source() const noexcept { return source_; }
    const String& description() const noexcept { return description_; }
    const char* what() const noexcept override { return what_.c_str(); }

private:
    ErrNo number_;
    String source_;
    String description_;
    std::string what_;
};

// Raise a numbered error with the runtime's description (Error$).
[[noreturn]] void raiseError(ErrNo number);
[[noreturn]] void raiseError(ErrNo number, String source, String description);

// The runtime's text for an error number (Error$(n)); "Application-defined
// or object-defined error" for numbers it does not know.
String errorText(ErrNo number);

// The Err object of the running thread.
struct ErrObject {
    ErrNo Number = 0;
    String Description;
    String Source;
    int32_t Erl = 0;
    void Clear() noexcept {
        Number = 0;
        Description.clear();
        Source.clear();
        Erl = 0;
    }
    void set(const RuntimeError& e) {
        Number = e.number();
        Description = e.description();
        Source = e.source();
        Erl = 0;
    }
    [[noreturn]] void Raise(ErrNo number, String source = {}, String description = {});
};
ErrObject& Err() noexcept;

// "On Error Resume Next" around one statement: runs f, and on a run-time
// error records it in Err() and returns its number; 0 when f succeeded.
template <class F>
ErrNo onErrorResumeNext(F&& f) {
    try {
        f();
        return 0;
    } catch (const RuntimeError& e) {
        Err().set(e);
        return e.number();
    }
}

// Runs f; any run-time error becomes Null (the guarded frame).
template <class F>
Variant guarded(F&& f) {
    try {
        return f();
    } catch (const RuntimeError&) {
        return Variant::null();
    }
}

// Raise if a core reported failure.
inline void check(ErrNo e) {
    if (e != 0) raiseError(e);
}

}  // namespace qvt
