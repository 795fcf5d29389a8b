//===- vorParameterMemberFunction.cpp - Native callables ------------------===//

#include "vorparameter/library/vorParameterMemberFunction.h"

#include "vorparameter/expression/vorParameterError.h"

UT_DEFINE_TYPE(vorParameterMemberFunction, vorParameterFunction)

vorParameterPtr vorParameterMemberFunction::operate_binary(const utString& op,
                                                           const vorParameterPtr& args) const {
    if (op != "(")
        return vorParameterFunction::operate_binary(op, args);
    if (!m_member)
        return vorParameterError::create(ERR_DOMAIN);
    return m_member(*this, args);
}
