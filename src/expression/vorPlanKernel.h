//===- vorPlanKernel.h - A plan's arithmetic on plain numbers ----*- C++ -*-===//
//
// Most expressions a host keeps are arithmetic over numbers of its tree:
// "a*2+b", "(a+b)*(a-b)/2+sqrt(a*a+b*b)". Their plan's run still walks
// frames, holds a level of nesting for each, takes a handle on every name
// and keeps every value ready to become a parameter, because any operand
// might turn out to be a string, call a callback or fail. The kernel of a
// plan is the same computation as a flat sequence of steps over a stack of
// plain numbers, in postfix order, taken by the same functions
// (vorNumericArithmetic.h, vorLibKernels.h).
//
// A read runs the kernel first and keeps the answer only when the kernel got
// through without meeting anything whose reading could have an effect:
//   - every name is remembered by its cached name (vorNameCache.h) and is a
//     number of the library's own type holding a parsed literal, cached,
//     with no on-read callback and no range, and not being evaluated;
//   - every called name is a standard function with a kernel;
//   - no operator and no function fails, and a unit follows a plain number;
//   - the read has reached no limit, and the plan's nesting fits in what is
//     left of the nesting budget, so no level could be refused.
// Reading such numbers and computing on them changes nothing, so when any of
// this does not hold the kernel gives up and the plan runs as before, from
// the start, with nothing to undo. A kernel that answers after calling a
// function disturbs the read memo as the plan's call would, so that both
// keep the same values and count the same evaluations.
//
// A plan has a kernel when its text is only numbers, names, calls of names
// with arguments, "(...)" around one value, prefix "+" and "-", arithmetic
// and comparison operators and length units, and its result is computed (a
// text that is one name answers that member itself, which a kernel cannot).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_EXPRESSION_VORPLANKERNEL_H
#define VORPARAMETER_SRC_EXPRESSION_VORPLANKERNEL_H

#include "vorNumericArithmetic.h"

#include "library/vorLibKernels.h"
#include "parameter/vorNameCache.h"

#include <cstdint>
#include <vector>

class vorPlan;

class vorPlanKernel {
public:
    /// The kernel of `plan`; empty when the plan is not only arithmetic.
    static vorPlanKernel compile(const vorPlan& plan);

    /// Computes the plan's number in `scope`, resolving names by `names`
    /// (the plan's); false when the plan must run instead.
    bool run(const std::vector<vorCachedName>& names, const vorParameter& scope,
             vorNumericValue& result) const;

    /// An estimate of the heap the kernel holds, in bytes.
    std::size_t footprint() const {
        return m_steps.capacity() * sizeof(Step) + m_stack.capacity() * sizeof(vorNumericValue);
    }

    /// The most arguments of a call; plans with more have no kernel.
    static constexpr std::size_t max_arguments = 4;

private:
    friend class vorPlanKernelCompiler;

    struct Step {
        enum Code : std::uint8_t { NUMBER, NAME, BINARY, SIGN, UNIT, CALL };
        Code code = NUMBER;
        vorNumericOp numeric = NUMERIC_OTHER;
        bool negate = false;
        /// NAME, CALL: the index of the name in the plan.
        std::uint32_t name = 0;
        /// CALL: how many arguments it takes from the stack.
        std::uint32_t count = 0;
        /// NUMBER: the literal, as a plain number.
        vorNumericValue number;
        const vorLengthUnit* unit = nullptr;
        /// CALL: the function its name last resolved to, with its kernel as
        /// the library's table and the trees stood then.
        mutable const vorParameter* function = nullptr;
        mutable const vorLibKernel* kernel = nullptr;
        mutable std::uint64_t table_version = 0;
        mutable std::uint64_t generation = 0;
    };

    /// The value of a name, when reading it can have no effect.
    static bool read_quietly(const vorParameter* node, vorNumericValue& number);
    static const vorLibKernel* kernel_of(const Step& call, const vorParameter& function);

    std::vector<Step> m_steps;
    /// Room for the most numbers a run keeps at once. A run calls nothing
    /// that could run another plan, so one stack per kernel serves.
    mutable std::vector<vorNumericValue> m_stack;
    /// How many levels of nesting the plan's run holds at its deepest.
    int m_depth = 0;
};

#endif // VORPARAMETER_SRC_EXPRESSION_VORPLANKERNEL_H
