//===- vorQueryParameter.cpp - Evaluate a text to a plain value -----------===//

#include "vorparameter/parameter/vorQueryParameter.h"

#include "vorparameter/expression/vorEvaluator.h"

vorQueryParameter& vorQueryParameter::instance() {
    static vorQueryParameter query;
    return query;
}

vorQueryParameter::EvalFn vorQueryParameter::set_eval_function(EvalFn fn) {
    EvalFn previous = m_eval;
    m_eval = fn ? fn : &evaluate_in_scope;
    return previous;
}

vorParameterPtr vorQueryParameter::evaluate_in_scope(const utString& expression,
                                                     const vorParameter* scope) {
    vorEvaluator evaluator(scope);
    vorParameterPtr result = evaluator.evaluate(expression);
    while (result->is_expr() && !result->is_error())
        result = result->evaluate();
    return result;
}

vorParameterPtr vorQueryParameter::query(const utString& expression) const {
    vorParameterPtr result = m_eval(expression, m_scope);
    result.check();
    return result;
}

double vorQueryParameter::get_double(const utString& expression) const {
    return query(expression)->get_double();
}

int vorQueryParameter::get_int(const utString& expression) const {
    return query(expression)->get_int();
}

utString vorQueryParameter::get_string(const utString& expression) const {
    return query(expression)->get_string();
}
