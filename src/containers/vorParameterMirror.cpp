//===- vorParameterMirror.cpp - Mirroring a subtree in a plane ------------===//
//
// Every rule here is its own inverse: mirroring twice in the same plane
// gives back what was there, which is how a host undoes a mirror and how the
// tests check the rules. docs/utilities.md has the rules with a picture.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/containers/vorParameterUtils.h"

#include "vorparameter/parameter/vorParameterGuards.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/platform/giXform3.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <cmath>
#include <optional>
#include <unordered_set>

namespace {

/// The text mode 8 writes for a plane that is given by its normal. The
/// spelling is the one hosts have always stored.
constexpr const char* kArbitraryPlane = "arbitary";

/// v + 180, kept in v's turn [360k, 360k + 360): 30 gives 210, 200 gives 20.
double add_half_turn(double v) {
    const double turn_start = 360.0 * std::floor(v / 360.0);
    const double r = v + 180.0;
    return r >= turn_start + 360.0 ? r - 360.0 : r;
}

/// v - 180, kept in v's turn [360k - 180, 360k + 180): 30 gives -150, -150
/// gives 30.
double sub_half_turn(double v) {
    const double turn_start = 360.0 * std::floor((v + 180.0) / 360.0) - 180.0;
    const double r = v - 180.0;
    return r < turn_start ? r + 360.0 : r;
}

/// The normal of a plane named by `name`, or none for another text.
std::optional<giVector3> named_plane_normal(const utString& name) {
    if (vorequal_nocase(name.view(), "xy"))
        return giVector3(0.0, 0.0, 1.0);
    if (vorequal_nocase(name.view(), "yz"))
        return giVector3(1.0, 0.0, 0.0);
    if (vorequal_nocase(name.view(), "zx"))
        return giVector3(0.0, 1.0, 0.0);
    return std::nullopt;
}

/// One run of mirror_parameters.
class Mirror {
public:
    explicit Mirror(const giXform3& xform)
        : m_xform(xform) {}

    void visit(vorParameter& node);
    /// True once a value was written.
    bool wrote() const { return m_wrote; }

private:
    bool is_mirrored_whole(const vorParameter* node) const {
        return node && m_wholes.count(node) != 0;
    }
    /// True for the members (and their elements) of something already
    /// mirrored as one value.
    bool inside_mirrored_whole(const vorParameter& node) const {
        const vorParameter* parent = node.parent();
        return is_mirrored_whole(&node) || is_mirrored_whole(parent) ||
               (parent && is_mirrored_whole(parent->parent()));
    }

    void mirror_workplane(vorParameter& map);
    void mirror_vector(vorParameter& vector, int mode);
    void mirror_number(vorParameter& number, int mode);
    void mirror_text(vorParameter& text, int mode);
    void swap_with_end(vorParameter& start);
    void mirror_plane_choice(vorParameter& choice);

    const giXform3& m_xform;
    std::unordered_set<const vorParameter*> m_wholes;
    bool m_wrote = false;
};

void Mirror::visit(vorParameter& node) {
    const int mode = node.get_mirror_mode();
    if (mode == MIRROR_NONE || node.is_ref() || inside_mirrored_whole(node))
        return;
    m_wrote = true;
    if (vorParameterUtils::is_workplane(node))
        mirror_workplane(node);
    else if (vorParameterUtils::is_vector_n(node, 3))
        mirror_vector(node, mode);
    else if (node.type() == TYPE_NUMERIC)
        mirror_number(node, mode);
    else if (node.type() == TYPE_STRING || node.type() == TYPE_ENUM)
        mirror_text(node, mode);
}

void Mirror::mirror_workplane(vorParameter& map) {
    giWorkplane3 workplane;
    vorParameterUtils::to_giworkplane3(map, workplane);
    vorParameterUtils::from_giworkplane3(map, workplane.transformed(m_xform));
    m_wholes.insert(&map);
}

void Mirror::mirror_vector(vorParameter& vector, int mode) {
    // Colours and per-plane settings are triples too, but hold no geometry.
    if (vorParameterUtils::is_vector_n_of_type(vector, 3, VECTOR_ACCESS_RGB) ||
        vorParameterUtils::is_vector_n_of_type(vector, 3, VECTOR_ACCESS_PLANES))
        return;
    if (mode == MIRROR_DIRECTION)
        vorParameterUtils::from_givector3(vector,
                                          m_xform.apply(vorParameterUtils::to_givector3(vector)));
    else if (mode == MIRROR_END_POINT)
        swap_with_end(vector);
    else
        vorParameterUtils::from_gipoint3(vector,
                                         m_xform.apply(vorParameterUtils::to_gipoint3(vector)));
    m_wholes.insert(&vector);
}

/// A mirrored segment runs the other way round, so that a path keeps its
/// side of the material (climb stays climb): the start becomes the image of
/// the end and the end the image of the start.
void Mirror::swap_with_end(vorParameter& start) {
    vorParameter* parent = start.parent();
    vorParameterPtr end = parent ? (*parent)[vorParameterKey("End")] : vorParameterPtr();
    const giPoint3 start_image = m_xform.apply(vorParameterUtils::to_gipoint3(start));
    if (end.is_null() || end.get() == &start || end->is_ref() ||
        !vorParameterUtils::is_vector_n(*end, 3)) {
        vorParameterUtils::from_gipoint3(start, start_image);
        return;
    }
    vorParameterUtils::from_gipoint3(start, m_xform.apply(vorParameterUtils::to_gipoint3(*end)));
    vorParameterUtils::from_gipoint3(*end, start_image);
    m_wholes.insert(end.get());
}

void Mirror::mirror_number(vorParameter& number, int mode) {
    const double v = number.get_double();
    switch (mode) {
    case MIRROR_NEGATE:
        number.set_double(0.0 - v); // 0 - v: no "-0" for a zero
        break;
    case MIRROR_ADD_HALF_TURN:
        number.set_double(add_half_turn(v));
        break;
    case MIRROR_SUB_HALF_TURN:
        number.set_double(sub_half_turn(v));
        break;
    case MIRROR_SUPPLEMENT:
        number.set_double(180.0 - v);
        break;
    default:
        break;
    }
}

void Mirror::mirror_text(vorParameter& text, int mode) {
    if (mode == MIRROR_ARBITRARY_NORMAL) {
        mirror_plane_choice(text);
        return;
    }
    if (mode != MIRROR_LEFT_RIGHT)
        return;
    const utString value = text.get_string();
    if (vorequal_nocase(value.view(), "left"))
        text.set_string("right");
    else if (vorequal_nocase(value.view(), "right"))
        text.set_string("left");
}

/// A plane chosen by name ("xy", "yz", "zx") or given by the normal in the
/// sibling "Normal" ("arbitary"). A mirrored plane is in general none of the
/// named ones, so the result is always given by its normal.
void Mirror::mirror_plane_choice(vorParameter& choice) {
    vorParameter* parent = choice.parent();
    if (!parent)
        return;
    vorParameterPtr normal_par = (*parent)[vorParameterKey("Normal")];
    if (normal_par->is_ref() || !vorParameterUtils::is_vector_n(*normal_par, 3))
        return;
    const utString value = choice.get_string();
    std::optional<giVector3> normal = named_plane_normal(value);
    if (!normal && !vorequal_nocase(value.view(), kArbitraryPlane))
        return;
    const giVector3 image =
        m_xform.apply(normal.value_or(vorParameterUtils::to_givector3(*normal_par)));
    choice.set_string(kArbitraryPlane);
    vorParameterUtils::from_givector3(*normal_par, image);
    m_wholes.insert(normal_par.get());
}

} // namespace

void vorParameterUtils::mirror_parameters(vorParameterPtr root, const giPoint3& point,
                                          const giVector3& normal) {
    const bool point_finite =
        std::isfinite(point.x()) && std::isfinite(point.y()) && std::isfinite(point.z());
    // try_from refuses zero and non-finite normals, and takes tiny ones.
    if (root.is_null() || !point_finite || !giUnitVec3::try_from(normal))
        return;
    const giXform3 xform = giXform3::reflection(point, normal);
    Mirror mirror(xform);
    {
        // Each write would look for the nearest on-modify function up the
        // tree, which costs the depth of the tree per write. The mirror is
        // one change of the subtree instead: one call, from its top.
        vorBlockParUpdateCallbacks one_change;
        mirror.visit(*root);
        vorParameterIter it(root);
        while (++it)
            mirror.visit(*it());
    }
    if (mirror.wrote())
        root->onmodify_callback();
}
