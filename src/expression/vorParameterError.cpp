//===- vorParameterError.cpp - Errors as values ---------------------------===//

#include "vorparameter/expression/vorParameterError.h"

#include "vorparameter/platform/vorTranslate.h"

UT_DEFINE_TYPE(vorParameterError, vorParameter)

namespace {

const char* const kMessages[] = {
    "Unknown error",     "Syntax error",   "Expression/Reference error", "Invalid name",
    "Domain error",      "Divide by zero", "Incompatible dimensions",    "Type error",
    "Invalid arguments", "Invalid data"};

} // namespace

namespace {

/// One shared error per kind, plus one for every kind above 9, which carries
/// kind 0. They are made together on first request (thread-safe) and never
/// released, so that a handle may refer to one without owning it at any time,
/// even while other statics are being destroyed.
struct SharedErrors {
    static constexpr unsigned slots = ERR_INVALID_DATA + 2;
    vorParameterPtr instances[slots];
};

} // namespace

vorParameterPtr vorParameterError::create(unsigned kind) {
    static const SharedErrors* const shared = [] {
        auto* errors = new SharedErrors(); // lives until the process ends
        for (unsigned slot = 0; slot < SharedErrors::slots; ++slot)
            errors->instances[slot] =
                vorParameterPtr(new vorParameterError(valid_subtype(slot) ? slot : 0));
        return errors;
    }();
    return shared->instances[valid_subtype(kind) ? kind : SharedErrors::slots - 1];
}

const char* vorParameterError::message(unsigned kind) {
    return valid_subtype(kind) ? kMessages[kind] : "";
}

utString vorParameterError::get_expr() const {
    if (!valid_subtype(m_code))
        return utString();
    return vortranslate(message(m_code));
}

utString vorParameterError::get_string() const {
    return vortranslate("#ERROR") + ": " + get_expr().view();
}

utString vorParameterError::print(int) const {
    return "(ERROR) " + get_expr() + "\n";
}

// Reading a number from an error gives 0 and writing to it is ignored;
// nothing is reported to the caller, who tests is_error() instead.
int vorParameterError::get_int() const {
    return 0;
}
double vorParameterError::get_double() const {
    return 0.0;
}
void vorParameterError::set_int(int) {}
void vorParameterError::set_double(double) {}
void vorParameterError::set_string(const utString&) {}

vorParameterPtr vorParameterError::evaluate() const {
    return vorParameterPtr(create_new());
}

vorParameterPtr vorParameterError::operate_binary(const utString&, const vorParameterPtr&) const {
    return create(m_code);
}

vorParameterPtr vorParameterError::operate_prefix(const utString&) const {
    return create(m_code);
}

vorParameterPtr vorParameterError::operate_postfix(const utString&) const {
    return create(m_code);
}
