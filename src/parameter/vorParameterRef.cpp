//===- vorParameterRef.cpp - A parameter that stands for another ----------===//

#include "vorparameter/parameter/vorParameterRef.h"

#include "parameter/vorReadMemo.h"
#include "parameter/vorTreeGeneration.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterString.h"

UT_DEFINE_TYPE(vorParameterRef, vorParameter)

namespace {

/// How many resolutions are under way on this thread, and the number of the
/// outermost one. A reference resolved within the current outermost
/// resolution is not resolved again: a chain costs one evaluation a link.
thread_local int t_resolving = 0;
thread_local unsigned long t_epoch = 0;

class ResolutionScope {
public:
    ResolutionScope() {
        if (t_resolving++ == 0)
            ++t_epoch;
    }
    ~ResolutionScope() { --t_resolving; }
    ResolutionScope(const ResolutionScope&) = delete;
    ResolutionScope& operator=(const ResolutionScope&) = delete;
};

vorParameterPtr expression_error() {
    return vorParameterError::create(ERR_EXPRESSION);
}

/// The quote that encloses `text` in a string literal.
const char* quote_for(const utString& text) {
    return text.contains("'") ? "\"" : "'";
}

} // namespace

vorParameterRef::vorParameterRef(const utString& ref_string) {
    set_ref_string(ref_string);
}

vorParameterRef::vorParameterRef(const vorParameterRef& other)
    : vorParameter(other)
    , m_entity_type(other.m_entity_type)
    , m_ref_text(other.m_ref_text)
    , m_ref_id(other.m_ref_id)
    , m_required_type(other.m_required_type)
    , m_required_root_type(other.m_required_root_type)
    , m_check_root_type(other.m_check_root_type)
    , m_suppress_target(other.m_suppress_target) {}

//===----------------------------------------------------------------------===//
// The reference text
//===----------------------------------------------------------------------===//

utString vorParameterRef::get_ref_string() const {
    utString text;
    if (!m_entity_type.empty())
        text = m_entity_type + ":";
    if (m_entity_type == "id")
        return text + m_ref_id.get_uid().hex_string().view();
    if (m_entity_type == "excl")
        return text + m_ref_id.get_uid().hex_string().view() + ":" + m_ref_text.view();
    return text + m_ref_text.view();
}

void vorParameterRef::clear_reference() {
    m_entity_type = utString();
    m_ref_text = utString();
    m_ref_id.invalidate();
    m_referent.reset();
    retargeted();
}

void vorParameterRef::retargeted() {
    // Names looked up through this reference may now lead elsewhere.
    vorTreeGeneration::advance();
    vorReadMemo::disturb();
}

void vorParameterRef::set_ref_string(const utString& text) {
    if (is_locked())
        return;
    clear_reference();
    const std::size_t colon = text.find(":");
    if (colon == utString::npos) {
        m_ref_text = text;
        return;
    }
    m_entity_type = text.substr(0, colon);
    utString rest = text.substr(colon + 1);
    if (m_entity_type == "id") {
        m_ref_id.set_uid(vorUniqueId::from_hex(rest.view()));
    } else if (m_entity_type == "excl") {
        const std::size_t second = rest.find(":");
        m_ref_id.set_uid(vorUniqueId::from_hex(rest.view().substr(0, second)));
        if (second != utString::npos)
            m_ref_text = rest.substr(second + 1);
    } else {
        m_ref_text = rest;
    }
    onmodify_callback();
}

void vorParameterRef::set_required_type(vorParameterType type) {
    m_required_type = type;
    retargeted();
}

void vorParameterRef::set_ref_root_type(const utString& root_type) {
    m_required_root_type = root_type;
    m_check_root_type = root_type != "*";
    m_referent.reset();
    retargeted();
}

bool vorParameterRef::lock_ref_to_id() {
    if (is_locked())
        return false;
    const vorParameter* end = target();
    if (!end || !end->get_ref_id().is_valid())
        return false;
    const vorRefToObjectId id = end->get_ref_id();
    clear_reference();
    m_entity_type = "id";
    m_ref_id = id;
    return true;
}

//===----------------------------------------------------------------------===//
// Resolution
//===----------------------------------------------------------------------===//

utString vorParameterRef::reference_expression() const {
    if (m_entity_type.empty())
        return m_ref_text;
    const utString hex = m_ref_id.get_uid().hex_string();
    if (m_entity_type == "id")
        return "entity('" + hex + "')";
    if (m_entity_type == "excl")
        return "entity('" + hex + "')." + m_ref_text.view();
    const char* q = quote_for(m_ref_text);
    return utString("entity(") + q + m_entity_type.view() + q + "," + q + m_ref_text.view() + q +
           ")";
}

vorParameterPtr vorParameterRef::resolve() const {
    const utString expr = reference_expression();
    if (expr.empty())
        return expression_error();

    vorEvaluator evaluator(this);
    vorParameterPtr result = evaluator.evaluate(expr);
    // The chain is followed while this reference is still marked, so that a
    // cycle back to it ends there.
    vorParameter* end = result->get_ref();
    if (end->is_error() || is_descendent(end))
        return expression_error();
    if (m_required_type != TYPE_ERROR && end->type() != m_required_type)
        return vorParameterError::create(ERR_TYPE);
    if (m_required_type == TYPE_MAP && m_check_root_type) {
        vorParameterPtr root_type = (*end)[vorParameterKey("root_type")];
        if (root_type->type() == TYPE_STRING && root_type->get_string() != m_required_root_type)
            return vorParameterError::create(ERR_TYPE);
    }
    // A value that only this resolution holds (the result of an expression)
    // is kept alive by the reference. Anything else lives elsewhere, in a
    // tree or with the host, and is only referred to: owning it could close
    // a cycle of ownership (two maps whose members refer to each other).
    if (end == result.get() && result.unique())
        return result;
    return vorParameterPtr(coPrfExtern(), end);
}

vorParameter* vorParameterRef::referent() const {
    if (m_resolving) {
        // What a cycle answers depends on where it was entered.
        vorReadMemo::disturb();
        return expression_error().get();
    }
    if (t_resolving > 0 && m_epoch == t_epoch && !m_referent.is_null())
        return m_referent.get();
    ResolutionScope scope;
    m_resolving = 1;
    vorParameterPtr resolved = resolve();
    m_resolving = 0;
    m_referent = std::move(resolved);
    m_epoch = t_epoch;
    return m_referent.get();
}

vorParameter* vorParameterRef::target() const {
    vorParameter* end = referent();
    return end->is_error() ? nullptr : end;
}

const vorParameter* vorParameterRef::get_ref() const {
    return referent();
}

vorParameter* vorParameterRef::get_ref() {
    return referent();
}

void vorParameterRef::reset() {
    m_referent.reset();
}

//===----------------------------------------------------------------------===//
// Forwarded operations
//===----------------------------------------------------------------------===//

bool vorParameterRef::is_valid() const {
    const vorParameter* end = target();
    return end && end->is_valid();
}

bool vorParameterRef::is_error() const {
    return referent()->is_error();
}

vorParameterType vorParameterRef::type() const {
    return referent()->type();
}

vorParameterSubType vorParameterRef::subtype() const {
    return referent()->subtype();
}

vorParameterOnModifyFn vorParameterRef::set_onmodify_callback(vorParameterOnModifyFn fn) {
    vorParameter* end = target();
    return end ? end->set_onmodify_callback(fn) : vorParameter::set_onmodify_callback(fn);
}

utString vorParameterRef::print(int indent) const {
    utString text = is_valid() ? "(REF) " : "(REF !) ";
    text += get_ref_string();
    if (indent > 50)
        return text + " = (RECURSIVE REFERENCE!)\n";
    if (m_suppress_target)
        return text + "\n";
    const vorParameter* end = target();
    if (!end)
        return text + " = (NULL REFERENCE!)\n";
    return text + " = " + end->print(indent).view();
}

int vorParameterRef::get_int() const {
    return referent()->get_int();
}

double vorParameterRef::get_double() const {
    return referent()->get_double();
}

utString vorParameterRef::get_string() const {
    return referent()->get_string();
}

const vorRefToObjectId& vorParameterRef::get_ref_id() const {
    if (m_entity_type == "id" || m_entity_type == "excl")
        return m_ref_id;
    const vorParameter* end = target();
    return end ? end->get_ref_id() : vorRefToObjectId::empty();
}

void vorParameterRef::set_int(int value) {
    if (vorParameter* end = target())
        end->set_int(value);
}

void vorParameterRef::set_double(double value) {
    if (vorParameter* end = target())
        end->set_double(value);
}

void vorParameterRef::set_string(const utString& text) {
    if (text.starts_with("&")) {
        set_ref_string(text.substr(1));
        return;
    }
    if (vorParameter* end = target())
        end->set_string(text);
}

void vorParameterRef::set_ref_from_id(const vorRefToObjectId& id) {
    if (is_locked())
        return;
    clear_reference();
    m_entity_type = "id";
    m_ref_id = id;
    onmodify_callback();
}

void vorParameterRef::copy_value_from(const vorParameter& source) {
    if (const vorParameterRef* other = ut_dynamic_cast(&source)) {
        if (other != this)
            set_ref_string(other->get_ref_string());
        return;
    }
    vorParameter* end = target();
    if (end && end != &source)
        end->copy_value_from(source);
}

bool vorParameterRef::is_expr() const {
    return referent()->is_expr();
}

utString vorParameterRef::get_expr() const {
    return referent()->get_expr();
}

vorParameterPtr vorParameterRef::evaluate() const {
    return referent()->evaluate();
}

vorParameterPtr vorParameterRef::operate_binary(const utString& op,
                                                const vorParameterPtr& rhs) const {
    // Member access goes through this reference's own lookup, which answers
    // "_ref" and passes every other key to the referent.
    if (op == "." || op == "[")
        return vorParameter::operate_binary(op, rhs);
    return referent()->operate_binary(op, rhs);
}

vorParameterPtr vorParameterRef::operate_prefix(const utString& op) const {
    return referent()->operate_prefix(op);
}

vorParameterPtr vorParameterRef::operate_postfix(const utString& op) const {
    return referent()->operate_postfix(op);
}

int vorParameterRef::size() const {
    const vorParameter* end = target();
    return end ? end->size() : 0;
}

vorParameterPtr vorParameterRef::operator[](const vorParameterKey& key) const {
    if (key.type() == TYPE_MAP && key.first() == "_ref" && key.remainder_str().empty())
        return vorParameterPtr(new vorParameterString(get_ref_string()));
    const vorParameter* end = target();
    return end ? (*end)[key] : expression_error();
}

vorParameterPtr vorParameterRef::operator[](const vorParameterKey& key) {
    if (key.type() == TYPE_MAP && key.first() == "_ref" && key.remainder_str().empty())
        return vorParameterPtr(new vorParameterString(get_ref_string()));
    vorParameter* end = target();
    return end ? (*end)[key] : expression_error();
}

vorParameterPtr vorParameterRef::add(const vorParameterKey& key, vorParameterPtr par) {
    vorParameter* end = target();
    return end ? end->add(key, std::move(par)) : expression_error();
}

vorParameterPtr vorParameterRef::remove(const vorParameterKey& key) {
    vorParameter* end = target();
    return end ? end->remove(key) : expression_error();
}

void vorParameterRef::remove_all() {
    if (vorParameter* end = target())
        end->remove_all();
}

bool vorParameterRef::is_equal(const vorParameter& other) const {
    if (&other == this)
        return true;
    if (const vorParameterRef* ref = ut_dynamic_cast(&other))
        if (ref->get_ref_string() == get_ref_string())
            return true;
    const vorParameter* end = target();
    const vorParameter* theirs = other.get_ref();
    return end && theirs && !theirs->is_error() && end->type() == theirs->type() &&
           end->is_equal(*theirs);
}

vorRefToObjectId vorParameterRef::get_lock_id_imp(const vorParameter& node) const {
    const vorParameter* end = target();
    return end ? end->get_lock_id_imp(node) : vorParameter::get_lock_id_imp(node);
}
