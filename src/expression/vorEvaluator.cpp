//===- vorEvaluator.cpp - Parsing and evaluating expressions --------------===//
//
// A recursive-descent, precedence-climbing parser whose every step yields a
// parameter. Binding strength comes from the operator tables (tokenizer):
//
//   15 "."  member        14 "{"  brace          13 "("  call
//   12 "["  index         11 prefix + - !        postfix ! and units apply at once
//    9 "^"                 8 * / %                7 + -
//    6 > < >= <=           5 == !=                4 &  (short-circuit)
//    3 xor                 2 |  (short-circuit)   1 ,  (list separator)
//
// Every binary operator is left-associative. Operators are carried out by the
// operands themselves; the parser knows names, lists and error rules only.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/expression/vorEvaluator.h"

#include "parameter/vorReadMemo.h"
#include "vorProgram.h"

#include "vorparameter/containers/vorParameterTempArray.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <iterator>
#include <vector>

//===----------------------------------------------------------------------===//
// Function-name guard
//===----------------------------------------------------------------------===//

namespace {

// True while the innermost live guard is of type 0. Guards live in scopes,
// so they end in the reverse order of their start and each restores what
// it found.
bool g_functions_only = false;

// The state of the read in progress, shared by every evaluator: how deep
// evaluation is nested, how many expressions the read has evaluated, and
// whether it has met a limit.
int g_nesting = 0;
long g_evaluations = 0;
long g_max_evaluations = vorEvaluator::default_max_evaluations;
bool g_limit_reached = false;

} // namespace

vorEvalFunction::vorEvalFunction(vorEvalFunctionType type)
    : m_previous(g_functions_only) {
    g_functions_only = type == EVAL_FUNCTIONS_ONLY;
}

vorEvalFunction::~vorEvalFunction() {
    g_functions_only = m_previous;
}

bool vorEvalFunction::functions_only() {
    return g_functions_only;
}

//===----------------------------------------------------------------------===//
// Nesting and evaluation budgets
//===----------------------------------------------------------------------===//

vorEvalLevel::vorEvalLevel(vorEvalLevelKind kind) {
    if (g_nesting == 0) {
        g_evaluations = 0;
        g_limit_reached = false;
    }
    ++g_nesting;
    if (kind == EVAL_EXPRESSION)
        ++g_evaluations;
    // Once a limit is reached the read is lost: every further step is
    // refused at once, so the rest of a doubling graph unwinds in time
    // proportional to its depth.
    m_refused = g_limit_reached || g_nesting > vorEvaluator::max_nesting ||
                g_evaluations > g_max_evaluations;
    g_limit_reached = m_refused;
}

vorEvalLevel::~vorEvalLevel() {
    --g_nesting;
}

vorParameterPtr vorEvalLevel::settle(vorParameterPtr result) {
    if (g_limit_reached)
        return vorParameterError::create(ERR_EXPRESSION);
    return result;
}

bool vorEvalLevel::limit_reached() {
    return g_limit_reached;
}

int vorEvalLevel::depth() {
    return g_nesting;
}

long vorEvaluator::max_evaluations() {
    return g_max_evaluations;
}

long vorEvaluator::set_max_evaluations(long budget) {
    const long previous = g_max_evaluations;
    g_max_evaluations = budget < 1 ? 1 : budget;
    return previous;
}

//===----------------------------------------------------------------------===//
// Evaluation
//===----------------------------------------------------------------------===//

vorEvaluator::vorEvaluator(const vorParameter* scope)
    : m_scope(scope) {
    init_tables();
}

vorEvaluator::~vorEvaluator() = default;

void vorEvaluator::begin(const utString& text) {
    reset_state();
    m_expr = text;
    set_wide_expr();
    m_end = m_wide_expr.size();
}

void vorEvaluator::reset_state() {
    m_program.reset();
    m_next_token = 0;
    m_paramset.clear();
    m_paramset_members.clear();
    m_arg_stack.clear();
    m_pos = 0;
    m_token_kind = TOKEN_END;
    m_token_count = 0;
    m_token.clear();
    m_token_value.reset();
    m_paren_depth = 0;
    m_brace_depth = 0;
    m_after_number = false;
    m_has_function_param = false;
    m_list_sep = ';';
    m_list_sep_out = ';';
    m_decimal_point = nlsUtils::decimal_point();
}

void vorEvaluator::set_wide_expr() {
    m_wide_expr = vorMultiByteToWideChar::convert(m_expr.view());
    m_rewritten = false;
}

const utString& vorEvaluator::normalised_expr() {
    if (m_rewritten) {
        m_expr = utString(vorMultiByteToWideChar::convert_back(m_wide_expr));
        m_rewritten = false;
    }
    return m_expr;
}

vorParameterPtr vorEvaluator::evaluate(const vorParameterPtr& p) {
    return p->evaluate();
}

vorParameterPtr vorEvaluator::evaluate(const utString& text) {
    if (text.size() > max_expression_length) {
        begin(utString());
        return vorParameterError::create(ERR_SYNTAX);
    }
    if (compiled())
        if (std::shared_ptr<const vorProgram> program = program_for(text))
            return run(std::move(program));
    return scan(text);
}

vorParameterPtr vorEvaluator::scan(const utString& text) {
    begin(text);
    vorCharTypes types{std::u32string_view(m_wide_expr)};
    vorParameterPtr result = expression(0, 1, 0, types);
    if (static_cast<std::size_t>(m_pos) != m_wide_expr.size() || !check_parentheses())
        result = vorParameterError::create(is_error(result) || result->is_ref() ? ERR_EXPRESSION
                                                                                : ERR_SYNTAX);
    else if (!is_error(result) && lexical_error_pending())
        result = m_token_value; // "a 'b": text that cannot be read is not dropped
    normalised_expr();
    return vorEvalLevel::settle(std::move(result));
}

vorParameterPtr vorEvaluator::syntax_error() {
    m_token_kind = TOKEN_END;
    return vorParameterError::create(ERR_SYNTAX);
}

bool vorEvaluator::token_is(const char* op) const {
    return m_token_kind == TOKEN_OPERATOR && m_token == op;
}

void vorEvaluator::record_param(const vorParameterPtr& p) {
    if (p->type() == TYPE_FUNCTION) {
        m_has_function_param = true;
        return;
    }
    if (p->get_name().empty())
        return;
    // Most expressions name a few parameters, which a look along the list
    // finds sooner than a set that allocates for each: the set indexes only
    // a longer list.
    if (m_paramset.size() < paramset_scanned) {
        for (const vorParameterPtr& recorded : m_paramset)
            if (recorded.get() == p.get())
                return;
        m_paramset.reserve(paramset_scanned); // one allocation for the searched part
        m_paramset.push_back(p);
        return;
    }
    if (m_paramset_members.empty())
        for (const vorParameterPtr& recorded : m_paramset)
            m_paramset_members.insert(recorded.get());
    if (m_paramset_members.insert(p.get()).second)
        m_paramset.push_back(p);
}

vorParameterPtr vorEvaluator::expression(int min_prec, int resolve_names, int skip,
                                         vorCharTypes& types) {
    vorEvalLevel nesting(EVAL_NESTED);
    if (nesting.refused()) {
        m_token_kind = TOKEN_END;
        return vorParameterError::create(ERR_EXPRESSION);
    }
    vorParameterPtr lhs = primary(resolve_names, skip, types);
    if (!token_is("."))
        record_param(lhs);
    else if (lhs->type() == TYPE_FUNCTION)
        m_has_function_param = true;

    while (m_token_kind != TOKEN_END) {
        if (m_token_kind != TOKEN_OPERATOR)
            return syntax_error();
        const int* level = binary_level(m_token);
        if (!level) {
            if (!s_postfix_ops.contains(m_token))
                return lhs; // a closing bracket: the caller's business
            lhs = lhs->operate_postfix(m_token);
            next_token(types, 0);
        } else if (*level < min_prec) {
            return lhs;
        } else if (m_token == "[") {
            vorParameterPtr index = expression(0, 1, skip, types);
            if (!skip && is_error(index)) {
                m_token_kind = TOKEN_END;
                return index;
            }
            lhs = lhs->operate_binary("[", index);
            if (!token_is("]"))
                return syntax_error();
            next_token(types, 0);
        } else if (m_token == "(") {
            lhs = call(lhs, skip, types);
        } else if (m_token == ",") {
            vorParameterPtr rhs = expression(2, 1, skip, types);
            if (!skip && is_error(rhs)) {
                m_token_kind = TOKEN_END;
                return rhs;
            }
            m_arg_stack.push_back(lhs);
            lhs = rhs;
        } else {
            lhs = binary(lhs, *level, skip, types);
        }
        if (!skip && is_error(lhs)) {
            m_token_kind = TOKEN_END;
            return lhs;
        }
    }
    return lhs;
}

// A binary operator at `level`, the current token. "&" and "|" short-circuit:
// when the left operand decides, the right one is parsed without looking
// names up and the result is the left operand's truth.
vorParameterPtr vorEvaluator::binary(const vorParameterPtr& lhs, int level, int skip,
                                     vorCharTypes& types) {
    const utString op = m_token;
    bool short_circuit = false;
    if (!skip && op == "&")
        short_circuit = lhs->get_double() == 0.0;
    else if (!skip && op == "|")
        short_circuit = lhs->get_double() != 0.0;

    const int member = op == ".";
    vorParameterPtr rhs = expression(level + 1, !member, skip || short_circuit, types);
    if (!skip && !short_circuit && is_error(rhs)) {
        m_token_kind = TOKEN_END;
        return rhs;
    }
    if (short_circuit)
        return vorParameterNumeric::create_bool(op == "|");
    if (!skip && op == "+" && vorParameterString::append_in_place(lhs, rhs))
        return lhs;
    vorParameterPtr result = lhs->operate_binary(op, rhs);
    if (member && !token_is("."))
        record_param(result);
    return result;
}

// The values of a list after an opening bracket, in written order: the ","
// operator pushes all but the last on the argument stack.
std::vector<vorParameterPtr> vorEvaluator::parse_list(int skip, vorCharTypes& types) {
    const std::size_t depth = m_arg_stack.size();
    vorParameterPtr last = expression(0, 1, skip, types);
    std::vector<vorParameterPtr> values(
        std::make_move_iterator(m_arg_stack.begin() + static_cast<std::ptrdiff_t>(depth)),
        std::make_move_iterator(m_arg_stack.end()));
    m_arg_stack.resize(depth);
    values.push_back(std::move(last));
    return values;
}

// "f()", "{}" and "()": the only value is the error of meeting the closing
// bracket where an operand was expected. The list is then empty and the
// bracket becomes the current token again.
bool vorEvaluator::is_empty_list(std::vector<vorParameterPtr>& values, const char* close,
                                 int tokens_before) {
    if (values.size() != 1 || !is_error(values[0]) || m_token_kind != TOKEN_END ||
        m_token != close || m_token_count != tokens_before + 1)
        return false;
    values.clear();
    m_token_kind = TOKEN_OPERATOR;
    return true;
}

vorParameterPtr vorEvaluator::make_array(std::vector<vorParameterPtr>& values) {
    vorParameterPtr array(new vorParameterTempArray());
    for (vorParameterPtr& value : values)
        array->add(vorParameterKey(), std::move(value));
    return array;
}

// A call: the callee receives its arguments in a temporary array.
vorParameterPtr vorEvaluator::call(const vorParameterPtr& callee, int skip, vorCharTypes& types) {
    const int tokens_before = m_token_count;
    std::vector<vorParameterPtr> args = parse_list(skip, types);
    const bool empty = is_empty_list(args, ")", tokens_before);
    // An error in an argument ended the parse: it is the result, as in lists.
    if (!empty && m_token_kind == TOKEN_END && is_error(args.back()))
        return args.back();
    if (!token_is(")"))
        return syntax_error();
    next_token(types, 0);
    // A function may read a clock or change the tree: no value computed
    // before or during the call is reused after it.
    vorReadMemo::disturb();
    vorParameterPtr result = callee->operate_binary("(", make_array(args));
    vorReadMemo::disturb();
    return result;
}

// "{...}" is always an array; "(...)" groups one value and makes an array of
// two or more (or none).
vorParameterPtr vorEvaluator::bracket_list(const char* close, int skip, vorCharTypes& types) {
    const int tokens_before = m_token_count;
    std::vector<vorParameterPtr> values = parse_list(skip, types);
    const bool empty = is_empty_list(values, close, tokens_before);
    if (!empty && m_token_kind == TOKEN_END)
        return values.back();
    if (!token_is(close))
        return syntax_error();
    next_token(types, 0);
    if (*close == ')' && values.size() == 1)
        return values.front();
    return make_array(values);
}

vorParameterPtr vorEvaluator::primary(int resolve_names, int skip, vorCharTypes& types) {
    next_token(types, 1);
    switch (m_token_kind) {
    case TOKEN_NAME:
        return get_named_par(resolve_names, skip, types);
    case TOKEN_CALL: {
        vorEvalFunction functions_only(EVAL_FUNCTIONS_ONLY);
        return get_named_par(resolve_names, skip, types);
    }
    case TOKEN_VALUE: {
        vorParameterPtr value = std::move(m_token_value);
        next_token(types, 0);
        return value;
    }
    case TOKEN_OPERATOR:
        break;
    default:
        return m_token_value.is_null() ? syntax_error() : m_token_value;
    }

    if (s_prefix_ops.contains(m_token)) {
        const utString op = m_token;
        vorParameterPtr operand = expression(11, resolve_names, skip, types);
        if (!skip && is_error(operand))
            return operand;
        return operand->operate_prefix(op);
    }
    if (m_token == "{")
        return bracket_list("}", skip, types);
    if (m_token == "(")
        return bracket_list(")", skip, types);
    return syntax_error();
}

vorParameterPtr vorEvaluator::get_named_par(int resolve_names, int skip, vorCharTypes& types) {
    const utString name = m_token;
    vorParameterPtr result;
    if (!resolve_names || skip)
        result = vorParameterString::create_verbatim(name);
    else if (!m_scope)
        result = vorParameterError::create(ERR_INVALID_NAME);
    else if (vorequal_nocase(name.view(), "this"))
        result = vorParameterPtr(coPrfExtern(), const_cast<vorParameter*>(m_scope));
    else
        result = m_scope->resolve(vorParameterKey(name));
    // A parameter that is being evaluated right now can only be reached
    // through a cycle of expressions.
    if (result->is_evaluating()) {
        vorReadMemo::disturb(); // what a cycle answers depends on its entry
        result = vorParameterError::create(ERR_EXPRESSION);
    }
    next_token(types, 0);
    return result;
}
