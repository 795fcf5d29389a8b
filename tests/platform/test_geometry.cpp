// Tests of the geometry value types: angle exactness, unit vectors,
// transforms and workplanes.
#include "../support/prelude.h"

#include <cmath>

namespace {

constexpr double kTol = 1e-12;
constexpr double kPi = 3.14159265358979323846;

void expect_near(const giVector3& a, const giVector3& b) {
    EXPECT_NEAR((a - b).length(), 0.0, kTol)
        << "(" << a.x() << ", " << a.y() << ", " << a.z() << ") vs (" << b.x() << ", " << b.y()
        << ", " << b.z() << ")";
}

void expect_near(const giPoint3& a, const giPoint3& b) {
    expect_near(a - giPoint3(), b - giPoint3());
}

void expect_right_handed_orthonormal(const giWorkplane3& wp) {
    const giVector3 axes[3] = {wp.x_axis(), wp.y_axis(), wp.z_axis()};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(axes[i].dot(axes[j]), i == j ? 1.0 : 0.0, kTol) << i << "," << j;
    expect_near(wp.y_axis().cross(wp.z_axis()), wp.x_axis());
}

const giPoint3 kSamplePoints[] = {{0, 0, 0}, {1, 2, 3}, {-4.5, 0.25, 7}, {1e3, -2e3, 5e2}};

} // namespace

TEST(GeometryVector, UnitVectorOfZeroOrNonFiniteVectorIsXAxisAndTryFromFails) {
    EXPECT_EQ(giUnitVec3(giVector3()), giUnitVec3(1, 0, 0));
    EXPECT_EQ(giUnitVec2(giVector2()), giUnitVec2(1, 0));
    EXPECT_FALSE(giUnitVec3::try_from(giVector3()).has_value());
    EXPECT_FALSE(giUnitVec3::try_from(giVector3(NAN, 1, 0)).has_value());
    EXPECT_FALSE(giUnitVec2::try_from(giVector2(INFINITY, 0)).has_value());
    EXPECT_EQ(giVector3().normalised(), giVector3());

    // Tiny and huge vectors still have a direction.
    auto tiny = giUnitVec3::try_from(giVector3(3e-200, 4e-200, 0));
    ASSERT_TRUE(tiny.has_value());
    expect_near(*tiny, giVector3(0.6, 0.8, 0));
    expect_near(giUnitVec3(giVector3(0, 3e200, 4e200)), giVector3(0, 0.6, 0.8));

    // Right-handedness of cross products and the sign of the 2D cross.
    EXPECT_EQ(giVector3(1, 0, 0).cross(giVector3(0, 1, 0)), giVector3(0, 0, 1));
    EXPECT_GT(giVector2(1, 0).cross(giVector2(0, 1)), 0.0);
    EXPECT_EQ(giPoint3(1, 2, 3) + (giPoint3(4, 6, 3) - giPoint3(1, 2, 3)), giPoint3(4, 6, 3));
    EXPECT_DOUBLE_EQ(giPoint3(1, 2, 3).distance_to(giPoint3(4, 6, 3)), 5.0);
}

TEST(GeometryAngle, QuarterTurnsInDegreesAreExact) {
    const double expected_sin[4] = {0, 1, 0, -1};
    for (int k = -8; k <= 8; ++k) {
        giAngle a(GI_DEGREES, 90.0 * k);
        const int q = ((k % 4) + 4) % 4;
        EXPECT_EQ(a.sin(), expected_sin[q]) << 90 * k;
        EXPECT_EQ(a.cos(), expected_sin[(q + 1) % 4]) << 90 * k;
        int status = -1;
        const double t = a.tan(status);
        EXPECT_EQ(status, q % 2) << 90 * k;
        if (status == 0) {
            EXPECT_EQ(t, 0.0);
        }
    }
    int status = -1;
    EXPECT_EQ(giAngle(GI_DEGREES, 45).tan(status), 1.0);
    EXPECT_EQ(giAngle(GI_DEGREES, 60).cos(), 0.5);
    EXPECT_EQ(giAngle(GI_DEGREES, -210).sin(), 0.5);

    // Poles given in radians are caught within a few ulps of the angle...
    giAngle(GI_RADIANS, kPi / 2).tan(status);
    EXPECT_EQ(status, 1);
    giAngle(GI_RADIANS, 3 * kPi / 2).tan(status);
    EXPECT_EQ(status, 1);
    // ...but an angle measurably off the pole has a (large) tangent.
    EXPECT_NEAR(giAngle(GI_RADIANS, kPi / 2 - 1e-9).tan(status), 1e9, 1e3);
    EXPECT_EQ(status, 0);
    giAngle(GI_DEGREES, NAN).tan(status);
    EXPECT_EQ(status, 1);
}

TEST(GeometryAngle, UnitConversionsAndInverseFunctionsRoundTrip) {
    EXPECT_EQ(giAngle(GI_DEGREES, 37.5).degrees(), 37.5);
    EXPECT_EQ(giAngle(GI_RADIANS, 1.25).value(GI_RADIANS), 1.25);
    EXPECT_NEAR(giAngle(GI_DEGREES, 180).radians(), kPi, 1e-15);
    EXPECT_NEAR(giAngle(GI_RADIANS, giAngle(GI_DEGREES, 123.4).radians()).degrees(), 123.4, 1e-12);

    for (double deg = -89.0; deg <= 89.0; deg += 7.25) {
        const giAngle a(GI_DEGREES, deg);
        int status = 0;
        EXPECT_NEAR(giAngle::from_sine(a.sin()).degrees(), deg, 1e-9);
        EXPECT_NEAR(giAngle::from_tangent(a.tan(status)).degrees(), deg, 1e-9);
        EXPECT_NEAR(giAngle::from_cosine(a.cos()).degrees(), std::fabs(deg), 1e-9);
    }
    // Exactly known inverses come back exact, so they feed tan() correctly.
    int status = 0;
    giAngle::from_sine(1.0).tan(status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(giAngle::from_cosine(-0.5).degrees(), 120.0);
    EXPECT_EQ(giAngle::from_cosine(0.0).degrees(), 90.0);
    EXPECT_EQ(giAngle::from_tangent(-INFINITY).degrees(), -90.0);
    // Rounding just past the domain is clamped rather than giving NaN.
    EXPECT_EQ(giAngle::from_sine(1.0000000000000002).degrees(), 90.0);
    EXPECT_EQ(giAngle::from_cosine(-1.0000000000000002).degrees(), 180.0);
}

TEST(GeometryAngle, FromSineCosineChoosesTheQuadrant) {
    struct Case {
        double y, x, degrees;
    } cases[] = {{1, 1, 45},
                 {1, -1, 135},
                 {-1, -1, -135},
                 {-1, 1, -45},
                 {0, 1, 0},
                 {1, 0, 90},
                 {0, -1, 180},
                 {-0.0, -1, 180},
                 {-1, 0, -90},
                 {0, 0, 0},
                 {2, -1, 180 - std::atan(2.0) * 180 / kPi},
                 {-1, -3, -180 + std::atan(1 / 3.0) * 180 / kPi}};
    for (const Case& c : cases)
        EXPECT_NEAR(giAngle::from_sine_cosine(c.y, c.x).degrees(), c.degrees, 1e-12)
            << c.y << ", " << c.x;
    int status = 0;
    giAngle::from_sine_cosine(-5, 0).tan(status);
    EXPECT_EQ(status, 1);
}

TEST(GeometryXform, ReflectionCompositionOrderAndInverse) {
    const giPoint3 on_plane(1, 2, 3);
    const giVector3 normal(1, -2, 2); // length 3, deliberately not unit
    const giXform3 mirror = giXform3::reflection(on_plane, normal);

    EXPECT_NEAR(mirror.determinant(), -1.0, kTol);
    EXPECT_TRUE(mirror.reverses_orientation());
    for (const giPoint3& p : kSamplePoints) {
        expect_near(mirror.apply(mirror.apply(p)), p);
        // The image is as far from the plane as p, on the other side.
        const giVector3 n = giUnitVec3(normal);
        EXPECT_NEAR((mirror.apply(p) - on_plane).dot(n), -(p - on_plane).dot(n), 1e-9);
    }
    const giVector3 in_plane = giVector3(2, 1, 0); // orthogonal to the normal
    expect_near(mirror.apply(on_plane), on_plane);
    expect_near(mirror.apply(on_plane + 4.0 * in_plane), on_plane + 4.0 * in_plane);
    expect_near(mirror.apply(in_plane), in_plane);
    expect_near(mirror.apply(normal), -normal);

    // A zero normal defines no plane.
    expect_near(giXform3::reflection(on_plane, giVector3()).apply(giPoint3(5, 6, 7)),
                giPoint3(5, 6, 7));

    const giPoint3 pivot(1, 1, 0);
    const giXform3 turn = giXform3::rotation(pivot, giUnitVec3(0, 0, 1), giAngle(GI_DEGREES, 90));
    const giXform3 move = giXform3::translation(giVector3(10, 0, 0));
    const giXform3 grow = giXform3::scaling(giPoint3(0, 0, 1), 2.5);

    // Quarter turn about a vertical line through the pivot, right-hand rule.
    expect_near(turn.apply(pivot + giVector3(1, 0, 5)), pivot + giVector3(0, 1, 5));
    expect_near(turn.apply(giVector3(1, 0, 0)), giVector3(0, 1, 0));
    // Directions are not translated.
    EXPECT_EQ(move.apply(giVector3(1, 2, 3)), giVector3(1, 2, 3));
    // b is applied first in a * b.
    expect_near((move * turn).apply(pivot + giVector3(1, 0, 0)), giPoint3(11, 2, 0));
    expect_near((turn * move).apply(pivot + giVector3(1, 0, 0)), giPoint3(1, 12, 0));

    const giXform3 chain = move * turn * grow * giXform3::reflection(pivot, giVector3(1, 1, 1));
    const auto inv = chain.inverse();
    ASSERT_TRUE(inv.has_value());
    const giXform3 reversed = *grow.inverse() * *turn.inverse() * *move.inverse();
    for (const giPoint3& p : kSamplePoints) {
        expect_near(inv->apply(chain.apply(p)), p);
        expect_near(chain.apply(inv->apply(p)), p);
        expect_near((*(move * turn * grow).inverse()).apply(p), reversed.apply(p));
    }
    EXPECT_FALSE(giXform3::scaling(pivot, 0.0).inverse().has_value());
    // Collapsing a unit vector falls back to the X axis rather than NaN.
    EXPECT_EQ(giXform3::scaling(pivot, 0.0).apply(giUnitVec3(0, 1, 0)), giUnitVec3());
}

TEST(GeometryWorkplane, AxesStayOrthonormalAndRightHandedFromAnyInputAndTransform) {
    const giPoint3 origin(5, -1, 2);
    const giUnitVec3 z(0, 0.6, 0.8);
    const giWorkplane3 skewed(origin, giUnitVec3(1, 1, 1), z);
    expect_right_handed_orthonormal(skewed);
    EXPECT_EQ(skewed.z_axis(), z);
    EXPECT_GT(skewed.y_axis().dot(giUnitVec3(1, 1, 1)), 0.0); // same side as the given Y

    // Parallel (and nearly parallel) Y still gives a frame.
    expect_right_handed_orthonormal(giWorkplane3(origin, z, z));
    expect_right_handed_orthonormal(giWorkplane3(origin, -z, z));
    expect_right_handed_orthonormal(giWorkplane3(origin, giUnitVec3(1e-9, 0.6, 0.8), z));

    const giXform3 moves =
        giXform3::translation(giVector3(1, 2, 3)) *
        giXform3::rotation(origin, giUnitVec3(1, 2, 3), giAngle(GI_RADIANS, 0.7)) *
        giXform3::scaling(giPoint3(), 3.0);
    const giWorkplane3 moved = skewed.transformed(moves);
    expect_right_handed_orthonormal(moved);
    expect_near(moved.origin(), moves.apply(origin));
    expect_near(moved.z_axis(), giUnitVec3(moves.apply(z)));

    const giWorkplane3 wp(giPoint3(3, 4, 5), giUnitVec3(0, 1, 0), giUnitVec3(0.6, 0, 0.8));
    const giXform3 mirror = giXform3::reflection(giPoint3(1, 0, 0), giVector3(1, 0, 0));
    const giWorkplane3 image = wp.transformed(mirror);

    expect_right_handed_orthonormal(image);
    expect_near(image.origin(), giPoint3(-1, 4, 5));
    expect_near(image.y_axis(), mirror.apply(wp.y_axis().vector()));
    expect_near(image.z_axis(), giVector3(-0.6, 0, 0.8));
    // X is rebuilt as Y x Z, so it is the negated mirror image of the old X.
    expect_near(image.x_axis(), -mirror.apply(wp.x_axis().vector()));
    // Mirroring back restores the original frame exactly up to rounding.
    const giWorkplane3 back = image.transformed(mirror);
    expect_near(back.x_axis(), wp.x_axis());
    expect_near(back.origin(), wp.origin());
}
