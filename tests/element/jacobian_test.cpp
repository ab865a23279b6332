// Jacobians of simple shapes by hand, and the lines of their stops.
#include "element/jacobian.h"

#include <gtest/gtest.h>

#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

TEST(Jacobian, MeasuresVolumesAreasAndLengths) {
  const Matrix<4, 3> tetrahedron{{0, 0, 0, 2, 0, 0, 1, 3, 0, 0, 0.5, 4}};
  const Matrix<3, 3> flat{{0, 0, 0, 3, 0, 0, 0, 4, 0}};    // right angle, legs 3 and 4, in the plane z = 0
  const Matrix<3, 3> tilted{{0, 0, 0, 0, 3, 3, 0, 0, 5}};  // in the plane x = 0
  const Matrix<2, 3> DERIV = SFR2D<3>(0.0, 0.0).DERIV;
  const ShapeFunctions<3, 4> solid = SFR3D<4>(0.25, 0.25, 0.25);
  Matrix<3, 4> CARTD;

  EXPECT_NEAR(JACOB(solid.DERIV, tetrahedron, 1, CARTD), 24.0, 1e-14);  // 6 V
  EXPECT_NEAR(JACOB2D(DERIV, flat, 1), 12.0, 1e-14);                    // 2 A
  EXPECT_NEAR(JACOB2D(DERIV, tilted, 1), 15.0, 1e-14);
  EXPECT_LT(distance(PROMA1(CARTD, tetrahedron), Matrix<3>::identity()), 1e-15);  // d x_j / d x_i
  EXPECT_NEAR(GPCOD(tetrahedron, solid.SHAPEN)[2], 1.0, 1e-15);
  const auto line = JACOB1D(SFR1D<2>(0.0).DERIV, Matrix<2, 3>{{1, 1, 0, 4, 1, 4}}, 1);
  EXPECT_NEAR(line.DJACB, 2.5, 1e-15);  // L / 2
  EXPECT_NEAR(line.TRANF[0], 0.6, 1e-15);
  EXPECT_NEAR(line.TRANF[2], 0.8, 1e-15);
  EXPECT_NEAR(line.CARTD(0, 1), 0.2, 1e-15);
}

TEST(Jacobian, ThatIsNotPositiveStopsWithTheElement) {
  const Matrix<4, 3> mirrored{{0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1}};
  const Matrix<3, 2> turned{{0, 0, 0, 1, 1, 0}};
  Matrix<3, 4> CARTD3;
  Matrix<2, 3> CARTD2;
  const auto text = [](const std::string& routine, const std::string& element) {
    return "stop \n\n PROGRAMA DETENIDO EN LA SUBROUTINA " + routine +
           "\n            AREA CERO O NEGATIVA \n           ELEMENTO NUMER" + element + "\n";
  };

  EXPECT_EQ(endOf([&] { return JACOB(SFR3D<4>(0, 0, 0).DERIV, mirrored, 17, CARTD3); }), text("JACOB3D", "    17"));
  EXPECT_EQ(endOf([&] { return JACOB(SFR2D<3>(0, 0).DERIV, turned, 3, CARTD2); }), text("JACOB2D", "     3"));
  EXPECT_EQ(endOf([] { return JACOB1D(SFR1D<2>(0.0).DERIV, Matrix<2, 3>{}, 123456); }), text("JACOB1D", "O *****"));
}

}  // namespace
}  // namespace zema
