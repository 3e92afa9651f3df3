// Tokens and syntax tree of the script host's language (internal).
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Variant.h"

namespace qvt::script {

enum class Tok : uint8_t { End, Number, Text, Date, Word, Symbol };

struct Token {
    Tok kind = Tok::End;
    String text;        // a word as written, or a symbol ("<=", "(", ":")
    Variant value;      // literals
    size_t column = 0;  // 0-based position in the line
    bool spaceBefore = false;
};

// Splits one line into tokens; a syntax error raises errSyntax.
std::vector<Token> tokenize(StringView line);

// Day count of a #date# literal's text (m/d/y or y-m-d, optional time).
double parseDateLiteral(StringView text);
// The same without raising: no value for text that is not a date.
std::optional<double> dateLiteralValue(StringView text);

enum class Op : uint8_t {
    Pow, Neg, Plus, Mul, Div, IntDiv, Mod, Add, Sub, Concat,
    Eq, Ne, Lt, Le, Gt, Ge, Like, Is, Not, And, Or, Xor, Eqv, Imp,
};

struct Node {
    enum Kind : uint8_t { Literal, Name, Member, Apply, Paren, Unary, Binary, New };
    Kind kind = Literal;
    Op op = Op::Add;
    bool typedNumber = false;  // a literal number, or arithmetic of such
    int depth = 1;
    Variant value;             // Literal
    String name;               // Name, Member, New
    std::unique_ptr<Node> a, b;
    std::vector<std::unique_ptr<Node>> args;  // Apply; nullptr is an omitted argument
    // Filled in at run time: the member a call resolved to last.
    mutable const MemberInfo* resolved = nullptr;
};
using NodePtr = std::unique_ptr<Node>;

struct DimItem {
    String name;
    std::vector<std::pair<NodePtr, NodePtr>> bounds;  // lower (may be null), upper
    bool hasParens = false;
    VarType elementType = vbVariant;
};

struct Statement {
    enum Kind : uint8_t { Print, Assign, SetAssign, CallDiscard, Dim, ReDim, Erase, If, OnErrorResumeNext, OnErrorGoTo0, Empty };
    Kind kind = Empty;
    NodePtr target;  // Assign, SetAssign
    NodePtr expr;    // Print (may be null), Assign, SetAssign, CallDiscard, If condition
    std::vector<DimItem> dims;  // Dim, ReDim, Erase (names only)
    bool preserve = false;
    std::vector<Statement> thenPart, elsePart;
};

// Parses a whole line into statements; errSyntax or errExpressionTooComplex.
std::vector<Statement> parseLine(const std::vector<Token>& tokens);
// Parses a single expression (for Interpreter::evaluate).
NodePtr parseExpression(const std::vector<Token>& tokens);

}  // namespace qvt::script
