//===- giXform3.cpp - Affine transforms of 3D space -----------------------===//
//
// Construction, composition and inversion of giXform3. Every constructor
// builds the linear part first and then chooses the translation that keeps
// its fixed point (the rotation axis, the scaling centre, the mirror plane)
// in place: t = c - M c.
//
//===----------------------------------------------------------------------===//
#include "vorparameter/platform/giXform3.h"

#include <cmath>

namespace {

/// The translation that makes `xform` (whose linear part is set and whose
/// translation is zero) leave `fixed` where it is.
giVector3 translation_fixing(const giXform3& xform, const giPoint3& fixed) {
    return fixed - xform.apply(fixed);
}

} // namespace

giXform3 giXform3::translation(const giVector3& offset) {
    giXform3 xform;
    xform.t_[0] = offset.x();
    xform.t_[1] = offset.y();
    xform.t_[2] = offset.z();
    return xform;
}

giXform3 giXform3::rotation(const giPoint3& point, const giUnitVec3& axis, const giAngle& angle) {
    // Rodrigues: M = c I + s [k]x + (1 - c) k k^T. giAngle gives exact sine
    // and cosine for quarter turns in degrees, so those come out exact.
    const double c = angle.cos();
    const double s = angle.sin();
    const double k[3] = {axis.x(), axis.y(), axis.z()};
    const double skew[3][3] = {{0.0, -k[2], k[1]}, {k[2], 0.0, -k[0]}, {-k[1], k[0], 0.0}};
    giXform3 xform;
    for (int r = 0; r < 3; ++r)
        for (int col = 0; col < 3; ++col)
            xform.m_[r][col] = (r == col ? c : 0.0) + s * skew[r][col] + (1.0 - c) * k[r] * k[col];
    return translation(translation_fixing(xform, point)) * xform;
}

giXform3 giXform3::scaling(const giPoint3& centre, double factor) {
    giXform3 xform;
    for (int i = 0; i < 3; ++i)
        xform.m_[i][i] = factor;
    return translation(translation_fixing(xform, centre)) * xform;
}

giXform3 giXform3::reflection(const giPoint3& point, const giVector3& normal) {
    std::optional<giUnitVec3> unit = giUnitVec3::try_from(normal);
    if (!unit)
        return giXform3();
    // Householder: M = I - 2 n n^T.
    const double n[3] = {unit->x(), unit->y(), unit->z()};
    giXform3 xform;
    for (int r = 0; r < 3; ++r)
        for (int col = 0; col < 3; ++col)
            xform.m_[r][col] = (r == col ? 1.0 : 0.0) - 2.0 * n[r] * n[col];
    return translation(translation_fixing(xform, point)) * xform;
}

giXform3 giXform3::operator*(const giXform3& first) const {
    // (A * B)(x) = A (B x + tB) + tA = (A B) x + (A tB + tA).
    giXform3 result;
    for (int r = 0; r < 3; ++r) {
        for (int col = 0; col < 3; ++col)
            result.m_[r][col] = row(r, first.m_[0][col], first.m_[1][col], first.m_[2][col]);
        result.t_[r] = row(r, first.t_[0], first.t_[1], first.t_[2]) + t_[r];
    }
    return result;
}

double giXform3::determinant() const {
    return m_[0][0] * (m_[1][1] * m_[2][2] - m_[1][2] * m_[2][1]) -
           m_[0][1] * (m_[1][0] * m_[2][2] - m_[1][2] * m_[2][0]) +
           m_[0][2] * (m_[1][0] * m_[2][1] - m_[1][1] * m_[2][0]);
}

std::optional<giXform3> giXform3::inverse() const {
    // |det| is at most the product of the row lengths (Hadamard); a
    // determinant far below that bound means the rows are nearly dependent,
    // whatever the overall scale of the transform.
    double bound = 1.0;
    for (int r = 0; r < 3; ++r)
        bound *= std::sqrt(row(r, m_[r][0], m_[r][1], m_[r][2]));
    const double det = determinant();
    if (!(std::fabs(det) > 1e-12 * bound))
        return std::nullopt;

    // M^-1 = adj(M) / det; element (r, c) of the adjugate is the cofactor
    // of (c, r), written here with cyclic indices so the signs come free.
    giXform3 result;
    for (int r = 0; r < 3; ++r) {
        for (int col = 0; col < 3; ++col) {
            const int r1 = (col + 1) % 3, r2 = (col + 2) % 3;
            const int c1 = (r + 1) % 3, c2 = (r + 2) % 3;
            result.m_[r][col] = (m_[r1][c1] * m_[r2][c2] - m_[r1][c2] * m_[r2][c1]) / det;
        }
    }
    // x = M^-1 (y - t), so the inverse translation is -M^-1 t.
    const giVector3 moved = result.apply(offset());
    result.t_[0] = -moved.x();
    result.t_[1] = -moved.y();
    result.t_[2] = -moved.z();
    return result;
}
