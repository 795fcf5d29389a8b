//===- vorParameterUtils.h - Geometry values and whole-tree tools -*- C++ -*-===//
//
// Two groups of static functions: conversions between parameters and the
// geometry library's value types, and tools that work on whole parameters or
// subtrees (detaching a node's descriptive record, stripping active
// expressions, recognising reserved and entity parameters, mirroring a
// subtree in a plane). docs/utilities.md describes the second group.
//
// Hosts keep points, directions and workplanes in parameter trees as vectors
// of numbers ("{10;0;5}", usually with X,Y,Z accessors) and workplanes as maps
// with the members "Origin", "YAxis" and "ZAxis". These functions read and
// write such parameters as the geometry library's value types.
//
// What converts: the to_... and from_... functions of n coordinates accept
// any array parameter (vector, temporary array, list or plain array, also
// behind a reference) whose first n elements are numbers; every parameter
// for which is_vector_n(par, n) holds and whose elements are numbers is one
// of them, and so are brace lists and arrays computed by expressions. Extra
// elements are ignored, so a 3D point reads as a 2D point. Anything else
// reads as the type's default value (the origin, the zero vector, the X axis
// for a unit vector) and is not written to. A unit vector is read through
// giUnitVec3(v): zero or non-finite coordinates give the X axis.
//
// The is_vector... tests, in contrast, recognise vector parameters
// (vorParameterVector, including temporary arrays) specifically: a plain
// array of three numbers converts to a point but is not a vector.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERUTILS_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERUTILS_H

#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/platform/giPoint.h"
#include "vorparameter/platform/giVector.h"
#include "vorparameter/platform/giWorkplane3.h"

class VOR_API vorParameterUtils {
public:
    vorParameterUtils() = delete;

    /// Elements 0, 1 (and 2) as coordinates; the default value when `par` is
    /// not an array whose first 3 (or 2) elements are numbers.
    static giPoint3 to_gipoint3(const vorParameter& par);
    static giVector3 to_givector3(const vorParameter& par);
    static giUnitVec3 to_giunitvec3(const vorParameter& par);
    static giPoint2 to_gipoint2(const vorParameter& par);
    static giVector2 to_givector2(const vorParameter& par);
    static giUnitVec2 to_giunitvec2(const vorParameter& par);

    /// Writes the coordinates into elements 0, 1 (and 2) with set_double.
    /// False, writing nothing, when `par` is not an array whose first 3 (or 2)
    /// elements are numbers. Locked elements ignore the write as usual.
    static bool from_gipoint3(vorParameter& par, const giPoint3& point);
    static bool from_givector3(vorParameter& par, const giVector3& vector);
    static bool from_giunitvec3(vorParameter& par, const giUnitVec3& vector);
    static bool from_gipoint2(vorParameter& par, const giPoint2& point);
    static bool from_givector2(vorParameter& par, const giVector2& vector);
    static bool from_giunitvec2(vorParameter& par, const giUnitVec2& vector);

    /// The workplane of a workplane map (is_workplane) from its origin, Y axis
    /// and Z axis. False, leaving `workplane` the world frame, for any other
    /// parameter.
    static bool to_giworkplane3(const vorParameter& par, giWorkplane3& workplane);
    /// Writes the origin, Y axis and Z axis of `workplane` into the members
    /// "Origin", "YAxis" and "ZAxis"; false, writing nothing, unless `par` is
    /// a workplane map.
    static bool from_giworkplane3(vorParameter& par, const giWorkplane3& workplane);

    /// True for a vector parameter (vorParameterVector or a derived class).
    static bool is_vector(const vorParameter& par);
    /// A vector of exactly 2 elements.
    static bool is_vector_2D(const vorParameter& par) { return is_vector_n(par, 2); }
    /// A vector of exactly `n` elements.
    static bool is_vector_n(const vorParameter& par, int n);
    /// A vector of exactly `n` elements and access type `type`.
    static bool is_vector_n_of_type(const vorParameter& par, int n,
                                    vorParameterVectorAccessType type);
    /// A plain map (subtype SUB_MAP) of exactly three members whose members
    /// "Origin", "YAxis" and "ZAxis" are vectors of 3 elements.
    static bool is_workplane(const vorParameter& par);

    //===------------------------------------------------------------------===//
    // Whole parameters and subtrees
    //===------------------------------------------------------------------===//

    /// Gives `par` a private copy of its descriptive record (name, label,
    /// active expression, mirror mode...), so that later changes to it no
    /// longer reach the copies of the node that shared the record.
    static void clone_impl(vorParameter& par);
    /// clone_impl, then clears the active expression; an enumeration also
    /// loses every state's condition. The copies that shared the record keep
    /// their expressions.
    static void strip_expression(vorParameter& par);
    /// strip_expression on `par` and every node below it (functions and
    /// reserved members included; references are not followed), so the whole
    /// subtree is unconditionally active. Iterative: any depth, linear time.
    static void remove_active_expressions(vorParameter& par);
    /// True when the name is exactly "vantrel", "local" or "project": names
    /// the host reserves. Case-sensitive.
    static bool is_restricted_parameter(vorParameterPtr par);
    /// True when `par` carries a valid object id (a reference's get_ref_id, a
    /// data parameter's get_id) and "entity('<id in hex>')"
    /// evaluates, in `par`'s scope, to something that is not an error. The
    /// library defines no "entity" function: a host that does (in its root's
    /// lookups or the function library) decides what is an entity.
    static bool is_entity(vorParameterPtr par);
    /// The validity test used by default. A number is evaluated first: it is
    /// valid when the result is a number (no error) and lies in its range. Any
    /// other parameter answers its own is_valid().
    static bool default_valid(const vorParameter& par);

    /// Reflects the geometry held in `root` and below it in the plane through
    /// `point` with normal `normal` (any non-zero length), as each node's
    /// mirror mode (vorParameterMirrorMode) says:
    ///  - a workplane map of any non-zero mode is reflected as a workplane and
    ///    stays right-handed: origin, Y axis and Z axis are reflected and X is
    ///    recomputed as Y x Z;
    ///  - a vector of 3 numbers (not of the RGB or PLANES access type, which
    ///    hold no geometry) is reflected as a direction with mode 6, swaps
    ///    with its parent's "End" point with mode 7 (both reflected), and is
    ///    reflected as a point with any other non-zero mode;
    ///  - a number: mode 1 gives -v, mode 4 gives 180 - v, mode 2 adds half a
    ///    turn and mode 3 takes it away, each keeping the value within its
    ///    own turn ([0, 360) + 360k for mode 2, [-180, 180) + 360k for mode
    ///    3), so that 30 gives 210 and -150 respectively;
    ///  - a text or enumeration: mode 5 swaps "left" and "right" (any letter
    ///    case in, lower case out); mode 8 reads the plane its value names
    ///    ("xy", "yz", "zx" in any letter case, or "arbitary" with the normal
    ///    in the parent's member "Normal"), sets "arbitary" and writes the
    ///    reflected normal into "Normal".
    /// Mode 0 and any mode a node's kind does not take leave it alone. A node
    /// mirrored as a whole (vector, workplane, the "End" of mode 7) is one
    /// value: the modes of its members are not consulted. References are
    /// neither mirrored nor followed, so a subtree with reference cycles is
    /// walked once; locked nodes ignore the writes as usual. The mirror is one
    /// change: on-modify functions are held while it writes, and `root`'s
    /// on-modify callback runs once at the end when anything was written
    /// (dependants' active states are still marked unknown per write). A zero or
    /// non-finite normal, or a non-finite point, changes nothing. Mirroring
    /// twice in the same plane gives back every value (within rounding), a
    /// named plane of mode 8 coming back as "arbitary" with its own normal.
    /// Iterative: any depth, linear time.
    static void mirror_parameters(vorParameterPtr root, const giPoint3& point,
                                  const giVector3& normal);
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERUTILS_H
