//===- vorParameterFunction.cpp - User functions --------------------------===//

#include "vorparameter/library/vorParameterFunction.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"

UT_DEFINE_TYPE(vorParameterFunction, vorParameter)

vorParameterFunction::vorParameterFunction(const vorParameterFunction& other)
    : vorParameter(other)
    , m_body(other.m_body) {}

vorParameterFunction::vorParameterFunction(const vorParameterFunction& other, const utString& body)
    : vorParameter(other)
    , m_body(body) {}

utString vorParameterFunction::print(int) const {
    return "(FUNCTION) " + m_body + "\n";
}

void vorParameterFunction::set_string(const utString& body) {
    if (!is_locked())
        m_body = body;
}

vorParameterPtr vorParameterFunction::operator[](const vorParameterKey& key) const {
    return lookup(key);
}

vorParameterPtr vorParameterFunction::operator[](const vorParameterKey& key) {
    return lookup(key);
}

vorParameterPtr vorParameterFunction::lookup(const vorParameterKey& key) const {
    if (key.type() != TYPE_MAP || key.first() != "argv")
        return vorParameterError::create(ERR_INVALID_NAME);
    // Plain "argv" is the argument list itself: outside a call the empty
    // handle, which reads as the Unknown error.
    if (key.remainder_str().empty())
        return m_argv;
    if (m_argv.is_null())
        return vorParameterError::create(ERR_INVALID_NAME);
    return m_argv[key.remainder()];
}

vorParameterPtr vorParameterFunction::operate_binary(const utString& op,
                                                     const vorParameterPtr& args) const {
    if (op != "(")
        return vorParameter::operate_binary(op, args);
    // A call runs the body as one more expression: it spends the read's
    // budget and nests, so that endless or doubling recursion stops.
    vorEvalLevel level(EVAL_EXPRESSION);
    if (level.refused())
        return vorParameterError::create(ERR_EXPRESSION);
    m_argv = args;
    vorParameterPtr result = vorEvaluator(this).evaluate(m_body);
    m_argv.reset();
    return result;
}
