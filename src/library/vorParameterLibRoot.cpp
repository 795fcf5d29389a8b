//===- vorParameterLibRoot.cpp - A root that knows the functions ----------===//

#include "vorparameter/library/vorParameterLibRoot.h"

#include "vorparameter/library/vorParameterLib.h"

#include <typeinfo>

UT_DEFINE_TYPE(vorParameterLibRoot, vorParameterRoot)

vorParameterLibRoot::vorParameterLibRoot(const utString& root_type, int created,
                                         const utString& root_name)
    : vorParameterRoot(root_type, created, root_name)
    , m_library(new vorParameterLib()) {}

vorParameterPtr vorParameterLibRoot::lookup_text(std::string_view path, bool as_const) const {
    // Only lookup_method differs from a plain root's lookup, and it is asked
    // for names that no member has. A host's root may differ in more.
    return lookup_text_walking(typeid(*this) == typeid(vorParameterLibRoot), path, as_const);
}

vorParameterPtr vorParameterLibRoot::lookup_method(const vorParameterKey& key) const {
    vorParameterPtr method = vorParameterRoot::lookup_method(key);
    if (!method.is_null())
        return method;
    return (*m_library)[key];
}
