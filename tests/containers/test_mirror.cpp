// Mirroring a subtree in a plane: the rule of each mode on known values, and
// the property that holds for all of them: mirroring twice in the same plane
// gives back the original.

#include "../support/prelude.h"

#include <random>

namespace {

vorParameterPtr with_mode(vorParameterPtr par, vorParameterMirrorMode mode) {
    par->set_mirror_mode(mode);
    return par;
}

vorParameterPtr number(double v, vorParameterMirrorMode mode = MIRROR_NONE) {
    return with_mode(real(v, vorDimensions(), SUB_ANGLE), mode);
}

vorParameterPtr text(const char* s, vorParameterMirrorMode mode) {
    return with_mode(vorParameterPtr(new vorParameterString(s)), mode);
}

vorParameterPtr vector3(giVector3 v, vorParameterMirrorMode mode,
                        vorParameterVectorAccessType access = VECTOR_ACCESS_XYZ) {
    auto* vector = new vorParameterVector(3, number(0));
    vector->set_access_type(access);
    vorParameterPtr par = with_mode(vorParameterPtr(vector), mode);
    vorParameterUtils::from_givector3(*par, v);
    return par;
}

vorParameterPtr workplane(const giWorkplane3& frame) {
    vorParameterPtr map(new vorParameterMap());
    map->add("Origin", vector3({}, MIRROR_NONE));
    map->add("YAxis", vector3({}, MIRROR_NONE));
    map->add("ZAxis", vector3({}, MIRROR_NONE));
    vorParameterUtils::from_giworkplane3(*map, frame);
    return with_mode(map, MIRROR_NEGATE);
}

void expect_near(const giVector3& a, const giVector3& b, const std::string& what) {
    EXPECT_NEAR((a - b).length(), 0.0, 1e-9) << what;
}

/// One member of every kind that mirroring changes.
vorParameterPtr sample_tree(std::mt19937& rng) {
    std::uniform_real_distribution<double> coord(-100, 100);
    auto random_vector = [&] { return giVector3(coord(rng), coord(rng), coord(rng)); };
    vorParameterPtr root(new vorParameterMap());
    const double angle = coord(rng) * 5;
    for (auto mode : {MIRROR_NEGATE, MIRROR_ADD_HALF_TURN, MIRROR_SUB_HALF_TURN, MIRROR_SUPPLEMENT})
        root->add(vorParameterKey("angle" + std::to_string(mode)), number(angle, mode));
    root->add("side", text(rng() % 2 ? "left" : "right", MIRROR_LEFT_RIGHT));
    root->add("point", vector3(random_vector(), MIRROR_NEGATE));
    root->add("axis", vector3(random_vector(), MIRROR_DIRECTION));
    root->add("Start", vector3(random_vector(), MIRROR_END_POINT));
    root->add("End", vector3(random_vector(), MIRROR_NONE));
    root->add("plane", text("arbitary", MIRROR_ARBITRARY_NORMAL));
    root->add("Normal", vector3(random_vector(), MIRROR_NONE));
    giWorkplane3 frame(giPoint3(coord(rng), coord(rng), coord(rng)), giUnitVec3(random_vector()),
                       giUnitVec3(random_vector()));
    root->add("frame", workplane(frame));
    return root;
}

} // namespace

TEST(Mirror, ScalarModes) {
    vorParameterPtr root(new vorParameterMap());
    struct Case {
        vorParameterPtr par;
        const char* expected;
    } cases[] = {
        {number(30, MIRROR_NEGATE), "-30"},
        {number(0, MIRROR_NEGATE), "0"},
        {number(30, MIRROR_SUB_HALF_TURN), "-150"},
        {number(-150, MIRROR_SUB_HALF_TURN), "30"},
        {number(30, MIRROR_SUPPLEMENT), "150"},
        {number(30, MIRROR_ADD_HALF_TURN), "210"},
        {number(200, MIRROR_ADD_HALF_TURN), "20"},
        {number(-30, MIRROR_ADD_HALF_TURN), "-210"},
        {number(30, MIRROR_NONE), "30"},
        {number(30, MIRROR_LEFT_RIGHT), "30"},
        {text("LEFT", MIRROR_LEFT_RIGHT), "right"},
        {text("Right", MIRROR_LEFT_RIGHT), "left"},
        {text("lefty", MIRROR_LEFT_RIGHT), "lefty"},
        {text("left", MIRROR_NEGATE), "left"},
    };
    int i = 0;
    for (const Case& c : cases)
        root->add(vorParameterKey("m" + std::to_string(i++)), c.par);
    vorParameterUtils::mirror_parameters(root, giPoint3(3, 4, 5), giVector3(0, 0, 2));
    for (const Case& c : cases)
        EXPECT_EQ(c.par->get_string(), c.expected) << c.par->get_name().view();

    auto* choice = new vorParameterEnum("left|right", "left");
    vorParameterPtr side = with_mode(vorParameterPtr(choice), MIRROR_LEFT_RIGHT);
    vorParameterUtils::mirror_parameters(side, giPoint3(), giVector3(1, 0, 0));
    EXPECT_EQ(side->get_string(), "right");
}

TEST(Mirror, GeometryInThePlaneXEquals5) {
    vorParameterPtr root(new vorParameterMap());
    vorParameterPtr point = root->add("point", vector3({1, 2, 3}, MIRROR_NEGATE));
    vorParameterPtr axis = root->add("axis", vector3({1, 0, 0}, MIRROR_DIRECTION));
    vorParameterPtr colour =
        root->add("colour", vector3({1, 2, 3}, MIRROR_NEGATE, VECTOR_ACCESS_RGB));
    vorParameterPtr frame = root->add(
        "frame",
        workplane(giWorkplane3(giPoint3(1, 0, 0), giUnitVec3(0, 1, 0), giUnitVec3(1, 0, 0))));
    vorParameterPtr plane = root->add("plane", text("XY", MIRROR_ARBITRARY_NORMAL));
    vorParameterPtr normal = root->add("Normal", vector3({7, 7, 7}, MIRROR_NONE));
    // A reference is neither mirrored nor followed to what it refers to.
    vorParameterPtr outside = vector3({1, 2, 3}, MIRROR_NEGATE);
    vorParameterRoot top;
    top.add("outside", outside);
    top.add("root", root);
    root->add("ref", with_mode(reference("^outside"), MIRROR_NEGATE));

    vorParameterUtils::mirror_parameters(root, giPoint3(5, 9, 9), giVector3(-3, 0, 0));

    auto coordinates = [](const vorParameterPtr& par) {
        return vorParameterUtils::to_givector3(*par);
    };
    EXPECT_EQ(coordinates(point), giVector3(9, 2, 3));
    EXPECT_EQ(coordinates(axis), giVector3(-1, 0, 0));
    EXPECT_EQ(coordinates(colour), giVector3(1, 2, 3));
    EXPECT_EQ(coordinates(outside), giVector3(1, 2, 3));
    EXPECT_EQ(plane->get_string(), "arbitary");
    EXPECT_EQ(coordinates(normal), giVector3(0, 0, 1));
    giWorkplane3 mirrored;
    ASSERT_TRUE(vorParameterUtils::to_giworkplane3(*frame, mirrored));
    expect_near(mirrored.origin() - giPoint3(), {9, 0, 0}, "origin");
    expect_near(mirrored.y_axis(), {0, 1, 0}, "Y");
    expect_near(mirrored.z_axis(), {-1, 0, 0}, "Z");
    expect_near(mirrored.x_axis(), {0, 0, 1}, "X = Y x Z: the image of X reversed");

    // No plane, no change.
    for (giVector3 bad : {giVector3(), giVector3(NAN, 0, 1), giVector3(INFINITY, 0, 0)})
        vorParameterUtils::mirror_parameters(root, giPoint3(), bad);
    vorParameterUtils::mirror_parameters(root, giPoint3(NAN, 0, 0), giVector3(1, 0, 0));
    EXPECT_EQ(coordinates(point), giVector3(9, 2, 3));
}

TEST(Mirror, TwiceGivesBackTheOriginal) {
    std::mt19937 rng(20240611);
    std::uniform_real_distribution<double> coord(-100, 100);
    for (int round = 0; round < 200; ++round) {
        vorParameterPtr tree = sample_tree(rng);
        vorParameterPtr before = tree.copy();
        const giPoint3 point(coord(rng), coord(rng), coord(rng));
        const giVector3 normal(coord(rng), coord(rng), coord(rng));

        vorParameterUtils::mirror_parameters(tree, point, normal);
        giWorkplane3 frame;
        ASSERT_TRUE(vorParameterUtils::to_giworkplane3(*(*tree)["frame"], frame));
        EXPECT_NEAR(frame.x_axis().vector().dot(frame.y_axis()), 0.0, 1e-9);
        EXPECT_NEAR(frame.y_axis().vector().dot(frame.z_axis()), 0.0, 1e-9);
        expect_near(frame.y_axis().cross(frame.z_axis()), frame.x_axis(), "right-handed");
        vorParameterUtils::mirror_parameters(tree, point, normal);

        vorParameterIter it(tree);
        it.set_leaf_only(1);
        while (++it) {
            vorParameterPtr old = (*before)[it.index()];
            const std::string where = it.index().str().c_str();
            if (it()->type() == TYPE_NUMERIC)
                EXPECT_NEAR(it()->get_double(), old->get_double(), 1e-9) << where;
            else
                EXPECT_EQ(it()->get_string(), old->get_string()) << where;
        }
    }
}
