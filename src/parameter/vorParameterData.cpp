//===- vorParameterData.cpp - Opaque host data ----------------------------===//

#include "vorparameter/parameter/vorParameterData.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"

UT_DEFINE_TYPE(vorParameterData, vorParameter)

vorParameterData::vorParameterData(const utString& data_type)
    : m_data_type(data_type) {}

utString vorParameterData::print(int) const {
    utString text = "(DATA type:" + m_data_type;
    if (m_id.is_valid())
        text += " id:" + m_id.get_uid().hex_string();
    return text + ") \n";
}

void vorParameterData::copy_value_from(const vorParameter& source) {
    const vorParameterData* other = ut_dynamic_cast(source.get_ref());
    if (!other || other == this)
        return;
    m_data_type = other->m_data_type;
    m_id = other->m_id;
}

bool vorParameterData::is_equal(const vorParameter& other) const {
    const vorParameterData* data = ut_dynamic_cast(other.get_ref());
    return data && data->m_data_type == m_data_type && data->m_id == m_id;
}

vorParameterPtr vorParameterData::get_data_par() const {
    const utString call = m_id.is_valid() ? "entdata('" + m_id.get_uid().hex_string() + "','" +
                                                m_data_type.view() + "')"
                                          : "vordata('" + m_data_type + "')";
    vorEvaluator evaluator(this);
    vorParameterPtr result = evaluator.evaluate(call);
    if (result->type() == TYPE_DATA)
        return result;
    return vorParameterError::create(result->is_error() ? ERR_INVALID_DATA : ERR_TYPE);
}
