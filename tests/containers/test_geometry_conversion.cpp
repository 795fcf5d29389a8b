// Converting between parameters and the geometry value types, and the
// vector and workplane tests.

#include "container_test_helpers.h"

#include "../support/prelude.h"

using namespace container_test;
using Utils = vorParameterUtils;

namespace {

vorParameterPtr xyz(double x, double y, double z) {
    vorParameterPtr v = vector_of(3, VECTOR_ACCESS_XYZ);
    Utils::from_givector3(*v, giVector3(x, y, z));
    return v;
}

vorParameterPtr workplane_map(vorParameterSubType kind = SUB_MAP) {
    vorParameterPtr map(new vorParameterMap(kind));
    map->add("Origin", xyz(1, 2, 3));
    map->add("YAxis", xyz(0, 0, 1));
    map->add("ZAxis", xyz(1, 0, 0));
    return map;
}

} // namespace

TEST(VectorConversion, ArraysOfNumbersConvertAndVectorAndWorkplaneTests) {
    vorParameterPtr v = xyz(1, 2, 3);
    EXPECT_EQ(Utils::to_gipoint2(*v), giPoint2(1, 2));
    EXPECT_EQ(Utils::to_giunitvec3(*xyz(0, 0, 5)), giUnitVec3(0, 0, 1));
    EXPECT_EQ(Utils::to_giunitvec3(*xyz(0, 0, 0)), giUnitVec3(1, 0, 0));
    vorParameterMap scope;
    EXPECT_EQ(Utils::to_givector3(*vorEvaluator(&scope).evaluate("{1;2} + {4}")),
              giVector3(1, 2, 4));

    EXPECT_TRUE(Utils::from_givector2(*v, giVector2(4, 5)));
    EXPECT_EQ(Utils::to_gipoint3(*v), giPoint3(4, 5, 3));
    v->lock(1);
    Utils::from_givector3(*v, giVector3(7, 7, 7));
    EXPECT_EQ(Utils::to_gipoint3(*v), giPoint3(4, 5, 3)) << "locked elements ignore writes";

    // Not an array of enough numbers: the default value, never a crash.
    vorParameterPtr two(new vorParameterVector(2, number(7)));
    vorParameterPtr words(new vorParameterVector(3, text("a")));
    for (const vorParameterPtr& bad : {two, words, number(4), vorParameterPtr()}) {
        EXPECT_EQ(Utils::to_gipoint3(*bad), giPoint3());
        EXPECT_EQ(Utils::to_giunitvec3(*bad), giUnitVec3(1, 0, 0));
        EXPECT_FALSE(Utils::from_gipoint3(*bad, giPoint3(9, 9, 9)));
    }
    EXPECT_EQ(Utils::to_gipoint2(*two), giPoint2(7, 7));

    vorParameterPtr plain = array_of({0, 1, 2});
    EXPECT_FALSE(Utils::is_vector(*plain));
    EXPECT_EQ(Utils::to_gipoint3(*plain), giPoint3(0, 1, 2)) << "converts, but is no vector";
    EXPECT_TRUE(Utils::is_vector_n_of_type(*xyz(0, 0, 0), 3, VECTOR_ACCESS_XYZ));
    EXPECT_FALSE(Utils::is_vector_n_of_type(*xyz(0, 0, 0), 3, VECTOR_ACCESS_RGB));
    EXPECT_FALSE(Utils::is_vector_2D(*xyz(0, 0, 0)));

    vorParameterPtr map = workplane_map();
    giWorkplane3 wp;
    ASSERT_TRUE(Utils::to_giworkplane3(*map, wp));
    EXPECT_EQ(wp.origin(), giPoint3(1, 2, 3));
    EXPECT_EQ(wp.x_axis(), giUnitVec3(0, 1, 0));
    const giWorkplane3 moved(giPoint3(5, 6, 7), giUnitVec3(0, 1, 0), giUnitVec3(0, 0, 1));
    ASSERT_TRUE(Utils::from_giworkplane3(*map, moved));
    ASSERT_TRUE(Utils::to_giworkplane3(*map, wp));
    EXPECT_EQ(wp.origin(), giPoint3(5, 6, 7));
    EXPECT_EQ(wp.z_axis(), giUnitVec3(0, 0, 1));

    map->add("Name", text("top"));
    EXPECT_FALSE(Utils::to_giworkplane3(*map, wp)) << "a fourth member";
    EXPECT_EQ(wp.origin(), giPoint3());
    EXPECT_FALSE(Utils::from_giworkplane3(*map, moved));
    vorParameterPtr flat = workplane_map();
    flat->remove("YAxis");
    flat->add("YAxis", plain);
    EXPECT_FALSE(Utils::is_workplane(*flat)) << "an axis that is no vector";
    EXPECT_FALSE(Utils::is_workplane(*workplane_map(SUB_MAP_OTHER)));
}
