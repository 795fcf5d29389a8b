//===- vorParameterMembers.cpp - Range-for over a container ---------------===//

#include "vorparameter/parameter/vorParameterMembers.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/parameter/vorParameterMap.h"

vorMemberRange::vorMemberRange(const vorParameter& node) {
    // get_ref() is the node itself, or a reference's referent (an error when
    // it does not resolve, which is no map).
    const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(node.get_ref());
    if (!map)
        return;
    m_members.reserve(map->members().size());
    for (const auto& [name, par] : map->members())
        m_members.push_back({name.str(), par});
}

vorElementRange::vorElementRange(const vorParameter& node) {
    if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(node.get_ref()))
        m_elements = array->elements();
}

vorMemberRange vorMembers(const vorParameter& node) {
    return vorMemberRange(node);
}

vorMemberRange vorMembers(const vorParameterPtr& node) {
    // Not dereferenced when empty: a loop over nothing should not turn the
    // host's handle into an error.
    vorParameter* par = node.get();
    return par ? vorMemberRange(*par) : vorMemberRange();
}

vorElementRange vorElements(const vorParameter& node) {
    return vorElementRange(node);
}

vorElementRange vorElements(const vorParameterPtr& node) {
    vorParameter* par = node.get();
    return par ? vorElementRange(*par) : vorElementRange();
}
