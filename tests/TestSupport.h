// Helpers shared by the unit tests.
#pragma once
#include "frame/Error.h"

namespace qvt::test {

// The number of the run-time error f raises, 0 if none.
template <class F>
ErrNo errorOf(F&& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

}  // namespace qvt::test
