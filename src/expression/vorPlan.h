//===- vorPlan.h - Expressions compiled for reading values ------*- C++ -*-===//
//
// A plan is the parse of one expression text, made once from its token
// stream (vorProgram.h) and run on every read of a parameter whose value the
// text is. Where the evaluator parses and evaluates in one pass, so that
// every read tokenises, looks names up by string and makes a parameter for
// every intermediate number, a plan has the parse already done:
//   - the parser's decisions that depend only on the tokens (which operator
//     binds, where a list ends, which reading of a word applies) are taken
//     when the plan is made;
//   - names keep their resolution between runs (vorNameCache.h);
//   - numbers stay plain doubles with their kind and dimension while the
//     operands are plain numbers and the operators arithmetic, comparison or
//     unit suffixes, computed by the functions the numeric operators
//     themselves use (vorNumericArithmetic.h); only what leaves that ground
//     becomes a parameter, and is then handed to the same operate_binary,
//     operate_prefix and operate_postfix as in the evaluator.
//
// A run takes the evaluator's steps in the evaluator's order: each nested
// operand holds a level of nesting, every operand is read by the calls the
// evaluator makes (so on-read callbacks, evaluations and the read's budget
// count the same), a function call disturbs the read memo on both sides, an
// error ends the run where it would end the parse, and the result is judged
// by where the parse would have stopped. The plan has no paramset: it serves
// reads of values, which do not record dependencies.
//
// A text becomes a plan only when it is made of number literals, names,
// function calls, brackets, the prefix, arithmetic, comparison and "xor"
// operators, unit suffixes and lists, parses without a syntax error and
// nests no deeper than the evaluator allows. Any other text (strings, "."
// and "[]" paths, "&" and "|", which short-circuit, "this") is evaluated by
// the evaluator as before.
//
// A plan whose text is plain arithmetic also has a kernel, which computes
// on doubles alone; a read tries it before it runs the plan (vorPlanKernel.h,
// vorComputeQuietly).
//
// A plan lives in the program cache beside its token stream and shares its
// bounds. It is used from one thread, like the evaluator.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_EXPRESSION_VORPLAN_H
#define VORPARAMETER_SRC_EXPRESSION_VORPLAN_H

#include "vorNumericArithmetic.h"
#include "vorPlanKernel.h"

#include "parameter/vorNameCache.h"

#include <cstdint>
#include <memory>
#include <vector>

struct vorProgram;

/// What a run gives: a parameter, or (node empty) a new number that was
/// never made into one.
struct vorPlanResult {
    vorParameterPtr node;
    vorNumericValue number;

    /// The result as a parameter, making the number's when needed.
    vorParameterPtr to_parameter() const;
};

class vorPlan {
public:
    /// The plan of a program's text, or null when the text is not one a
    /// plan takes (see the file comment).
    static std::unique_ptr<vorPlan> compile(const vorProgram& program);

    /// Runs the plan with `scope` resolving the names.
    vorPlanResult run(const vorParameter& scope) const;
    /// The plan's number by its kernel alone; false when the plan must run.
    bool compute_quietly(const vorParameter& scope, vorNumericValue& number) const {
        return m_kernel.run(m_names, scope, number);
    }

    /// An estimate of the heap the plan holds, in bytes.
    std::size_t footprint() const;

    /// One operand, as the evaluator's primary() reads it.
    struct Operand {
        enum Kind : std::uint8_t { NAME, FUNCTION, NUMBER, PREFIX, GROUP, EMPTY_GROUP };
        Kind kind = NUMBER;
        /// GROUP and EMPTY_GROUP: "{...}" rather than "(...)".
        bool braces = false;
        /// NAME, FUNCTION: the index in names; PREFIX, GROUP: the frame.
        std::uint32_t index = 0;
        double number = 0.0;
        /// PREFIX: the operator.
        utString op;
    };
    /// One turn of the evaluator's operator loop.
    struct Step {
        enum Kind : std::uint8_t { POSTFIX, BINARY, CALL, EMPTY_CALL, COMMA };
        Kind kind = BINARY;
        vorNumericOp numeric = NUMERIC_OTHER;
        /// True when an error that ends the parse here leaves nothing of
        /// the text unread: the error is then the result.
        bool at_end = false;
        /// BINARY, COMMA: the right operand's frame; CALL: the arguments'.
        std::uint32_t frame = 0;
        const vorLengthUnit* unit = nullptr;
        utString op;
    };
    /// One call of the evaluator's expression(): an operand and the
    /// operators that follow it at this frame's binding strength.
    struct Frame {
        Operand primary;
        std::vector<Step> steps;
    };

private:
    friend class vorPlanCompiler;
    friend class vorPlanRunner;
    friend class vorPlanKernelCompiler;

    std::vector<Frame> m_frames;
    std::vector<vorCachedName> m_names;
    std::uint32_t m_top = 0;
    /// The same computation on plain numbers (vorPlanKernel.h).
    vorPlanKernel m_kernel;
};

/// What the program cache knows of a text a read evaluates: asked once per
/// read, and valid until the next evaluation. A parameter read again and
/// again finds its program without hashing its text: the program each
/// parameter found last is remembered, by the parameter's address, in a
/// table of fixed size, and used while the cache has dropped no program and
/// the parameter's text is still the program's.
struct vorTextLookup {
    /// False when the text is evaluated without the cache (compiled
    /// evaluation is off, or the text is too long to compile).
    bool compiled = false;
    /// The text's program, when the cache holds one.
    const vorProgram* program = nullptr;
    /// The cache has met the text before.
    bool seen = false;
};
vorTextLookup vorLookUpText(const vorParameter& scope, const utString& text);

/// The number `text` gives in `scope`, when its plan has a kernel that
/// answers (vorPlanKernel.h): nothing was read that could have an effect, so
/// the caller need not watch for cycles or remember the value. False when
/// the text must be evaluated.
bool vorComputeQuietly(const vorParameter& scope, const vorTextLookup& text,
                       vorNumericValue& number);

/// What vorEvaluator(&scope).evaluate(text) answers, for a read of `scope`'s
/// value, `lookup` being the text's: by the text's plan when there is one,
/// otherwise as the evaluator does (which makes the plan on the text's second
/// sight).
vorPlanResult vorEvaluateText(const vorParameter& scope, const utString& text,
                              const vorTextLookup& lookup);

#endif // VORPARAMETER_SRC_EXPRESSION_VORPLAN_H
