//===- vorPlan.cpp - Expressions compiled for reading values --------------===//
//
// vorPlanCompiler walks a token stream with the evaluator's grammar
// (vorEvaluator::expression, primary, call, bracket_list), replaying the
// tokens as next_program_token does, and writes down what it decides.
// vorPlanRunner then takes the evaluator's value steps over that record.
// Each function below names the evaluator function it mirrors; a change to
// one must be made to the other, and the differential test compares them.
//
//===----------------------------------------------------------------------===//

#include "vorPlan.h"

#include "parameter/vorReadMemo.h"
#include "vorProgram.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>

vorParameterPtr vorPlanResult::to_parameter() const {
    if (!node.is_null())
        return node;
    return vorParameterPtr(new vorParameterNumeric(number.kind, number.dim, number.value));
}

//===----------------------------------------------------------------------===//
// Compiling
//===----------------------------------------------------------------------===//

class vorPlanCompiler {
public:
    explicit vorPlanCompiler(const vorProgram& program)
        : m_program(program) {}

    std::unique_ptr<vorPlan> compile() {
        m_plan = std::make_unique<vorPlan>();
        std::uint32_t top = 0;
        if (!expression(0, top) || m_kind != vorEvaluator::TOKEN_END || !at_end())
            return nullptr;
        m_plan->m_top = top;
        m_plan->m_kernel = vorPlanKernel::compile(*m_plan);
        return std::move(m_plan);
    }

private:
    using Operand = vorPlan::Operand;
    using Step = vorPlan::Step;

    /// next_program_token.
    void next_token(int expect_operand) {
        m_kind = vorEvaluator::TOKEN_END;
        if (m_next == m_program.tokens.size()) {
            m_pos = static_cast<int>(m_program.length);
            return;
        }
        ++m_count;
        const std::uint32_t index = m_program.tokens[m_next++][expect_operand ? 1 : 0];
        m_token = &m_program.readings[index];
        m_kind = m_token->kind;
        m_pos = m_token->end;
        m_paren_depth += m_token->paren_delta;
        m_brace_depth += m_token->brace_delta;
    }

    /// What run() tests of the position when the parse ends.
    bool at_end() const {
        return static_cast<std::size_t>(m_pos) == m_program.length && m_paren_depth == 0 &&
               m_brace_depth == 0;
    }

    bool token_is(const char* op) const {
        return m_kind == vorEvaluator::TOKEN_OPERATOR && m_token->text == op;
    }

    /// expression(): false for what a plan does not take.
    bool expression(int min_prec, std::uint32_t& frame_index) {
        if (++m_depth > vorEvaluator::max_nesting)
            return false;
        frame_index = static_cast<std::uint32_t>(m_plan->m_frames.size());
        m_plan->m_frames.emplace_back();
        Operand operand;
        if (!primary(operand))
            return false;
        m_plan->m_frames[frame_index].primary = std::move(operand);
        while (m_kind != vorEvaluator::TOKEN_END) {
            if (m_kind != vorEvaluator::TOKEN_OPERATOR)
                return false;
            const int* level = vorEvaluator::s_binary_ops.find(m_token->text);
            if (!level && !vorEvaluator::s_postfix_ops.contains(m_token->text))
                break; // a closing bracket: the caller's business
            if (level && *level < min_prec)
                break;
            Step step;
            if (!(level ? operation(*level, step) : postfix(step)))
                return false;
            step.at_end = at_end();
            m_plan->m_frames[frame_index].steps.push_back(std::move(step));
        }
        --m_depth;
        return true;
    }

    bool postfix(Step& step) {
        step.kind = Step::POSTFIX;
        step.op = m_token->text;
        step.unit = vorFindLengthUnit(step.op);
        next_token(0);
        return true;
    }

    bool operation(int level, Step& step) {
        const utString& op = m_token->text;
        if (op == "(")
            return call(step);
        if (op == "[" || op == "{" || op == "." || op == "&" || op == "|")
            return false;
        step.kind = op == "," ? Step::COMMA : Step::BINARY;
        step.op = op;
        step.numeric = vorFindNumericOp(op);
        return expression(op == "," ? 2 : level + 1, step.frame);
    }

    /// call(): the arguments, the closing bracket and the token after it.
    bool call(Step& step) {
        bool empty = false;
        if (!list(")", empty, step.frame))
            return false;
        step.kind = empty ? Step::EMPTY_CALL : Step::CALL;
        next_token(0);
        return true;
    }

    /// parse_list() and is_empty_list(), up to the closing bracket.
    bool list(const char* close, bool& empty, std::uint32_t& frame_index) {
        // "()" and "{}": the parse meets the closing bracket where an operand
        // was expected, which is an empty list.
        const std::size_t next = m_next;
        const int pos = m_pos;
        const int count = m_count;
        const int parens = m_paren_depth;
        const int braces = m_brace_depth;
        next_token(1);
        empty = token_is(close);
        if (empty)
            return true;
        m_next = next;
        m_pos = pos;
        m_count = count;
        m_paren_depth = parens;
        m_brace_depth = braces;
        return expression(0, frame_index) && token_is(close);
    }

    /// primary().
    bool primary(Operand& operand) {
        next_token(1);
        switch (m_kind) {
        case vorEvaluator::TOKEN_NAME:
        case vorEvaluator::TOKEN_CALL:
            return name(operand);
        case vorEvaluator::TOKEN_VALUE:
            if (m_token->string_literal || !std::isfinite(m_token->number))
                return false;
            operand.kind = Operand::NUMBER;
            operand.number = m_token->number;
            next_token(0);
            return true;
        case vorEvaluator::TOKEN_OPERATOR:
            break;
        default:
            return false;
        }
        if (vorEvaluator::s_prefix_ops.contains(m_token->text)) {
            operand.kind = Operand::PREFIX;
            operand.op = m_token->text;
            return expression(11, operand.index);
        }
        if (token_is("(") || token_is("{")) {
            const bool braces = token_is("{");
            bool empty = false;
            if (!list(braces ? "}" : ")", empty, operand.index))
                return false;
            operand.kind = empty ? Operand::EMPTY_GROUP : Operand::GROUP;
            operand.braces = braces;
            next_token(0);
            return true;
        }
        return false;
    }

    /// get_named_par().
    bool name(Operand& operand) {
        if (vorequal_nocase(m_token->text.view(), "this"))
            return false;
        operand.kind = m_kind == vorEvaluator::TOKEN_CALL ? Operand::FUNCTION : Operand::NAME;
        operand.index = static_cast<std::uint32_t>(m_plan->m_names.size());
        m_plan->m_names.emplace_back(m_token->text);
        next_token(0);
        return true;
    }

    const vorProgram& m_program;
    std::unique_ptr<vorPlan> m_plan;
    const vorProgramToken* m_token = nullptr;
    int m_kind = vorEvaluator::TOKEN_END;
    std::size_t m_next = 0;
    int m_pos = 0;
    int m_count = 0;
    int m_paren_depth = 0;
    int m_brace_depth = 0;
    int m_depth = 0;
};

std::unique_ptr<vorPlan> vorPlan::compile(const vorProgram& program) {
    return vorPlanCompiler(program).compile();
}

std::size_t vorPlan::footprint() const {
    std::size_t bytes = sizeof(vorPlan) + m_frames.capacity() * sizeof(Frame) +
                        m_names.capacity() * sizeof(vorCachedName) + m_kernel.footprint();
    for (const Frame& frame : m_frames)
        bytes += frame.steps.capacity() * sizeof(Step);
    return bytes;
}

//===----------------------------------------------------------------------===//
// Running
//===----------------------------------------------------------------------===//

namespace {

using Value = vorPlanResult;

bool is_error(const Value& value) {
    return !value.node.is_null() && value.node->type() == TYPE_ERROR && !value.node->is_ref();
}

/// A parameter that is a plain number: its operators are the numeric's own.
const vorParameterNumeric* as_number(const Value& value) {
    const vorParameter* node = value.node.get();
    if (&node->ut_dynamic_type() != &vorParameterNumeric::ut_static_type())
        return nullptr;
    return static_cast<const vorParameterNumeric*>(node);
}

bool is_number(const Value& value) {
    return value.node.is_null() || as_number(value);
}

/// The value as the evaluator holds it, made a parameter in place when it is
/// a number: a handle that is the only one where the evaluator's would be,
/// since a string or array held once may be changed in place.
vorParameterPtr& held(Value& value) {
    if (value.node.is_null())
        value.node = value.to_parameter();
    return value.node;
}

Value boxed(vorParameterPtr node) {
    Value value;
    value.node = std::move(node);
    return value;
}

/// Makes `value` the outcome of an operator.
void set_outcome(Value& value, const vorNumericOutcome& outcome) {
    if (outcome.failed()) {
        value.node = vorParameterError::create(outcome.error());
        return;
    }
    value.node.reset();
    value.number = outcome.number;
}

Value outcome_value(const vorNumericOutcome& outcome) {
    Value value;
    set_outcome(value, outcome);
    return value;
}

} // namespace

class vorPlanRunner {
public:
    vorPlanRunner(const vorPlan& plan, const vorParameter& scope)
        : m_plan(plan)
        , m_scope(scope) {}

    /// vorEvaluator(&scope).evaluate(text), with the text's plan first.
    static Value evaluate_text(const vorParameter& scope, const utString& text,
                               const vorTextLookup& lookup) {
        if (!lookup.compiled)
            return boxed(vorEvaluator(&scope).evaluate(text));
        if (lookup.program && lookup.program->plan) {
            // The run may evaluate other texts, which may change the cache.
            const std::shared_ptr<const vorProgram> held = lookup.program->shared_from_this();
            return held->plan->run(scope);
        }
        vorEvaluator evaluator(&scope);
        if (auto program = evaluator.program_for(text, lookup.program, lookup.seen))
            return boxed(evaluator.run(std::move(program)));
        return boxed(evaluator.scan(text));
    }

    /// vorEvaluator::run.
    Value run() {
        Value result = expression(m_plan.m_top);
        if (m_stopped && !m_stopped_at_end)
            result = boxed(vorParameterError::create(ERR_EXPRESSION));
        if (vorEvalLevel::limit_reached())
            result = boxed(vorEvalLevel::settle(result.to_parameter()));
        return result;
    }

private:
    using Operand = vorPlan::Operand;
    using Step = vorPlan::Step;

    /// The parse ends here with `error` (the evaluator's TOKEN_END).
    Value stop(Value error, bool at_end) {
        if (!m_stopped) {
            m_stopped = true;
            m_stopped_at_end = at_end;
        }
        return error;
    }

    /// expression().
    Value expression(std::uint32_t frame_index) {
        vorEvalLevel nesting(EVAL_NESTED);
        if (nesting.refused())
            return stop(boxed(vorParameterError::create(ERR_EXPRESSION)), false);
        const vorPlan::Frame& frame = m_plan.m_frames[frame_index];
        Value lhs = primary(frame.primary);
        if (m_stopped)
            return lhs;
        for (const Step& step : frame.steps) {
            operation(step, lhs);
            if (m_stopped)
                return lhs;
            if (is_error(lhs))
                return stop(std::move(lhs), step.at_end);
        }
        return lhs;
    }

    /// One turn of the operator loop: `lhs` becomes what the step makes.
    void operation(const Step& step, Value& lhs) {
        switch (step.kind) {
        case Step::POSTFIX:
            lhs = postfix(step, lhs);
            return;
        case Step::CALL:
        case Step::EMPTY_CALL:
            lhs = call(step, lhs);
            return;
        case Step::COMMA: {
            Value rhs = expression(step.frame);
            if (is_error(rhs)) {
                lhs = stop(std::move(rhs), step.at_end);
                return;
            }
            m_arg_stack.push_back(std::move(lhs));
            lhs = std::move(rhs);
            return;
        }
        default:
            binary(step, lhs);
        }
    }

    /// binary(), without the short-circuits a plan never holds.
    void binary(const Step& step, Value& lhs) {
        Value rhs = expression(step.frame);
        if (is_error(rhs)) {
            lhs = stop(std::move(rhs), step.at_end);
            return;
        }
        const bool arithmetic = step.numeric != NUMERIC_OTHER && !vorIsLogicalOp(step.numeric);
        if (arithmetic && is_number(lhs) && is_number(rhs)) {
            numeric_binary(step.numeric, lhs, rhs);
            return;
        }
        // Moved, not copied: a string made by the expression is held once,
        // so that it may be appended to in place.
        vorParameterPtr& left = held(lhs);
        const vorParameterPtr& right = held(rhs);
        if (step.op != "+" || !vorParameterString::append_in_place(left, right))
            left = left->operate_binary(step.op, right);
    }

    /// vorParameterNumeric::read_operand for either kind of number: the
    /// failure, or an empty handle and the number.
    static vorParameterPtr read_operand(const Value& operand, vorNumericValue& number) {
        if (operand.node.is_null()) {
            number = operand.number;
            return vorParameterPtr();
        }
        const vorParameterNumeric& node = *as_number(operand);
        // A parsed literal with no callback and no range reads as its cache.
        vorParameterPtr failure;
        if (!node.quiet_value(number.value))
            failure = node.read_operand(number.value);
        number.kind = node.subtype();
        number.dim = node.get_dim();
        return failure;
    }

    /// vorParameterNumeric::operate_binary of two numbers, into `lhs`.
    static void numeric_binary(vorNumericOp op, Value& lhs, const Value& rhs) {
        vorNumericValue a;
        vorParameterPtr failure = read_operand(lhs, a);
        vorNumericValue b;
        if (failure.is_null())
            failure = read_operand(rhs, b);
        if (!failure.is_null())
            lhs.node = std::move(failure);
        else
            set_outcome(lhs, vorApplyNumericOp(op, a, b));
    }

    /// The postfix branch of expression(), with operate_postfix of a number.
    static Value postfix(const Step& step, Value& lhs) {
        const bool unit_of_number =
            step.unit && is_number(lhs) &&
            (lhs.node.is_null() ? lhs.number.kind : lhs.node->subtype()) == SUB_NUMBER;
        if (!unit_of_number)
            return boxed(held(lhs)->operate_postfix(step.op));
        vorNumericValue a;
        if (vorParameterPtr failure = read_operand(lhs, a); !failure.is_null())
            return boxed(std::move(failure));
        return outcome_value(vorApplyLengthUnit(*step.unit, a));
    }

    /// The prefix branch of primary(), with operate_prefix of a number.
    static Value prefix(const utString& op, Value& operand) {
        if (is_error(operand))
            return operand;
        const bool negate = op == "-";
        if (!is_number(operand) || (!negate && op != "+"))
            return boxed(held(operand)->operate_prefix(op));
        vorNumericValue a;
        if (vorParameterPtr failure = read_operand(operand, a); !failure.is_null())
            return boxed(std::move(failure));
        return outcome_value(vorApplySign(negate, a));
    }

    /// parse_list() and is_empty_list(): runs a list. Its values are
    /// `before` (those the commas passed on, in written order) and then
    /// `last`, none when `empty`. False when the parse ended inside it, with
    /// `last` what it ended with.
    bool list(bool empty, std::uint32_t frame_index, std::vector<Value>& before, Value& last) {
        if (empty) {
            // The evaluator enters a level for the operand it expected.
            vorEvalLevel nesting(EVAL_NESTED);
            if (nesting.refused()) {
                last = stop(boxed(vorParameterError::create(ERR_EXPRESSION)), false);
                return false;
            }
            return true;
        }
        const std::size_t depth = m_arg_stack.size();
        last = expression(frame_index);
        if (m_stopped)
            return false;
        const auto first = m_arg_stack.begin() + static_cast<std::ptrdiff_t>(depth);
        before.assign(std::make_move_iterator(first), std::make_move_iterator(m_arg_stack.end()));
        m_arg_stack.resize(depth);
        return true;
    }

    /// make_array() of a list's values, each as the evaluator holds it.
    static vorParameterPtr array_of(bool empty, std::vector<Value>& before, Value& last) {
        std::vector<vorParameterPtr> parameters;
        parameters.reserve(before.size() + 1);
        for (Value& value : before)
            parameters.push_back(std::move(held(value)));
        if (!empty)
            parameters.push_back(std::move(held(last)));
        return vorEvaluator::make_array(parameters);
    }

    /// call().
    Value call(const Step& step, Value& callee) {
        const bool empty = step.kind == Step::EMPTY_CALL;
        std::vector<Value> before;
        Value last;
        if (!list(empty, step.frame, before, last))
            return last;
        vorParameterPtr array = array_of(empty, before, last);
        const vorParameterPtr& function = held(callee);
        // A function may read a clock or change the tree: no value computed
        // before or during the call is reused after it.
        vorReadMemo::disturb();
        vorParameterPtr result = function->operate_binary("(", array);
        vorReadMemo::disturb();
        return boxed(std::move(result));
    }

    /// bracket_list().
    Value group(const Operand& operand) {
        const bool empty = operand.kind == Operand::EMPTY_GROUP;
        std::vector<Value> before;
        Value last;
        if (!list(empty, operand.index, before, last))
            return last;
        if (!operand.braces && !empty && before.empty())
            return last;
        return boxed(array_of(empty, before, last));
    }

    /// get_named_par().
    Value name(const Operand& operand) {
        const vorCachedName& name = m_plan.m_names[operand.index];
        Value result;
        if (operand.kind == Operand::FUNCTION) {
            vorEvalFunction functions_only(EVAL_FUNCTIONS_ONLY);
            result.node = name.resolve(m_scope);
        } else {
            result.node = name.resolve(m_scope);
        }
        // A parameter that is being evaluated right now can only be reached
        // through a cycle of expressions.
        if (result.node->is_evaluating()) {
            vorReadMemo::disturb(); // what a cycle answers depends on its entry
            result.node = vorParameterError::create(ERR_EXPRESSION);
        }
        return result;
    }

    /// primary().
    Value primary(const Operand& operand) {
        switch (operand.kind) {
        case Operand::NAME:
        case Operand::FUNCTION:
            return name(operand);
        case Operand::NUMBER: {
            Value value;
            value.number = {operand.number, SUB_NUMBER, vorDimensions(DIM_NONE)};
            return value;
        }
        case Operand::PREFIX: {
            Value value = expression(operand.index);
            if (m_stopped)
                return value;
            return prefix(operand.op, value);
        }
        default:
            return group(operand);
        }
    }

    const vorPlan& m_plan;
    const vorParameter& m_scope;
    std::vector<Value> m_arg_stack;
    bool m_stopped = false;
    bool m_stopped_at_end = false;
};

vorPlanResult vorPlan::run(const vorParameter& scope) const {
    return vorPlanRunner(*this, scope).run();
}

namespace {

/// The program a parameter found at its last read.
struct RecentProgram {
    const vorParameter* reader = nullptr;
    const vorProgram* program = nullptr;
    std::uint64_t cache_version = 0;
};

constexpr std::size_t recent_programs = 1024;

RecentProgram& recent_program_of(const vorParameter& reader) {
    static std::array<RecentProgram, recent_programs> recent;
    const auto address = reinterpret_cast<std::uintptr_t>(&reader);
    return recent[(address / alignof(vorParameter)) % recent_programs];
}

} // namespace

vorTextLookup vorLookUpText(const vorParameter& scope, const utString& text) {
    vorTextLookup lookup;
    lookup.compiled =
        vorEvaluator::compiled() && text.size() <= vorEvaluator::max_expression_length;
    if (!lookup.compiled)
        return lookup;
    const char decimal_point = nlsUtils::decimal_point();
    RecentProgram& recent = recent_program_of(scope);
    if (recent.reader == &scope && recent.cache_version == vorProgramCache::version() &&
        recent.program->decimal_point == decimal_point && recent.program->text == text) {
        lookup.program = recent.program;
        lookup.seen = true;
        return lookup;
    }
    const vorProgramCache::Lookup found =
        vorProgramCache::find(text, decimal_point, vorEvaluator::default_alt_decimal);
    lookup.program = found.program;
    lookup.seen = found.seen;
    if (found.program)
        recent = {&scope, found.program, vorProgramCache::version()};
    return lookup;
}

bool vorComputeQuietly(const vorParameter& scope, const vorTextLookup& text,
                       vorNumericValue& number) {
    return text.program && text.program->plan && text.program->plan->compute_quietly(scope, number);
}

vorPlanResult vorEvaluateText(const vorParameter& scope, const utString& text,
                              const vorTextLookup& lookup) {
    return vorPlanRunner::evaluate_text(scope, text, lookup);
}
