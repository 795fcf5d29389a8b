//===- vorEvaluator.h - The expression language -----------------*- C++ -*-===//
//
// vorEvaluator evaluates an expression text in the context of a scope
// parameter and returns the result as a parameter. It parses and evaluates in
// one pass (recursive descent with precedence climbing); every operator is
// carried out by its left or only operand through operate_binary,
// operate_prefix and operate_postfix, so the evaluator knows the grammar and
// name resolution but nothing of values. A failure anywhere is an error
// parameter that becomes the result.
//
// Along the way it records the parameters the expression referred to
// (paramset), which the active-state machinery uses as dependencies. The
// paramset holds owning handles for the evaluator's lifetime, so that a
// temporary the expression created can never dangle in it.
//
// It also rewrites texts without evaluating them: interpolate_string expands
// "${expr}", "%[expr]" and "$name" inside text; localize and neutralize move
// an expression between the user's decimal point and the stored ".".
//
// Limits that keep the host alive whatever the input:
//   - a text longer than max_expression_length bytes is a syntax error;
//     translate, localize and neutralize return such a text unchanged (it
//     can never be evaluated, so there is nothing to rewrite);
//   - evaluation nests at most max_nesting levels deep, counted across
//     everything that recurses while a value is read: the parser's nested
//     operands (brackets, prefix operators, the right operand of an
//     operator), a parameter evaluating its expression (so chains of
//     parameters), interpolation inside strings and enumerations, user
//     function bodies and active conditions. Each such step holds one level
//     (vorEvalLevel). The deepest path, at the limit, needs well under
//     2 MiB of stack even in an unoptimised build with AddressSanitizer
//     (about 0.6 MiB measured over chains of every kind), so
//     the host's 8 MiB main-thread stack is never exhausted; a host that
//     evaluates on a thread with a smaller stack must give it at least
//     that much;
//   - a top-level read (the outermost evaluation in progress) evaluates at
//     most max_evaluations() parameter expressions and function bodies in
//     all (1 000 000 unless the host sets another budget). This bounds
//     graphs in which a parameter is read many times over, such as a chain
//     in which every parameter reads the previous one twice. A numeric
//     parameter read again within one read, with nothing changed meanwhile,
//     reuses its value and counts as one evaluation without what it read
//     (see src/parameter/vorReadMemo.h); texts, function calls and anything
//     near an on-read callback are evaluated, and counted, every time.
// A read that reaches either limit anywhere answers an "Expression/Reference
// error" (ERR_EXPRESSION) as a whole, even where an interpolation would
// otherwise have written the error into its text; the next top-level read
// starts afresh.
//
// evaluate(text) runs the text's compiled form: the token stream cut once
// (literals read, names and operators found, with both readings of a word
// such as "m" that is a unit after an operand and a name before one) and kept
// in a process-wide cache (vorProgram.h gives its bound). The same parser
// then reads tokens from that program instead of scanning the text, so every
// rule above holds by construction. A text the tokenizer would stop on (an
// unterminated string, a malformed number, an unknown symbol) is always
// scanned afresh. A parameter reading its own value goes one step further:
// it runs the text's plan (src/expression/vorPlan.h), the parse taken once,
// with names resolved once while the tree keeps its shape and plain numbers
// computed without making a parameter of each; a plan of plain arithmetic
// over literal numbers runs on doubles alone (src/expression/vorPlanKernel.h).
// set_compiled(false) makes every evaluation scan its text.
//
// Evaluators are used from the host's one thread (the operator tables, the
// nesting count, the evaluation budget and the program cache are
// process-wide).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VOREVALUATOR_H
#define VORPARAMETER_EXPRESSION_VOREVALUATOR_H

#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/platform/vorCharTypes.h"

#include <memory>
#include <unordered_set>
#include <vector>

struct vorProgram;

/// The kind of a vorEvalFunction guard: type 0 makes name lookups answer
/// functions only.
enum vorEvalFunctionType { EVAL_FUNCTIONS_ONLY = 0, EVAL_ALL_NAMES = 1 };

/// Marks, for its lifetime, that a function name is being resolved. While the
/// innermost live guard is of type 0, map lookups answer only functions.
class VOR_API vorEvalFunction {
public:
    explicit vorEvalFunction(vorEvalFunctionType type);
    ~vorEvalFunction();
    vorEvalFunction(const vorEvalFunction&) = delete;
    vorEvalFunction& operator=(const vorEvalFunction&) = delete;

    static bool functions_only();

private:
    /// What functions_only() answered before this guard.
    bool m_previous;
};

/// What a vorEvalLevel stands for: a nested step of evaluation, or the
/// evaluation of a parameter's expression or a function's body, which also
/// spends one evaluation of the read's budget.
enum vorEvalLevelKind { EVAL_NESTED = 0, EVAL_EXPRESSION = 1 };

/// One level of a recursive evaluation, held for the level's lifetime. Every
/// path by which evaluation recurses holds one per step, so that all of them
/// count against one nesting budget (vorEvaluator::max_nesting). Entering
/// the outermost level begins a read: its evaluation budget starts afresh.
class VOR_API vorEvalLevel {
public:
    explicit vorEvalLevel(vorEvalLevelKind kind);
    ~vorEvalLevel();
    vorEvalLevel(const vorEvalLevel&) = delete;
    vorEvalLevel& operator=(const vorEvalLevel&) = delete;

    /// True when entering this level went past the nesting limit or the
    /// read's evaluation budget, or the read had reached a limit before: the
    /// step answers ERR_EXPRESSION without going further.
    bool refused() const { return m_refused; }

    /// True once the current (or last) read has reached a limit.
    static bool limit_reached();
    /// How many levels are held now.
    static int depth();
    /// What an evaluation answers: `result`, or ERR_EXPRESSION once its read
    /// has reached a limit. A read that reaches one is lost as a whole, so an
    /// error written into an interpolated text, or dropped by a function,
    /// still makes the read fail.
    static vorParameterPtr settle(vorParameterPtr result);

private:
    bool m_refused;
};

class VOR_API vorEvaluator {
public:
    static constexpr int max_nesting = 400;
    static constexpr std::size_t max_expression_length = 256 * 1024;
    static constexpr long default_max_evaluations = 1000000;

    /// How many parameter expressions and function bodies one top-level read
    /// may evaluate in all.
    static long max_evaluations();
    /// Sets that budget (at least 1) for the reads that follow and returns
    /// the previous one. Process-wide, like the rest of the evaluator's
    /// state; a host that lowers it for one task restores it afterwards.
    static long set_max_evaluations(long budget);

    /// True (the default) when evaluate(text) runs compiled forms of its
    /// texts; false when it scans every text anew.
    static bool compiled();
    /// Chooses between the two for the evaluations that follow and returns
    /// the previous choice. Results are the same either way.
    static bool set_compiled(bool on);
    /// How many compiled texts the process-wide cache holds.
    static std::size_t cached_programs();

    explicit vorEvaluator(const vorParameter* scope);
    virtual ~vorEvaluator();
    vorEvaluator(const vorEvaluator&) = delete;
    vorEvaluator& operator=(const vorEvaluator&) = delete;

    /// Evaluates `text` in the scope.
    vorParameterPtr evaluate(const utString& text);
    /// Asks `p` to evaluate itself.
    static vorParameterPtr evaluate(const vorParameterPtr& p);

    void set_scope(const vorParameter* scope) { m_scope = scope; }
    const vorParameter* get_scope() const { return m_scope; }
    /// The decimal point number literals may use besides the locale's, until
    /// strict_decimal().
    static constexpr char default_alt_decimal = ',';
    /// Makes "." the only decimal point of number literals (no decimal comma).
    void strict_decimal() { m_alt_decimal = '.'; }
    /// The parameters the last evaluation referred to, each once, in the order
    /// first met.
    void get_paramset(vorParameterPtrcoDList& out) const { out = m_paramset; }
    const vorParameterPtrcoDList& paramset() const { return m_paramset; }
    /// True when the last evaluation referred to a function.
    bool has_function_param() const { return m_has_function_param; }
    /// The expression text as the tokenizer left it: argument separators are
    /// ";" and decimal points of numbers the locale's, as far as the last
    /// evaluation read the text.
    const utString& get_expr() const { return m_expr; }

    /// Expands the interpolations of `text` with values from the scope.
    utString interpolate_string(const utString& text);
    /// Rewrites argument separators to ";" and decimal points of number
    /// literals to `to`, leaving everything else as it is. Both "." and ","
    /// are read as decimal points whatever `from` says.
    utString translate(const utString& text, char from, char to);
    /// From the stored form to the user's: decimal points become the locale's.
    static utString localize(const utString& text);
    /// From the user's form to the stored one: decimal points become ".".
    static utString neutralize(const utString& text);

protected:
    enum TokenKind {
        TOKEN_END = 0,
        TOKEN_OPERATOR = 1,
        TOKEN_NAME = 2,
        TOKEN_CALL = 3,
        TOKEN_VALUE = 4
    };

    /// The operator vocabulary, filled once by init_tables().
    static utStringintcoTable s_binary_ops;
    static utStringintcoTable s_prefix_ops;
    static utStringintcoTable s_postfix_ops;
    static utStringutStringcoTable s_equiv_alpha_ops;

    static void init_tables();
    /// Reads one token at the current position; `expect_operand` says whether
    /// prefix (non-zero) or postfix (zero) operators are looked up.
    void next_token(vorCharTypes& types, int expect_operand);
    bool check_parentheses() const { return m_paren_depth == 0 && m_brace_depth == 0; }
    virtual vorParameterPtr expression(int min_prec, int resolve_names, int skip,
                                       vorCharTypes& types);
    virtual vorParameterPtr primary(int resolve_names, int skip, vorCharTypes& types);

private:
    // Compiled plans of texts follow this parser's grammar and value steps.
    friend class vorPlanCompiler;
    friend class vorPlanRunner;

    void reset_state();
    /// The binding strength of the binary operator `op` (s_binary_ops), or
    /// null when it is none.
    static const int* binary_level(const utString& op);
    void begin(const utString& text);
    /// The compiled form of `text` for this evaluator's decimal points, from
    /// the cache or made now; empty when the text cannot be compiled.
    std::shared_ptr<const vorProgram> program_for(const utString& text);
    /// program_for, with the cache already asked: `found` is its program,
    /// `seen` whether it had met the text.
    std::shared_ptr<const vorProgram> program_for(const utString& text, const vorProgram* found,
                                                  bool seen);
    /// Evaluates `text` by scanning it.
    vorParameterPtr scan(const utString& text);
    std::shared_ptr<const vorProgram> compile(const utString& text);
    /// Reads the next token of the text in compilation; false when the text
    /// ends or cannot be read.
    bool compile_token(vorCharTypes& types, vorProgram& program);
    vorParameterPtr run(std::shared_ptr<const vorProgram> program);
    /// next_token from the program.
    void next_program_token(int expect_operand);
    /// The length of the text being read, in code points.
    std::size_t expr_length() const;
    void set_wide_expr();
    const utString& normalised_expr();
    vorParameterPtr syntax_error();
    bool token_is(const char* op) const;
    void record_param(const vorParameterPtr& p);
    vorParameterPtr get_named_par(int resolve_names, int skip, vorCharTypes& types);
    std::vector<vorParameterPtr> parse_list(int skip, vorCharTypes& types);
    bool is_empty_list(std::vector<vorParameterPtr>& values, const char* close, int tokens_before);
    static vorParameterPtr make_array(std::vector<vorParameterPtr>& values);
    vorParameterPtr call(const vorParameterPtr& callee, int skip, vorCharTypes& types);
    vorParameterPtr bracket_list(const char* close, int skip, vorCharTypes& types);
    vorParameterPtr binary(const vorParameterPtr& lhs, int level, int skip, vorCharTypes& types);
    bool scan_number(vorCharTypes& types, bool after_number);
    void scan_name(vorCharTypes& types, int expect_operand);
    void scan_string();
    bool scan_symbol(int expect_operand);
    bool interpolate_marker(utString& result, std::size_t open, bool short_form, std::size_t end);
    bool short_form_complete() const;
    /// True when the tokenizer stopped at text it could not read (an
    /// unterminated string, a malformed number, an unknown symbol).
    bool lexical_error_pending() const {
        return m_token_kind == TOKEN_END && !m_token_value.is_null();
    }
    static bool is_error(const vorParameterPtr& p) {
        return p->type() == TYPE_ERROR && !p->is_ref();
    }

    utString m_expr;
    vorWideString m_wide_expr;
    int m_pos = 0;
    /// Where the tokenizer stops reading: the end of the text, or the end of
    /// the name run while a short-form "$name" is read.
    std::size_t m_end = 0;
    int m_token_kind = TOKEN_END;
    int m_token_count = 0;
    vorParameterPtr m_token_value;
    utString m_token;
    const vorParameter* m_scope = nullptr;
    char m_list_sep = ';';
    char m_decimal_point = '.';
    char m_list_sep_out = ';';
    char m_alt_decimal = default_alt_decimal;
    int m_paren_depth = 0;
    int m_brace_depth = 0;
    bool m_after_number = false;
    bool m_rewritten = false;
    bool m_translating = false;
    /// The program being run, and the index of its next token.
    std::shared_ptr<const vorProgram> m_program;
    std::size_t m_next_token = 0;
    vorParameterPtrcoStack m_arg_stack;
    vorParameterPtrcoDList m_paramset;
    /// The length up to which m_paramset is searched rather than indexed.
    static constexpr std::size_t paramset_scanned = 8;
    /// The nodes of m_paramset once it is longer, so that recording one is
    /// O(1); empty before.
    std::unordered_set<const vorParameter*> m_paramset_members;
    bool m_has_function_param = false;
};

#endif // VORPARAMETER_EXPRESSION_VOREVALUATOR_H
