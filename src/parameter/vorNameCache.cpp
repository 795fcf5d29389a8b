//===- vorNameCache.cpp - A name resolved once and remembered -------------===//

#include "parameter/vorNameCache.h"

#include "parameter/vorTreeGeneration.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/library/vorParameterLib.h"

vorCachedName::vorCachedName(const utString& name)
    : m_key(name) {}

namespace {

bool is_library_function(const vorParameterPtr& found) {
    return &found->ut_dynamic_type() == &vorParameterLib::ut_static_type() && !found->parent();
}

bool is_held_member(const vorParameterPtr& found) {
    return found.is_owning() && !found.unique() && found->parent() && !found->is_error();
}

} // namespace

vorParameterPtr vorCachedName::resolve(const vorParameter& scope) const {
    const std::uint64_t generation = vorTreeGeneration::current();
    const bool functions_only = vorEvalFunction::functions_only();
    if (m_scope == &scope && m_generation == generation && m_functions_only == functions_only) {
        if (m_member)
            return vorParameterPtr::share(const_cast<vorParameter*>(m_member));
        return m_value;
    }
    m_scope = nullptr;
    m_member = nullptr;
    m_value.reset();

    bool by_shape = false;
    vorParameterPtr found = vorResolveForCache(scope, m_key, by_shape);
    // Resolving may have changed the tree (a reference evaluating its path).
    if (!by_shape || vorTreeGeneration::current() != generation)
        return found;
    if (is_held_member(found))
        m_member = found.get();
    else if (is_library_function(found))
        m_value = found;
    else
        return found;
    m_scope = &scope;
    m_generation = generation;
    m_functions_only = functions_only;
    return found;
}
