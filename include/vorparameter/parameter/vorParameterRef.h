//===- vorParameterRef.h - A parameter that stands for another --*- C++ -*-===//
//
// A reference holds a reference text and resolves it, on demand, to another
// parameter: its referent. Reads, writes, operators and lookups pass through
// to the referent, and type() and subtype() are the referent's, so a reference
// to a number reads, prints and computes like that number.
//
// The reference text is one of:
//   "tool.diameter"           a path (any expression) read in the scope of
//                             the reference;
//   "id:<32 hex digits>"      a host object by its id: entity('<hex>');
//   "excl:<hex>:<name>"       a member of a host object: entity('<hex>').name;
//   "<type>:<name>"           a host entity by type and name:
//                             entity('<type>','<name>'), quoted with '"'
//                             instead when the name holds a "'".
// The functions "entity" (and "entdata", "vordata" for vorParameterData) come
// from the host's function tables.
//
// Resolution evaluates that expression and follows the result to its end, so
// chains of references collapse. It gives the Expression/Reference error when
// the expression fails or the reference would lie inside its own referent
// (a reference to itself or to an enclosing node), and the Type error when a
// required type is set and differs (or, for a required map, when the map's
// "root_type" differs from a required root type other than "*").
//
// Cycles of any length end as the Expression/Reference error: a reference met
// again while it resolves answers that error (never null, so par() is always
// safe to use). Each reference resolves at most once within one outermost
// resolution, so a chain costs time linear in its length; chains deeper than
// the evaluator's nesting limit end in the Expression/Reference error.
//
// A reference does not own its referent, which lives in a tree or with the
// host (so references that refer to each other cannot keep each other
// alive); a referent removed and released while a reference to it is being
// resolved is not supported. A reference whose text is an expression (not a
// path) keeps that value alive until it resolves again.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERREF_H
#define VORPARAMETER_PARAMETER_VORPARAMETERREF_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterRef : public vorParameter {
    UT_DECLARE_TYPE(vorParameterRef, vorParameter)
public:
    /// A reference with no text: it resolves to the Expression/Reference error.
    vorParameterRef() = default;
    /// A reference to `ref_string`, read as set_ref_string() reads it.
    explicit vorParameterRef(const utString& ref_string);
    /// Copies the reference's settings; the copy resolves on its own.
    vorParameterRef(const vorParameterRef& other);
    vorParameterRef& operator=(const vorParameterRef&) = delete;

    vorParameter* create_new() const override { return new vorParameterRef(*this); }
    /// Drops the resolved referent: the next use resolves anew.
    void reset() override;
    /// Valid when the reference resolves to a valid parameter.
    bool is_valid() const override;
    /// True when the reference resolves to an error.
    bool is_error() const override;
    /// Sets the referent's on-modify function (and returns its previous one).
    vorParameterOnModifyFn set_onmodify_callback(vorParameterOnModifyFn fn) override;
    /// "(REF", " !" when invalid, ") ", the reference text, then the
    /// referent's print after " = ", or " = (NULL REFERENCE!)" without one,
    /// or only a line feed when the target is suppressed. Deeper than 50
    /// levels of indent, " = (RECURSIVE REFERENCE!)" ends a cycle of prints.
    utString print(int indent) const override;
    int get_int() const override;
    double get_double() const override;
    utString get_string() const override;
    /// The object id of an "id" or "excl" reference; else the referent's.
    const vorRefToObjectId& get_ref_id() const override;
    void set_int(int value) override;
    void set_double(double value) override;
    /// "&text" gives the reference a new text; anything else is written to
    /// the referent (when there is one).
    void set_string(const utString& text) override;
    /// Makes this an "id" reference to `id` (unless locked).
    void set_ref_from_id(const vorRefToObjectId& id) override;
    /// From another reference: takes its reference text. Otherwise the value
    /// is written to the referent.
    void copy_value_from(const vorParameter& source) override;
    bool is_expr() const override;
    utString get_expr() const override;
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& rhs) const override;
    vorParameterPtr operate_prefix(const utString& op) const override;
    vorParameterPtr operate_postfix(const utString& op) const override;
    int size() const override;
    /// "_ref" answers a new string holding the reference text; every other
    /// key is looked up in the referent.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    vorParameterPtr remove(const vorParameterKey& key) override;
    void remove_all() override;
    /// The referent: the end of the chain, or the error that resolution gave.
    const vorParameter* get_ref() const override;
    vorParameter* get_ref() override;
    vorParameterSubType subtype() const override;
    vorParameterType type() const override;
    vorParameterPtr evaluate() const override;
    /// Equal to a reference of the same text, or to what the referent equals.
    bool is_equal(const vorParameter& other) const override;
    vorRefToObjectId get_lock_id_imp(const vorParameter& node) const override;

    /// "type:" (for a non-empty entity type) then the id and/or the text.
    utString get_ref_string() const;
    /// Reads a reference text (see the file comment); ignored when locked.
    void set_ref_string(const utString& text);
    /// The referent must be of this type (0, TYPE_ERROR, accepts any).
    void set_required_type(vorParameterType type);
    vorParameterType get_required_type() const { return m_required_type; }
    /// A referent that must be a map must also have this "root_type"; "*"
    /// (the default) accepts any and turns the check off.
    void set_ref_root_type(const utString& root_type);
    const utString& get_ref_root_type() const { return m_required_root_type; }
    /// With a non-zero flag, print() does not show the referent and tree
    /// walks do not descend through this reference.
    void set_suppress_target(int on) { m_suppress_target = on ? 1 : 0; }
    /// True when walks must not descend through this reference: its target is
    /// suppressed, or it is resolving (a walk that came round a cycle).
    bool nofollow() const { return m_suppress_target != 0 || m_resolving != 0; }
    /// Turns a path or entity reference into an "id" reference to the object
    /// id of its current referent. False, changing nothing, when the referent
    /// has no valid id or the reference is locked.
    bool lock_ref_to_id();

private:
    /// The expression that resolution evaluates; empty when there is none.
    utString reference_expression() const;
    /// Resolves (or takes the referent resolved within this outermost
    /// resolution) and returns the end of the chain, never null.
    vorParameter* referent() const;
    vorParameterPtr resolve() const;
    /// The referent when it is a parameter and not an error, else null.
    vorParameter* target() const;
    void clear_reference();
    /// Called whenever what the reference stands for may have changed.
    static void retargeted();

    utString m_entity_type;
    utString m_ref_text;
    vorRefToObjectId m_ref_id;
    vorParameterType m_required_type = TYPE_ERROR;
    utString m_required_root_type = "*";
    int m_check_root_type = 0;
    mutable vorParameterPtr m_referent;
    mutable int m_resolving = 0;
    int m_suppress_target = 0;
    /// The outermost resolution in which m_referent was resolved.
    mutable unsigned long m_epoch = 0;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERREF_H
