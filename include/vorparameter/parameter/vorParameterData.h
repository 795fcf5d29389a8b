//===- vorParameterData.h - Opaque host data --------------------*- C++ -*-===//
//
// A data parameter is a handle to host data of a named data type, optionally
// tied to a host object by its id. The library never looks inside: the value
// is what the host's data functions give. get_data_par() evaluates
//   entdata('<32 hex digits of the id>','<data type>')   with a valid id,
//   vordata('<data type>')                               without one,
// in the scope of the parameter, and answers the result when it is data
// (TYPE_DATA), the Invalid data error when the call fails, and the Type error
// for a result of another type. The host supplies both functions through its
// function tables (for example as user functions of its root).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERDATA_H
#define VORPARAMETER_PARAMETER_VORPARAMETERDATA_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterData : public vorParameter {
    UT_DECLARE_TYPE(vorParameterData, vorParameter)
public:
    explicit vorParameterData(const utString& data_type);

    vorParameter* create_new() const override { return new vorParameterData(*this); }
    /// Valid when the data type is named.
    bool is_valid() const override { return !m_data_type.empty(); }
    /// "(DATA type:<data type>", " id:<hex>" with a valid id, ") " and a line feed.
    utString print(int indent) const override;
    /// From another data parameter: takes its data type and id.
    void copy_value_from(const vorParameter& source) override;
    int size() const override { return 0; }
    vorParameterSubType subtype() const override { return SUB_DATA; }
    vorParameterType type() const override { return TYPE_DATA; }
    utString get_xml_typename() const override { return "data"; }
    /// The same data type and object id.
    bool is_equal(const vorParameter& other) const override;
    /// The host's data for this parameter (see the file comment).
    virtual vorParameterPtr get_data_par() const;

    const utString& get_data_type() const { return m_data_type; }
    const vorRefToObjectId& get_id() const { return m_id; }
    void set_id(const vorRefToObjectId& id) { m_id = id; }

protected:
    vorParameterData(const vorParameterData& other) = default;

private:
    utString m_data_type;
    vorRefToObjectId m_id;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERDATA_H
