//===- vorNameCache.h - A name resolved once and remembered -----*- C++ -*-===//
//
// A compiled expression names the same parameters on every run. A
// vorCachedName remembers what its name resolved to in one scope, and
// answers from memory while a fresh resolve could not answer otherwise:
//   - the scope is the same node,
//   - the tree generation (vorTreeGeneration.h) has not moved: no member
//     was added, removed or renamed, no parent changed, no reference was
//     retargeted and no synonym defined anywhere,
//   - the functions-only mode (vorEvalFunction) is the same,
//   - every node the search asked was of the library's own types, whose
//     answers depend on nothing but the shape of the tree (a host's subclass
//     may answer as it pleases, so a search through one is not kept),
//   - the answer is a member of a tree (it has a parent and its container
//     holds it), or a function of the standard library (an immutable
//     value). Errors, methods made on each lookup ("_keys", "rootpar") and
//     temporaries are looked up again each time.
// A member stays alive while its container holds it, and its container lets
// it go only by unlinking it, which moves the generation; so a remembered
// member is never released while it is remembered, and the cache holds no
// member itself. Only the library function is held, being a value of its
// own.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_PARAMETER_VORNAMECACHE_H
#define VORPARAMETER_SRC_PARAMETER_VORNAMECACHE_H

#include "parameter/vorTreeGeneration.h"

#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/parameter/vorParameterKey.h"

#include <cstdint>

/// scope.resolve(key), and whether the answer may be remembered while the
/// tree keeps its shape: true when every node asked was of the library's own
/// types. Defined beside vorParameter::resolve, whose search it is.
vorParameterPtr vorResolveForCache(const vorParameter& scope, const vorParameterKey& key,
                                   bool& by_shape);

class vorCachedName {
public:
    explicit vorCachedName(const utString& name);

    /// What scope.resolve(key of the name) answers now.
    vorParameterPtr resolve(const vorParameter& scope) const;
    /// What resolve() would answer from memory in `scope` and the given
    /// functions-only mode, without taking a handle on it; null when it would
    /// search the tree instead.
    const vorParameter* remembered(const vorParameter& scope, bool functions_only) const {
        if (m_scope != &scope || m_functions_only != functions_only ||
            m_generation != vorTreeGeneration::current())
            return nullptr;
        return m_member ? m_member : m_value.get();
    }

private:
    vorParameterKey m_key;
    mutable const vorParameter* m_scope = nullptr;
    mutable std::uint64_t m_generation = 0;
    mutable bool m_functions_only = false;
    /// The member found, not held (see the file comment), or a held value.
    mutable const vorParameter* m_member = nullptr;
    mutable vorParameterPtr m_value;
};

#endif // VORPARAMETER_SRC_PARAMETER_VORNAMECACHE_H
