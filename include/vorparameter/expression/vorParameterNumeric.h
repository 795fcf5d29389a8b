//===- vorParameterNumeric.h - Numbers with dimensions ----------*- C++ -*-===//
//
// A parameter holding a number: a real, an integer, a boolean or an angle,
// always with a physical dimension (vorDimensions) and optionally a range.
// Number literals in expressions are numerics of the generic kind SUB_NUMBER,
// and arithmetic, comparison and logic between numbers are the numeric's own
// operate_binary, operate_prefix and operate_postfix (docs/expressions.md
// lists their rules).
//
// Like every scalar, the value is kept as text. A text that is a plain number
// ("12.5", "-3", "1e-3", with "." or "," as decimal point) is a literal; any
// other non-empty text is an expression, evaluated anew on every read so that
// it follows the parameters it names. A literal is parsed once: the number is
// cached until the text changes, so reading it costs no parse, allocation or
// locale lookup. A number made by the constructor writes its text when the
// text is first read (get_value and all that reads it): most are operands
// and results inside an expression, whose text nobody reads.
//
// Reading never fails: a value that does not evaluate to a number reads as
// 0.0 through get_double and as the empty string through get_string, and
// check_range reports it as out of range.
//
// A numeric must not be read from two threads at once: reads refresh the
// cache and may write the text.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORPARAMETERNUMERIC_H
#define VORPARAMETER_EXPRESSION_VORPARAMETERNUMERIC_H

#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/expression/vorParameterScalar.h"
#include "vorparameter/expression/vorRange.h"

#include <cstdint>
#include <limits>
#include <memory>

class VOR_API vorParameterNumeric : public vorParameterScalar {
    UT_DECLARE_TYPE(vorParameterNumeric, vorParameter)
public:
    /// A number of kind `subtype` (SUB_NUMBER is stored for a subtype that is
    /// no numeric kind), dimension `dim` and value `value`, written as the
    /// shortest text that reads back exactly. NaN and infinities are written
    /// as "nan", "inf" and "-inf", which are no numbers: such a parameter
    /// reads as 0.0.
    vorParameterNumeric(vorParameterSubType subtype, const vorDimensions& dim, double value);
    vorParameterNumeric(const vorParameterNumeric& other);

    /// A dimensionless SUB_BOOL numeric: 1 when `truth` is non-zero, else 0.
    static vorParameterPtr create_bool(int truth);
    /// True for the numeric kinds SUB_NUMBER to SUB_ANGLE (19 to 23).
    static bool valid_subtype(int subtype) { return subtype >= SUB_NUMBER && subtype <= SUB_ANGLE; }

    vorParameter* create_new() const override { return new vorParameterNumeric(*this); }
    vorParameterSubType subtype() const override {
        return static_cast<vorParameterSubType>(m_subtype);
    }
    vorParameterType type() const override { return TYPE_NUMERIC; }
    /// "real", "int", "bool", "angle"; empty for SUB_NUMBER.
    utString get_xml_typename() const override;
    /// "(REAL) 2*a = 10 [L]" and a line feed: the kind (" !" after it when
    /// invalid), the text, " = " and the value when the two differ, the
    /// dimension.
    utString print(int indent) const override;

    /// Runs the on-read callback, evaluates and moves the value into the
    /// range; 0.0 when the value is no number. A parsed literal without an
    /// on-read callback or a range, the common case, answers from the cache
    /// in a few inlined tests.
    double get_double() const override {
        double value = 0.0;
        return quiet_value(value) ? value : read_double();
    }
    /// get_double() rounded to the nearest integer, halves away from zero
    /// (2.5 gives 3, -2.5 gives -3). Values beyond the range of int give
    /// INT_MIN or INT_MAX; NaN gives 0.
    int get_int() const override;
    /// The text of the evaluated value: the shortest text of a literal's
    /// number ("5.0" gives "5"), the result's text for an expression, and the
    /// empty string when the value is no number and no other scalar.
    utString get_string() const override;
    /// Honour the lock, store the text and run the on-modify callback, like
    /// set_string. set_double writes the shortest exact text of the number.
    void set_double(double value) override;
    void set_int(int value) override;
    /// Stores the text and empties the cache; see vorParameterScalar.
    void set_value(const utString& text) override;

    /// True when the text is neither empty nor a plain number.
    bool is_expr() const override { return !m_literal && !get_value().empty(); }
    /// True when the value evaluates to a number.
    bool is_valid() const override;
    /// True without a range; otherwise true when the value evaluates to a
    /// number inside the range.
    bool check_range() const override;
    /// True when both read as numbers no further apart than comparison_tol().
    bool is_equal(const vorParameter& other) const override;

    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& rhs) const override;
    vorParameterPtr operate_prefix(const utString& op) const override;
    vorParameterPtr operate_postfix(const utString& op) const override;

    const vorDimensions& get_dim() const { return m_dim; }
    /// The range last set; without one, the range that is not set.
    const vorRange& get_range() const;
    void set_range(const vorRange& range) { m_range = std::make_unique<const vorRange>(range); }

    /// Evaluates the value: a literal answers from the cache (parsing its text
    /// when the cache is empty), an expression is evaluated anew. False, with
    /// `value` 0, when the value is no number. The range is not applied.
    bool get_evaluated_double(double& value) const;
    /// The last evaluated value, without evaluating; false (and 0) when the
    /// cache is empty, as it is after every change of the text.
    bool get_cached_evaluation(double& value) const;

    /// True for SUB_NUMBER and SUB_INT numerics whose value is a whole number.
    /// The test is fmod(v, 1) < 1e-15, one-sided on purpose: a negative value
    /// with a fraction passes too.
    bool is_int_value() const;
    /// The same test for SUB_NUMBER and SUB_BOOL numerics: any whole number
    /// is a truth value (non-zero is true).
    bool is_bool_value() const;
    /// True when the value reads as a number no further than comparison_tol()
    /// from `value`: a host writing back a number can keep an expression that
    /// already gives it.
    bool expression_equivalent(double value) const;
    /// The distance within which two numbers are equal: the geometry kernel's
    /// point-coincidence tolerance, read at each use.
    static double comparison_tol();

    /// set_string of `text` with the form of a plain number tidied: blanks
    /// around the text and after a sign are dropped, a "+" sign is dropped,
    /// redundant leading zeros go and a missing one is added ("- 007" gives
    /// "-7", "+.5" gives "0.5"). Any other text is stored as it is.
    void set_normalized_value(const utString& text);

private:
    // Compiled expressions read operands as the operators do.
    friend class vorPlanRunner;
    friend class vorPlanKernel;

    /// The cache's "empty" mark. A literal whose value is this very number is
    /// parsed again at each read, which is correct, only slower.
    static constexpr double empty_cache = std::numeric_limits<double>::max();

    /// Evaluates the expression and refreshes the cache from a numeric
    /// result. The one place where a numeric evaluates its text.
    vorParameterPtr evaluate_expression() const;
    /// The evaluated value (get_evaluated_double). An empty handle when the
    /// value is a number, otherwise what the evaluation gave instead: an
    /// error, or a value of another type.
    vorParameterPtr evaluate_number(double& value) const;
    /// What get_double reads: the on-read callback, the evaluated value and
    /// the range. Failures as for evaluate_number.
    vorParameterPtr read_number(double& value) const;
    /// The value, when reading it can have no effect and needs no
    /// evaluation: a parsed literal whose number is cached, with no on-read
    /// callback and no range.
    bool quiet_value(double& value) const {
        if (!m_literal || m_cache == empty_cache || has_onread_callback() || m_range)
            return false;
        value = m_cache;
        return true;
    }
    /// read_number's value, or 0.0: get_double past its fast path.
    double read_double() const;
    /// read_number for an operand of an operator: an error passes through,
    /// any other value that is no number is ERR_TYPE.
    vorParameterPtr read_operand(double& value) const;
    /// Writes the text of a number made by the constructor, which leaves it
    /// for the first reader.
    void write_deferred_value() const override;

    // Every number of a tree carries these, so they are laid out without
    // padding (the kind in one byte, beside the flags) and the rarely set
    // range lives apart.
    std::uint8_t m_subtype;
    /// The text is a plain number; set with the text.
    bool m_literal = false;
    /// The text is the exact text of m_cache, not yet written: most numbers
    /// the constructor makes are operands and results inside an expression,
    /// whose text nobody reads.
    mutable bool m_text_deferred = false;
    vorDimensions m_dim;
    mutable double m_cache = empty_cache;
    /// Null until a range is set.
    std::unique_ptr<const vorRange> m_range;
};

#endif // VORPARAMETER_EXPRESSION_VORPARAMETERNUMERIC_H
