//===- vorParameterMemberFunction.h - Native callables ----------*- C++ -*-===//
//
// A callable parameter bound to a native operation of the host: calling it
// runs member(*this, args). Hosts use it to offer methods on their objects to
// expressions.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORPARAMETERMEMBERFUNCTION_H
#define VORPARAMETER_LIBRARY_VORPARAMETERMEMBERFUNCTION_H

#include "vorparameter/library/vorParameterFunction.h"

using vorParameterMemberFn = vorParameterPtr (*)(const vorParameter& self,
                                                 const vorParameterPtr& args);

class VOR_API vorParameterMemberFunction : public vorParameterFunction {
    UT_DECLARE_TYPE(vorParameterMemberFunction, vorParameter)
public:
    explicit vorParameterMemberFunction(vorParameterMemberFn member)
        : m_member(member) {}

    vorParameter* create_new() const override { return new vorParameterMemberFunction(*this); }
    vorParameterSubType subtype() const override { return SUB_MEMBER_FUNCTION; }
    /// "(" runs the native operation (ERR_DOMAIN when there is none).
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& args) const override;

private:
    vorParameterMemberFunction(const vorParameterMemberFunction& other) = default;

    vorParameterMemberFn m_member;
};

#endif // VORPARAMETER_LIBRARY_VORPARAMETERMEMBERFUNCTION_H
