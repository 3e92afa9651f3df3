// The frames a public member runs in, and the shared instances of the
// global classes.
//
// Fix-up frame. A member takes each by-value argument as a `Variant`
// parameter (that parameter is its private copy: fix-ups never touch the
// caller's value) and each `ref` argument as `Variant&` (fixed up in place).
// The mandatory fix-ups are the Fn forms joined with && in the first
// argument of fixUpFrame, so they run left to right and the first failure
// ends the call with Null (no error, no message); optional arguments take
// their Sub forms at the top of the body:
//
//   Variant Checksums::Checksum8(Variant vValue) const {
//       return fixUpFrame(fixUps().FixUpVariantToStringFn(vValue), [&] {
//           ... return the result ...
//       });
//   }
//
// A member whose result is Boolean, String or a number cannot return Null;
// it names its failure value: fixUpFrame(ok, body, false).
//
// Guarded frame. guardedFrame(body): any run-time error inside becomes Null.
// The numeric members that call the kernels use it, with CDbl or Variant
// arithmetic on the arguments directly.
//
// Fast frame. The typed ...Fast members are plain functions: no fix-ups, no
// handler, errors rise to the caller.
//
// File frame. A FileFrame closes what the member opened on every way out,
// and runs single statements under "On Error Resume Next".
#pragma once
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

template <class R>
R nullResult() {
    if constexpr (std::is_same_v<R, Variant>) return Variant::null();
    else return R{};
}

// The fix-up frame: the body runs only when every mandatory fix-up held.
template <class Body, class R = std::invoke_result_t<Body&>>
R fixUpFrame(bool fixedUp, Body&& body, R onFailure = nullResult<R>()) {
    if (!fixedUp) return onFailure;
    return body();
}

// The guarded frame: a run-time error anywhere in the body gives Null.
template <class Body>
Variant guardedFrame(Body&& body) {
    return guarded(std::forward<Body>(body));
}

// The file frame's clean-up: actions registered as resources are opened run
// in reverse order when the member leaves, however it leaves. Errors of the
// clean-up itself are swallowed, as a Close after a failed Open would be.
class FileFrame {
public:
    FileFrame() = default;
    FileFrame(const FileFrame&) = delete;
    FileFrame& operator=(const FileFrame&) = delete;
    ~FileFrame() {
        for (auto it = cleanups_.rbegin(); it != cleanups_.rend(); ++it) onErrorResumeNext(*it);
    }
    void atExit(std::function<void()> cleanup) { cleanups_.push_back(std::move(cleanup)); }
    // One statement under "On Error Resume Next": the error number, 0 if none.
    template <class F>
    ErrNo resumeNext(F&& f) {
        return onErrorResumeNext(std::forward<F>(f));
    }

private:
    std::vector<std::function<void()>> cleanups_;
};

// The one instance of a global class: made at first use, kept for the life
// of the process, and the same one the type library hands to clients.
template <class T>
T& globalInstance() noexcept {
    static T* const instance = [] {
        T* p = new T();
        p->addRef();
        return p;
    }();
    return *instance;
}

// The type library's factory for a global class: its shared instance.
template <class T>
Object* globalFactory() {
    return &globalInstance<T>();
}

}  // namespace qvt
