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
//   - the parser nests at most max_nesting levels deep, counted across all
//     evaluations in progress (brackets, prefix operators, and parameters
//     whose expressions read other parameters' expressions); beyond that the
//     result is an "Expression/Reference error".
//
// Evaluators are used from the host's one thread (the operator tables and the
// nesting count are process-wide).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VOREVALUATOR_H
#define VORPARAMETER_EXPRESSION_VOREVALUATOR_H

#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/platform/vorCharTypes.h"

#include <unordered_set>
#include <vector>

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
    vorEvalFunctionType m_type;
};

class VOR_API vorEvaluator {
public:
    static constexpr int max_nesting = 400;
    static constexpr std::size_t max_expression_length = 256 * 1024;

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
    /// Makes "." the only decimal point of number literals (no decimal comma).
    void strict_decimal() { m_alt_decimal = '.'; }
    /// The parameters the last evaluation referred to, each once, in the order
    /// first met.
    void get_paramset(vorParameterPtrcoDList& out) const { out = m_paramset; }
    const vorParameterPtrcoDList& paramset() const { return m_paramset; }
    /// True when the last evaluation referred to a function.
    bool has_function_param() const { return m_has_function_param; }
    /// The expression text as the tokenizer left it: argument separators are
    /// ";" and decimal points of numbers the locale's.
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
    void begin(const utString& text);
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
    bool interpolate_marker(utString& result, std::size_t open, bool short_form,
                            char32_t& previous);
    static bool is_error(const vorParameterPtr& p) {
        return p->type() == TYPE_ERROR && !p->is_ref();
    }

    utString m_expr;
    vorWideString m_wide_expr;
    int m_pos = 0;
    int m_token_kind = TOKEN_END;
    int m_token_count = 0;
    vorParameterPtr m_token_value;
    utString m_token;
    const vorParameter* m_scope = nullptr;
    char m_list_sep = ';';
    char m_decimal_point = '.';
    char m_list_sep_out = ';';
    char m_alt_decimal = ',';
    int m_paren_depth = 0;
    int m_brace_depth = 0;
    bool m_after_number = false;
    bool m_rewritten = false;
    bool m_translating = false;
    vorParameterPtrcoStack m_arg_stack;
    vorParameterPtrcoDList m_paramset;
    /// The nodes of m_paramset, so that recording one is O(1).
    std::unordered_set<const vorParameter*> m_paramset_members;
    bool m_has_function_param = false;
};

#endif // VORPARAMETER_EXPRESSION_VOREVALUATOR_H
