//===- vorProgram.h - Expression texts cut into tokens once -----*- C++ -*-===//
//
// A vorProgram is the token stream of one expression text, as the evaluator's
// tokenizer cuts it, kept so that reading the expression again needs no
// scanning: number literals are read into doubles, string literals kept as
// their text (they are interpolated anew on each run, since they read the
// tree), and each token remembers where the scan left the text position, so
// that the parser's checks on positions answer as they would over the text.
//
// The tokenizer reads a word differently after an operand ("10 m": the unit
// operator "m") and where an operand is expected ("m * 2": the name "m"). A
// program keeps both readings of every token whose reading depends on that,
// and the parser picks one as it goes, exactly as it would pick the scan.
//
// A program is immutable once built and shared: runs copy what they hand
// out (a number literal becomes a new numeric on every run), so no caller can
// change a cached program.
//
// Programs of evaluate(text) are cached process-wide by text. A text is
// compiled the second time it is met: the first time the cache only notes the
// text's hash, in a fixed table of max_cached_programs slots (a text evaluated
// once is cheaper to scan than to compile, and noting it costs no memory that
// grows). The cache holds
// at most max_cached_programs texts and max_cached_bytes bytes of them and
// their programs (as estimated by footprint()); it is emptied when the next
// entry would pass either bound, and a program larger than
// max_cached_bytes / 8 is used once and not cached. A program records the
// decimal points it was cut with; an entry cut for other ones is replaced.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_EXPRESSION_VORPROGRAM_H
#define VORPARAMETER_SRC_EXPRESSION_VORPROGRAM_H

#include "vorPlan.h"

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorCharTypes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// One reading of one token: what next_token would leave in the evaluator.
struct vorProgramToken {
    /// vorEvaluator's token kind.
    int kind = 0;
    /// The token text: an operator, a name, a literal's text.
    utString text;
    /// A number literal's value (kind TOKEN_VALUE, not a string).
    double number = 0.0;
    bool string_literal = false;
    /// The text position (in code points) after the scan.
    int end = 0;
    /// +1 for an opening, -1 for a closing bracket of the kind.
    std::int8_t paren_delta = 0;
    std::int8_t brace_delta = 0;
};

struct vorProgram : std::enable_shared_from_this<vorProgram> {
    static constexpr std::size_t max_cached_programs = 4096;
    static constexpr std::size_t max_cached_bytes = 32u << 20;

    /// Every distinct reading, in text order.
    std::vector<vorProgramToken> readings;
    /// By token, the index in `readings` of its reading after an operand
    /// ([0]) and where an operand is expected ([1]).
    std::vector<std::array<std::uint32_t, 2>> tokens;
    /// The text it was cut from, and its length in code points.
    utString text;
    std::size_t length = 0;
    /// The decimal points the text was cut with.
    char decimal_point = '.';
    char alt_decimal = ',';
    /// The index of the first token whose scan rewrites the text (a list
    /// separator, a decimal point), or tokens.size() when none does; then
    /// the text as fully rewritten.
    std::size_t first_rewrite = 0;
    vorWideString rewritten;
    /// The parse of the text for reads of values, when it has one.
    std::unique_ptr<vorPlan> plan;

    /// The text as the tokenizer leaves it after reading `tokens_read` tokens,
    /// which ended at `position`.
    utString text_after(std::size_t tokens_read, std::size_t position) const;
    /// An estimate of the heap the program holds, in bytes.
    std::size_t footprint() const;
};

/// The process-wide cache of programs; see the file comment for its bounds.
class vorProgramCache {
public:
    struct Lookup {
        /// The program of the text cut with the decimal points asked for, or
        /// null. Not a share of it: valid until the cache next changes (the
        /// next evaluation); shared_from_this() keeps it longer.
        const vorProgram* program = nullptr;
        /// The cache has met the text before.
        bool seen = false;
    };
    static Lookup find(const utString& text, char decimal_point, char alt_decimal);
    /// Advances whenever a program leaves the cache (replaced, or dropped
    /// when the cache is full): a program found at one version is alive while
    /// the version stays.
    static std::uint64_t version();
    /// Keeps `program` as the program of `text` (null: the text was met),
    /// within the bounds.
    static void store(const utString& text, std::shared_ptr<const vorProgram> program);
    /// How many programs the cache holds now.
    static std::size_t size();
};

#endif // VORPARAMETER_SRC_EXPRESSION_VORPROGRAM_H
