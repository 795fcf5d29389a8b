//===- vorParameterLibRoot.h - A root that knows the functions --*- C++ -*-===//
//
// A root under which expressions can call the standard functions: "sqrt(a)",
// "round(depth / 3; 2)". A plain vorParameterRoot answers its members and a
// few built-in names only; this root answers every name of the function
// library as well. It is the natural base class of a host's own root.
//
// A name in an expression is found by the first of these that knows it:
//   1. the members of the node whose expression is evaluated;
//   2. the enclosing nodes, upwards, skipping those of higher precedence;
//   3. the root's members, under the root's synonyms ("name" for "Name");
//   4. the root's built-in names ("rootpar", "roottype", "name", "id" and
//      the root's own type name);
//   5. the standard functions, by their lower-case names.
// A name followed by "(" finds functions only: a member "max" that holds a
// number leaves "max(a; b)" to the standard function, while a user function
// member called "max" takes its place. A host root that overrides lookup_method should ask this
// class's lookup_method for the names it does not know itself.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORPARAMETERLIBROOT_H
#define VORPARAMETER_LIBRARY_VORPARAMETERLIBROOT_H

#include "vorparameter/parameter/vorParameterRoot.h"

class VOR_API vorParameterLibRoot : public vorParameterRoot {
    UT_DECLARE_TYPE(vorParameterLibRoot, vorParameter)
public:
    /// As for vorParameterRoot.
    explicit vorParameterLibRoot(const utString& root_type = utString(), int created = 0,
                                 const utString& root_name = utString());
    vorParameterLibRoot(const vorParameterLibRoot& other) = default;

    vorParameter* create_new() const override { return new vorParameterLibRoot(*this); }
    /// The root's built-in names, then the standard functions.
    vorParameterPtr lookup_method(const vorParameterKey& key) const override;

protected:
    /// Answers a text by find_plain_text when it can, as a plain root does.
    vorParameterPtr lookup_text(std::string_view path, bool as_const) const override;

private:
    /// The whole function library (it holds no state; copies share it).
    vorParameterPtr m_library;
};

#endif // VORPARAMETER_LIBRARY_VORPARAMETERLIBROOT_H
