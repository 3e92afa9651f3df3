// The statement language of the qvt script host: Basic-like lines evaluated
// in the library's Variant semantics, calling members through the type
// library. See docs/script-host.md for the language.
#pragma once
#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "automation/TypeLibrary.h"
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

// Error numbers of the host's own parser (outside the runtime's range).
enum : ErrNo {
    errSyntax = 1002,
    errExpressionTooComplex = 16,
    errSubOrFunctionNotDefined = 35,
    errArgumentNotOptional = 449,
    errArrayFixed = 10,
};

struct ScriptNode;

class Interpreter {
public:
    // Receives each printed value and each escaped error, in order.
    struct Output {
        virtual ~Output() = default;
        virtual void value(const Variant& v) = 0;
        virtual void error(const RuntimeError& e) = 0;
    };

    explicit Interpreter(const TypeLibrary& lib = TypeLibrary::global());
    ~Interpreter();

    // Runs one line (UTF-8). Returns false when an error escaped it; the
    // statements after the failing one on that line do not run.
    bool runLine(std::string_view line, Output& out);

    // Evaluates one expression; errors propagate (for tests and embedding).
    Variant evaluate(std::string_view expression);

    // A variable, or nullptr when it does not exist.
    Variant* variable(StringView name);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace qvt
