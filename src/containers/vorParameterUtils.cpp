//===- vorParameterUtils.cpp - Geometry values and whole-tree tools -------===//
//
// Mirroring lives in vorParameterMirror.cpp.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/containers/vorParameterUtils.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/parameter/vorParameterData.h"
#include "vorparameter/parameter/vorParameterIter.h"

#include <array>

namespace {

/// The array behind `par` when its first `n` elements are numbers; else null.
const vorParameterArray* coordinates_of(const vorParameter& par, int n) {
    const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(par.get_ref());
    if (!array || array->size() < n)
        return nullptr;
    for (int i = 0; i < n; ++i)
        if (array->at(i)->type() != TYPE_NUMERIC)
            return nullptr;
    return array;
}

/// Elements 0 to N-1 of `par`; all 0 when they are not numbers.
template <std::size_t N>
std::array<double, N> read(const vorParameter& par) {
    std::array<double, N> xyz{};
    if (const vorParameterArray* array = coordinates_of(par, static_cast<int>(N)))
        for (std::size_t i = 0; i < N; ++i)
            xyz[i] = array->at(static_cast<int>(i))->get_double();
    return xyz;
}

template <std::size_t N>
bool write(vorParameter& par, const std::array<double, N>& xyz) {
    const vorParameterArray* array = coordinates_of(par, static_cast<int>(N));
    if (!array)
        return false;
    for (std::size_t i = 0; i < N; ++i)
        array->at(static_cast<int>(i))->set_double(xyz[i]);
    return true;
}

giVector3 read3(const vorParameter& par) {
    const std::array<double, 3> xyz = read<3>(par);
    return giVector3(xyz[0], xyz[1], xyz[2]);
}

giVector2 read2(const vorParameter& par) {
    const std::array<double, 2> xy = read<2>(par);
    return giVector2(xy[0], xy[1]);
}

bool write3(vorParameter& par, double x, double y, double z) {
    return write(par, std::array<double, 3>{x, y, z});
}

bool write2(vorParameter& par, double x, double y) {
    return write(par, std::array<double, 2>{x, y});
}

/// The member `name` of `par` (an error when there is none).
vorParameterPtr member(const vorParameter& par, const char* name) {
    return par[vorParameterKey(name)];
}

} // namespace

//===----------------------------------------------------------------------===//
// Points and vectors
//===----------------------------------------------------------------------===//

giPoint3 vorParameterUtils::to_gipoint3(const vorParameter& par) {
    giVector3 v = read3(par);
    return giPoint3(v.x(), v.y(), v.z());
}

giVector3 vorParameterUtils::to_givector3(const vorParameter& par) {
    return read3(par);
}

giUnitVec3 vorParameterUtils::to_giunitvec3(const vorParameter& par) {
    return giUnitVec3(read3(par));
}

giPoint2 vorParameterUtils::to_gipoint2(const vorParameter& par) {
    giVector2 v = read2(par);
    return giPoint2(v.x(), v.y());
}

giVector2 vorParameterUtils::to_givector2(const vorParameter& par) {
    return read2(par);
}

giUnitVec2 vorParameterUtils::to_giunitvec2(const vorParameter& par) {
    return giUnitVec2(read2(par));
}

bool vorParameterUtils::from_gipoint3(vorParameter& par, const giPoint3& point) {
    return write3(par, point.x(), point.y(), point.z());
}

bool vorParameterUtils::from_givector3(vorParameter& par, const giVector3& vector) {
    return write3(par, vector.x(), vector.y(), vector.z());
}

bool vorParameterUtils::from_giunitvec3(vorParameter& par, const giUnitVec3& vector) {
    return write3(par, vector.x(), vector.y(), vector.z());
}

bool vorParameterUtils::from_gipoint2(vorParameter& par, const giPoint2& point) {
    return write2(par, point.x(), point.y());
}

bool vorParameterUtils::from_givector2(vorParameter& par, const giVector2& vector) {
    return write2(par, vector.x(), vector.y());
}

bool vorParameterUtils::from_giunitvec2(vorParameter& par, const giUnitVec2& vector) {
    return write2(par, vector.x(), vector.y());
}

//===----------------------------------------------------------------------===//
// Workplanes
//===----------------------------------------------------------------------===//

bool vorParameterUtils::to_giworkplane3(const vorParameter& par, giWorkplane3& workplane) {
    workplane = giWorkplane3();
    if (!is_workplane(par))
        return false;
    workplane =
        giWorkplane3(to_gipoint3(*member(par, "Origin")), to_giunitvec3(*member(par, "YAxis")),
                     to_giunitvec3(*member(par, "ZAxis")));
    return true;
}

bool vorParameterUtils::from_giworkplane3(vorParameter& par, const giWorkplane3& workplane) {
    if (!is_workplane(par))
        return false;
    from_gipoint3(*member(par, "Origin"), workplane.origin());
    from_giunitvec3(*member(par, "YAxis"), workplane.y_axis());
    from_giunitvec3(*member(par, "ZAxis"), workplane.z_axis());
    return true;
}

//===----------------------------------------------------------------------===//
// Tests
//===----------------------------------------------------------------------===//

bool vorParameterUtils::is_vector(const vorParameter& par) {
    return vorParameterVector::ut_dynamic_cast(par.get_ref()) != nullptr;
}

bool vorParameterUtils::is_vector_n(const vorParameter& par, int n) {
    const vorParameterVector* vector = vorParameterVector::ut_dynamic_cast(par.get_ref());
    return vector && vector->size() == n;
}

bool vorParameterUtils::is_vector_n_of_type(const vorParameter& par, int n,
                                            vorParameterVectorAccessType type) {
    const vorParameterVector* vector = vorParameterVector::ut_dynamic_cast(par.get_ref());
    return vector && vector->size() == n && vector->access_type() == type;
}

bool vorParameterUtils::is_workplane(const vorParameter& par) {
    const vorParameter& map = *par.get_ref();
    if (map.type() != TYPE_MAP || map.subtype() != SUB_MAP || map.size() != 3)
        return false;
    for (const char* name : {"Origin", "YAxis", "ZAxis"})
        if (!is_vector_n(*member(map, name), 3))
            return false;
    return true;
}

//===----------------------------------------------------------------------===//
// Whole parameters and subtrees
//===----------------------------------------------------------------------===//

void vorParameterUtils::clone_impl(vorParameter& par) {
    par.set_impl(vorParameterImplPtr::clone_of(*par.get_impl()));
}

void vorParameterUtils::strip_expression(vorParameter& par) {
    clone_impl(par);
    par.set_active(utString());
    if (vorParameterEnum* choice = vorParameterEnum::ut_dynamic_cast(&par))
        choice->strip_active_states();
}

void vorParameterUtils::remove_active_expressions(vorParameter& par) {
    strip_expression(par);
    vorParameterIter it(&par);
    it.exclude_functions(0);
    while (++it)
        strip_expression(*it());
}

bool vorParameterUtils::is_restricted_parameter(vorParameterPtr par) {
    const utString& name = par->get_name();
    return name == "vantrel" || name == "local" || name == "project";
}

bool vorParameterUtils::is_entity(vorParameterPtr par) {
    // References answer their id through get_ref_id; data parameters keep
    // theirs apart.
    const vorParameterData* data = vorParameterData::ut_dynamic_cast(par.get());
    const vorRefToObjectId& id = data ? data->get_id() : par->get_ref_id();
    if (!id.is_valid())
        return false;
    const utString call = "entity('" + id.get_uid().hex_string() + "')";
    return !vorEvaluator(par.get()).evaluate(call)->is_error();
}

bool vorParameterUtils::default_valid(const vorParameter& par) {
    if (par.type() != TYPE_NUMERIC)
        return par.is_valid();
    vorParameterPtr value = par.evaluate();
    return value->type() == TYPE_NUMERIC && par.check_range();
}
