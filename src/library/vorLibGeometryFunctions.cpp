//===- vorLibGeometryFunctions.cpp - Vector and geometry functions --------===//
//
// The vector functions of the standard library: unit, angle,
// apparent_angle, normal, parallel, set_vector, set_point, azimuth,
// elevation and distance.
//
// A vector argument is any array of exactly three valid numbers: a vector
// parameter, a list, or a brace list of an expression ({1; 0; 0}). Where a
// direction is needed a zero vector is ERR_DOMAIN. Directions are made unit
// length before anything else is computed, so huge or tiny components
// neither overflow nor underflow.
//
// Angles are numbers of the angle kind in the library's angle unit
// (vorParameterLib::get_angle_unit). Vector results are new vectors of three
// real numbers with the accessor names X, Y and Z.
//
// Two directions are parallel when the sine of the angle between them is no
// larger than the point-coincidence tolerance (giKernelResources); normal and
// apparent_angle treat such pairs as having no plane between them.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/containers/vorParameterUtils.h"
#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/platform/giAngle.h"
#include "vorparameter/platform/giPoint.h"
#include "vorparameter/platform/giTolerance.h"
#include "vorparameter/platform/giVector.h"

#include <array>
#include <cmath>

namespace {

using vorLibSupport::invalid_arguments;

vorParameterPtr domain_error() {
    return vorParameterLib::error(ERR_DOMAIN);
}

//===----------------------------------------------------------------------===//
// Arguments
//===----------------------------------------------------------------------===//

/// True for an array of three numbers; with `valid`, numbers that evaluate
/// (a target of set_vector may hold an expression that does not).
bool is_xyz(const vorParameter& value, bool valid) {
    const vorParameterArray* array =
        value.type() == TYPE_ARRAY ? vorParameterArray::ut_dynamic_cast(&value) : nullptr;
    if (!array || array->size() != 3)
        return false;
    for (const vorParameterPtr& element : array->elements()) {
        const bool number = valid ? vorLibSupport::as_number(element) != nullptr
                                  : vorParameterNumeric::ut_dynamic_cast(element.par()) != nullptr;
        if (!number)
            return false;
    }
    return true;
}

/// The next argument as a vector of three valid numbers.
bool next_vector(vorParameterArgDecoder& args, giVector3& v) {
    vorParameterPtr arg = args.next_argument();
    const vorParameter& value = *arg.par();
    if (!is_xyz(value, true))
        return false;
    v = vorParameterUtils::to_givector3(value);
    return true;
}

/// Exactly N vector arguments.
template <std::size_t N>
bool read_vectors(const vorParameterPtr& args, std::array<giVector3, N>& vectors) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != static_cast<int>(N))
        return false;
    for (giVector3& v : vectors)
        if (!next_vector(decoder, v))
            return false;
    return true;
}

/// Exactly N direction arguments. An empty handle when they fit; otherwise
/// the error to answer: ERR_INVALID_ARGUMENTS, or ERR_DOMAIN for a zero
/// vector.
template <std::size_t N>
vorParameterPtr read_directions(const vorParameterPtr& args, std::array<giUnitVec3, N>& dirs) {
    std::array<giVector3, N> vectors;
    if (!read_vectors(args, vectors))
        return invalid_arguments();
    for (std::size_t i = 0; i < N; ++i) {
        std::optional<giUnitVec3> dir = giUnitVec3::try_from(vectors[i]);
        if (!dir)
            return domain_error();
        dirs[i] = *dir;
    }
    return vorParameterPtr();
}

//===----------------------------------------------------------------------===//
// Results
//===----------------------------------------------------------------------===//

vorParameterPtr new_vector(const giVector3& v) {
    vorParameterPtr zero(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0.0));
    vorParameterPtr result(new vorParameterVector(3, zero));
    auto& vector = static_cast<vorParameterVector&>(*result);
    vector.set_access_type(VECTOR_ACCESS_XYZ);
    vorParameterUtils::from_givector3(vector, v);
    return result;
}

/// An angle number of `angle` in the library's angle unit; `one_turn` moves
/// a negative angle up by a full turn, into [0, 360) degrees.
vorParameterPtr new_angle(const giAngle& angle, bool one_turn = false) {
    const giAngleType unit = vorParameterLib::get_angle_unit();
    double value = angle.value(unit);
    if (one_turn && value < 0.0) {
        const double turn = giAngle(GI_DEGREES, 360.0).value(unit);
        value += turn;
        // A tiny negative angle rounds up to a full turn, which is 0 again.
        if (value >= turn)
            value = 0.0;
    }
    // Adding zero turns -0 into 0, so that no result prints as "-0".
    return vorLibSupport::make_number(SUB_ANGLE, value + 0.0);
}

//===----------------------------------------------------------------------===//
// Geometry
//===----------------------------------------------------------------------===//

bool are_parallel(const giUnitVec3& a, const giUnitVec3& b) {
    return a.cross(b).length() <= giKernelResources::point_tolerance();
}

/// The unsigned angle between two directions, 0 to 180 degrees. The sine
/// and cosine together keep it accurate near 0 and 180 degrees too.
giAngle angle_between(const giUnitVec3& a, const giUnitVec3& b) {
    return giAngle::from_sine_cosine(a.cross(b).length(), a.dot(b));
}

/// The part of `v` square to the direction `axis`.
giVector3 square_to(const giUnitVec3& v, const giUnitVec3& axis) {
    return v.vector() - axis.vector() * v.dot(axis);
}

/// The coordinates that follow the target of set_vector and set_point: one
/// vector argument, or three numbers.
bool next_coordinates(vorParameterArgDecoder& args, giVector3& v) {
    if (args.count() == 2)
        return next_vector(args, v);
    std::array<double, 3> xyz{};
    for (double& coordinate : xyz) {
        const vorParameterNumeric* number = vorLibSupport::as_number(args.next_argument());
        if (!number)
            return false;
        coordinate = number->get_double();
    }
    v = giVector3(xyz[0], xyz[1], xyz[2]);
    return args.all_arguments_used();
}

bool is_locked_xyz(const vorParameter& target) {
    bool locked = target.is_locked();
    for (const vorParameterPtr& element : static_cast<const vorParameterArray&>(target).elements())
        locked = locked || element.par()->is_locked();
    return locked;
}

/// Writes a vector or a point into the first argument, an array of three
/// numbers, and returns it. When the array or one of its numbers is locked
/// nothing is written and the answer is ERR_UNKNOWN.
vorParameterPtr write_coordinates(const vorParameterPtr& args,
                                  void (*write)(vorParameter&, const giVector3&)) {
    vorParameterArgDecoder decoder(args);
    vorParameterPtr target = decoder.next_argument();
    vorParameter& value = *target.par();
    giVector3 v;
    if (!next_coordinates(decoder, v) || !is_xyz(value, false))
        return invalid_arguments();
    if (is_locked_xyz(value))
        return vorParameterLib::error(ERR_UNKNOWN);
    write(value, v);
    return target;
}

void write_vector(vorParameter& target, const giVector3& v) {
    vorParameterUtils::from_givector3(target, v);
}

void write_point(vorParameter& target, const giVector3& v) {
    vorParameterUtils::from_gipoint3(target, giPoint3(v.x(), v.y(), v.z()));
}

} // namespace

//===----------------------------------------------------------------------===//
// Registered functions
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameterLib::unit(const vorParameterPtr& args) {
    std::array<giUnitVec3, 1> dir;
    vorParameterPtr failure = read_directions(args, dir);
    return failure.is_null() ? new_vector(dir[0]) : failure;
}

vorParameterPtr vorParameterLib::angle(const vorParameterPtr& args) {
    std::array<giUnitVec3, 2> dirs;
    vorParameterPtr failure = read_directions(args, dirs);
    return failure.is_null() ? new_angle(angle_between(dirs[0], dirs[1])) : failure;
}

vorParameterPtr vorParameterLib::apparent_angle(const vorParameterPtr& args) {
    std::array<giUnitVec3, 3> dirs;
    vorParameterPtr failure = read_directions(args, dirs);
    if (!failure.is_null())
        return failure;
    const giUnitVec3& axis = dirs[2];
    if (are_parallel(dirs[0], axis) || are_parallel(dirs[1], axis))
        return domain_error();
    // The angle as seen looking down the axis: between the parts of both
    // directions square to it, positive counter-clockwise about it.
    const giVector3 from = square_to(dirs[0], axis);
    const giVector3 to = square_to(dirs[1], axis);
    // Opposite directions have a sine of +0 or -0 by rounding; adding zero
    // makes it +0, so that they are always 180 degrees and never -180.
    const double sine = from.cross(to).dot(axis) + 0.0;
    return new_angle(giAngle::from_sine_cosine(sine, from.dot(to)));
}

vorParameterPtr vorParameterLib::normal_of_vectors(const vorParameterPtr& args) {
    std::array<giUnitVec3, 2> dirs;
    vorParameterPtr failure = read_directions(args, dirs);
    if (!failure.is_null())
        return failure;
    if (are_parallel(dirs[0], dirs[1]))
        return domain_error();
    return new_vector(giUnitVec3(dirs[0].cross(dirs[1])));
}

vorParameterPtr vorParameterLib::parallel(const vorParameterPtr& args) {
    std::array<giUnitVec3, 2> dirs;
    vorParameterPtr failure = read_directions(args, dirs);
    return failure.is_null() ? vorParameterNumeric::create_bool(are_parallel(dirs[0], dirs[1]))
                             : failure;
}

vorParameterPtr vorParameterLib::set_vector(const vorParameterPtr& args) {
    return write_coordinates(args, write_vector);
}

vorParameterPtr vorParameterLib::set_point(const vorParameterPtr& args) {
    return write_coordinates(args, write_point);
}

namespace vorParameterLibFunctions {

vorParameterPtr azimuth(const vorParameterPtr& args) {
    std::array<giUnitVec3, 1> dir;
    vorParameterPtr failure = read_directions(args, dir);
    if (!failure.is_null())
        return failure;
    // A vertical direction has no azimuth of its own; atan2(0, 0) makes it 0.
    return new_angle(giAngle::from_sine_cosine(dir[0].y(), dir[0].x()), true);
}

vorParameterPtr elevation(const vorParameterPtr& args) {
    std::array<giUnitVec3, 1> dir;
    vorParameterPtr failure = read_directions(args, dir);
    if (!failure.is_null())
        return failure;
    const giUnitVec3& d = dir[0];
    return new_angle(giAngle::from_sine_cosine(d.z(), std::hypot(d.x(), d.y())));
}

vorParameterPtr distance(const vorParameterPtr& args) {
    std::array<giVector3, 2> points;
    if (!read_vectors(args, points))
        return invalid_arguments();
    const giVector3 d = points[1] - points[0];
    // Coordinates near the largest double can be further apart than any
    // double measures: ERR_DOMAIN then.
    return vorLibSupport::make_number(SUB_REAL, std::hypot(d.x(), d.y(), d.z()), DIM_LENGTH);
}

} // namespace vorParameterLibFunctions
