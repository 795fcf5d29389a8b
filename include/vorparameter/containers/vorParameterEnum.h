//===- vorParameterEnum.h - Choices among named states ----------*- C++ -*-===//
//
// An enumeration is a scalar whose value names one of an ordered list of
// states. Each state has a name, a title shown to users, a description and an
// activity condition (an expression; empty means always active). A state's
// index is its position from 0.
//
//   vorParameterPtr method(new vorParameterEnum("raster|offset|spiral", ""));
//   method->get_string();        // "raster": an empty value selects state 0
//   method->set_string("2");     // a whole number selects by index: "spiral"
//   method->get_int();           // 2
//
// Names are looked up exactly (case-sensitive) after passing through a fixed,
// process-wide synonym table that maps names written by older data to their
// current spelling ("tubeclear" reads as "port_area_clear"); see
// lookup_state_synonym and docs/enumerations.md. States with an empty name
// are never found by name, but count for the indices of the states after
// them.
//
// The value is not checked when it is set: a value that names no state is
// stored, and the parameter is then not valid (is_valid). A value holding an
// interpolation ("${expr}") is an expression whose interpolated text names
// the state.
//
// reset() returns to the value the enumeration was made with, unless the host
// gave other defaults (set_defaults). A locked enumeration ignores
// set_string, set_int, reset and add_state.
//
// Looking a state up by name costs O(1): an index of the names is kept with
// the states.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERENUM_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERENUM_H

#include "vorparameter/expression/vorParameterScalar.h"

#include <unordered_map>

/// One state of an enumeration.
struct VOR_API vorParameterEnumState {
    utString name;
    utString title;
    utString desc;
    /// An expression evaluated in the enumeration's scope; empty when the
    /// state is always active.
    utString condition;
};

using vorParameterEnumStatecoDList = coDList<vorParameterEnumState>;

class VOR_API vorParameterEnum : public vorParameterScalar {
    UT_DECLARE_TYPE(vorParameterEnum, vorParameter)
public:
    /// No states and an empty value.
    vorParameterEnum();
    /// One state for each piece of `states` split at every "|" (so "a||b"
    /// has an empty-named state 1, and "" one empty-named state), each with
    /// no title, description or condition. The value is `value` as given, or
    /// the name of state 0 when `value` is empty.
    vorParameterEnum(const utString& states, const utString& value);

    vorParameter* create_new() const override { return new vorParameterEnum(*this); }
    vorParameterSubType subtype() const override { return SUB_ENUM; }
    vorParameterType type() const override { return TYPE_ENUM; }
    utString get_xml_typename() const override { return "enum"; }

    /// Appends a state; ignored when the enumeration is locked.
    void add_state(const utString& name, const utString& title, const utString& desc,
                   const utString& condition);
    int num_states() const { return static_cast<int>(m_states.size()); }
    /// The index of the state named `name` (after the synonym table), or -1.
    /// The first of several states of one name wins; an empty name is never
    /// found.
    int find_index(const utString& name) const;
    /// The name of state `index`, or "" when there is no such state.
    utString find_state(int index) const;
    /// The title or description of the named state (found as by find_index),
    /// or "".
    utString get_state_title(const utString& name) const;
    utString get_state_desc(const utString& name) const;
    /// True when state `index` (from the end when negative: -1 is the last)
    /// has no condition, or its condition evaluates, in this enumeration's
    /// scope, to a number whose integer value is non-zero. Any other result,
    /// an error or a missing state is inactive. A condition counts as one
    /// evaluation against the read's budget (vorEvalLevel), like an active
    /// expression, so conditions that read each other end inactive.
    bool is_state_active(int index) const;
    /// Clears every state's condition: every state becomes active.
    void strip_active_states();

    /// The index of the state the value names; 0 when it names none.
    int get_int() const override;
    /// Selects state `index`; an index with no state stores the empty value.
    /// Ignored when locked; runs the on-modify callback.
    void set_int(int index) override;
    /// A text that is a whole number of 0 or more selects the state of that
    /// index (the empty value when there is none); any other text is stored
    /// after the synonym table, whether it names a state or not ("-1" is
    /// stored as "-1", and so is a number too long for 64 bits). Ignored when
    /// locked; runs the on-modify callback.
    void set_string(const utString& text) override;
    /// True when the value (evaluated, for an expression) names a state.
    bool is_valid() const override;
    /// For an expression, the interpolated text (an error passes through);
    /// otherwise a copy of this enumeration.
    vorParameterPtr evaluate() const override;
    /// The current state's title, or its name when it has no title, through
    /// the message translator (vortranslate).
    utString get_translated_string() const override;
    /// "(ENUM) raster" and a line feed; " !" follows "ENUM" when not valid,
    /// and an expression adds " =" and the text it evaluates to when the two
    /// differ: "(ENUM) ${m} =raster".
    utString print(int indent) const override;

    /// The current spelling of a state name written by older data; any name
    /// the table does not hold is returned as it is. Exact and
    /// case-sensitive. The table is fixed (docs/enumerations.md lists it)
    /// and built on the first call.
    static utString lookup_state_synonym(const utString& name);

protected:
    vorParameterEnum(const vorParameterEnum& other) = default;

private:
    const vorParameterEnumState* state_named(const utString& name) const;

    vorParameterEnumStatecoDList m_states;
    /// Each non-empty name to the index of its first state.
    std::unordered_map<utString, int> m_index_of_name;
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERENUM_H
