//===- vorParameterLib.cpp - The standard function library ----------------===//
//
// The table, the library objects that expressions index and call, and the
// process-wide settings. The names of the table are registered in
// vorLibRegistry.cpp and by the translation units of the mathematical
// functions.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/library/vorParameterLib.h"

#include "library/vorLibKernels.h"

#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorParameterError.h"

#include <vector>

UT_DEFINE_TYPE(vorParameterLib, vorParameterFunction)

namespace {

using vorParameterLibTable = coTable<utString, vorParameterLibEntry>;

// Made on first use, so that registrations from static initialisers of other
// translation units find it whatever their order.
vorParameterLibTable& table() {
    static vorParameterLibTable entries;
    return entries;
}

giAngleType& angle_unit() {
    static giAngleType unit = GI_DEGREES;
    return unit;
}

std::uint64_t g_table_version = 0;

vorParameterPtr& eval_scope() {
    static vorParameterPtr scope;
    return scope;
}

} // namespace

vorParameterLib::vorParameterLib() {
    init_table();
}

vorParameterLib::vorParameterLib(const vorParameterLib& library, const utString& name)
    : vorParameterFunction(library, name) {
    // A record of its own: the description set on one function must not
    // show on the library or on other functions.
    set_impl(vorParameterImplPtr());
}

vorParameterSubType vorParameterLib::subtype() const {
    return name().empty() ? SUB_LIBRARY : SUB_LIBRARY_PART;
}

utString vorParameterLib::print(int) const {
    if (name().empty())
        return "(STANDARD FUNCTION LIBRARY)\n";
    return "(STANDARD FUNCTION) " + name() + "\n";
}

int vorParameterLib::size() const {
    return name().empty() ? static_cast<int>(table().size()) : 0;
}

vorParameterPtr vorParameterLib::operator[](const vorParameterKey& key) const {
    return lookup(key);
}

vorParameterPtr vorParameterLib::operator[](const vorParameterKey& key) {
    return lookup(key);
}

vorParameterPtr vorParameterLib::lookup(const vorParameterKey& key) const {
    if (key.type() != TYPE_MAP)
        return error(ERR_INVALID_NAME);
    const utString& lower = key.impl().first_lower();
    if (lower == "_keys") {
        std::vector<utString> names;
        names.reserve(table().size());
        for (const auto& entry : table())
            names.push_back(entry.first);
        return vorParameterList::of_strings(names);
    }
    const vorParameterLibEntry* entry = find_entry(lower);
    if (!entry || !key.remainder_str().empty())
        return error(ERR_INVALID_NAME);
    vorParameterPtr function(new vorParameterLib(*this, lower));
    function->set_desc(entry->desc);
    return function;
}

vorParameterPtr vorParameterLib::operate_binary(const utString& op,
                                                const vorParameterPtr& args) const {
    if (op != "(")
        return vorParameter::operate_binary(op, args);
    const vorParameterLibEntry* entry = name().empty() ? nullptr : find_entry(name());
    if (!entry || !entry->fn)
        return error(ERR_INVALID_NAME);
    return entry->fn(args);
}

int vorParameterLib::add_entry(const utString& name, vorParameterLibFn fn, const utString& desc) {
    table().set(name, vorParameterLibEntry{fn, desc});
    ++g_table_version;
    return static_cast<int>(table().size());
}

std::uint64_t vorLibTableVersion() {
    return g_table_version;
}

const vorParameterLibEntry* vorParameterLib::find_entry(const utString& name) {
    return table().find(name);
}

vorParameterPtr vorParameterLib::error(unsigned kind) {
    return vorParameterError::create(kind);
}

void vorParameterLib::set_angle_unit(giAngleType unit) {
    angle_unit() = unit;
}

giAngleType vorParameterLib::get_angle_unit() {
    return angle_unit();
}

void vorParameterLib::set_eval_scope(vorParameterPtr scope) {
    eval_scope() = std::move(scope);
}

const vorParameterPtr& vorParameterLib::get_eval_scope() {
    return eval_scope();
}
