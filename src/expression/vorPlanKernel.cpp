//===- vorPlanKernel.cpp - A plan's arithmetic on plain numbers -----------===//
//
// vorPlanKernelCompiler writes a plan's frames out in postfix order, as the
// plan's run would take their values: a frame's operand, then for each of
// its operators the right operand's frame and the operator. The recursion
// follows the plan's frames, which nest no deeper than the evaluator allows.
//
//===----------------------------------------------------------------------===//

#include "vorPlanKernel.h"

#include "vorPlan.h"

#include "parameter/vorReadMemo.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"

#include <algorithm>
#include <array>

class vorPlanKernelCompiler {
public:
    explicit vorPlanKernelCompiler(const vorPlan& plan)
        : m_plan(plan) {}

    vorPlanKernel compile() {
        std::uint32_t values = 0;
        if (!frame(m_plan.m_top, 1, false, values) || m_kernel.m_steps.back().code == Step::NAME)
            return vorPlanKernel();
        m_kernel.m_stack.resize(m_max_height);
        return std::move(m_kernel);
    }

private:
    using Step = vorPlanKernel::Step;
    using Operand = vorPlan::Operand;
    using PlanStep = vorPlan::Step;

    void push(Step step) {
        m_kernel.m_steps.push_back(step);
        if (step.code == Step::NUMBER || step.code == Step::NAME)
            ++m_height;
        else if (step.code == Step::BINARY)
            --m_height;
        else if (step.code == Step::CALL)
            m_height = m_height - step.count + 1;
        m_max_height = std::max(m_max_height, m_height);
    }

    /// Writes out frame `index`, held at nesting level `depth`. A list of
    /// arguments may hold commas; `values` counts the values it leaves.
    bool frame(std::uint32_t index, int depth, bool arguments, std::uint32_t& values) {
        m_kernel.m_depth = std::max(m_kernel.m_depth, depth);
        const vorPlan::Frame& frame = m_plan.m_frames[index];
        std::size_t next = 0;
        if (!operand(frame, depth, next))
            return false;
        values = 1;
        for (; next < frame.steps.size(); ++next) {
            const PlanStep& step = frame.steps[next];
            if (values > 1 && step.kind != PlanStep::COMMA)
                return false;
            if (!this->step(step, depth, arguments, values))
                return false;
        }
        return true;
    }

    /// The frame's operand; `next` becomes the first of its steps still to
    /// write (past the call of a function name).
    bool operand(const vorPlan::Frame& frame, int depth, std::size_t& next) {
        const Operand& operand = frame.primary;
        Step step;
        std::uint32_t values = 0;
        switch (operand.kind) {
        case Operand::NUMBER:
            step.number = {operand.number, SUB_NUMBER, vorDimensions(DIM_NONE)};
            push(step);
            return true;
        case Operand::NAME:
            step.code = Step::NAME;
            step.name = operand.index;
            push(step);
            return true;
        case Operand::FUNCTION:
            if (frame.steps.empty() || frame.steps[0].kind != PlanStep::CALL ||
                !this->frame(frame.steps[0].frame, depth + 1, true, values) ||
                values > vorPlanKernel::max_arguments)
                return false;
            step.code = Step::CALL;
            step.name = operand.index;
            step.count = values;
            push(step);
            next = 1;
            return true;
        case Operand::PREFIX:
            if ((operand.op != "-" && operand.op != "+") ||
                !this->frame(operand.index, depth + 1, false, values))
                return false;
            step.code = Step::SIGN;
            step.negate = operand.op == "-";
            push(step);
            return true;
        case Operand::GROUP:
            return !operand.braces && this->frame(operand.index, depth + 1, false, values);
        default:
            return false;
        }
    }

    bool step(const PlanStep& planned, int depth, bool arguments, std::uint32_t& values) {
        Step step;
        switch (planned.kind) {
        case PlanStep::BINARY: {
            if (planned.numeric == NUMERIC_OTHER || vorIsLogicalOp(planned.numeric))
                return false;
            std::uint32_t ignored = 0;
            if (!frame(planned.frame, depth + 1, false, ignored))
                return false;
            step.code = Step::BINARY;
            step.numeric = planned.numeric;
            push(step);
            return true;
        }
        case PlanStep::POSTFIX:
            if (!planned.unit)
                return false;
            step.code = Step::UNIT;
            step.unit = planned.unit;
            push(step);
            return true;
        case PlanStep::COMMA: {
            std::uint32_t ignored = 0;
            if (!arguments || !frame(planned.frame, depth + 1, false, ignored))
                return false;
            ++values;
            return true;
        }
        default:
            return false;
        }
    }

    const vorPlan& m_plan;
    vorPlanKernel m_kernel;
    std::size_t m_height = 0;
    std::size_t m_max_height = 0;
};

vorPlanKernel vorPlanKernel::compile(const vorPlan& plan) {
    return vorPlanKernelCompiler(plan).compile();
}

bool vorPlanKernel::read_quietly(const vorParameter* node, vorNumericValue& number) {
    if (!node || &node->ut_dynamic_type() != &vorParameterNumeric::ut_static_type() ||
        node->is_evaluating())
        return false;
    const auto& numeric = static_cast<const vorParameterNumeric&>(*node);
    if (!numeric.quiet_value(number.value))
        return false;
    number.kind = static_cast<vorParameterSubType>(numeric.m_subtype);
    number.dim = numeric.m_dim;
    return true;
}

namespace {

bool take(const vorNumericOutcome& outcome, vorNumericValue& number) {
    if (outcome.failed())
        return false;
    number = outcome.number;
    return true;
}

} // namespace

const vorLibKernel* vorPlanKernel::kernel_of(const Step& call, const vorParameter& function) {
    // The address alone could be a new node's: the tree generation tells
    // that no member was released meanwhile, the table version that no
    // entry was replaced.
    const std::uint64_t version = vorLibTableVersion();
    const std::uint64_t generation = vorTreeGeneration::current();
    if (call.function != &function || call.table_version != version ||
        call.generation != generation) {
        call.function = &function;
        call.table_version = version;
        call.generation = generation;
        call.kernel = vorLibKernelOf(function);
    }
    return call.kernel;
}

bool vorPlanKernel::run(const std::vector<vorCachedName>& names, const vorParameter& scope,
                        vorNumericValue& result) const {
    if (m_steps.empty() || vorEvalLevel::limit_reached() ||
        vorEvalLevel::depth() + m_depth > vorEvaluator::max_nesting)
        return false;
    const bool functions_only = vorEvalFunction::functions_only();
    vorNumericValue* stack = m_stack.data();
    std::size_t top = 0; // the number of values on the stack
    bool called = false;
    for (const Step& step : m_steps) {
        switch (step.code) {
        case Step::NUMBER:
            stack[top++] = step.number;
            break;
        case Step::NAME:
            if (!read_quietly(names[step.name].remembered(scope, functions_only), stack[top++]))
                return false;
            break;
        case Step::BINARY:
            --top;
            if (!take(vorApplyNumericOp(step.numeric, stack[top - 1], stack[top]), stack[top - 1]))
                return false;
            break;
        case Step::SIGN:
            if (!take(vorApplySign(step.negate, stack[top - 1]), stack[top - 1]))
                return false;
            break;
        case Step::UNIT:
            if (stack[top - 1].kind != SUB_NUMBER ||
                !take(vorApplyLengthUnit(*step.unit, stack[top - 1]), stack[top - 1]))
                return false;
            break;
        case Step::CALL: {
            // A called name is resolved in the functions-only mode.
            const vorParameter* function = names[step.name].remembered(scope, true);
            const vorLibKernel* kernel = function ? kernel_of(step, *function) : nullptr;
            if (!kernel || kernel->arity != step.count)
                return false;
            top -= step.count;
            std::array<double, max_arguments> numbers{};
            for (std::size_t i = 0; i < step.count; ++i)
                numbers[i] = stack[top + i].value;
            if (!take(kernel->apply(numbers.data()), stack[top++]))
                return false;
            called = true;
            break;
        }
        }
    }
    // A read that called a function is not remembered for other paths of
    // the read, as when the plan runs (the memo cannot tell a standard
    // function from one that reads a clock), so that both count the same
    // evaluations against the read's budget. Only a kernel that answers
    // disturbs the memo: one that gives up leaves that to the plan.
    if (called)
        vorReadMemo::disturb();
    // Field by field: the last step wrote them so, and one wide read of them
    // would wait for those writes to land.
    result.value = stack[0].value;
    result.kind = stack[0].kind;
    result.dim = stack[0].dim;
    return true;
}
