// Jacobians of simple shapes by hand, and the lines of their stops.
#include "element/jacobian.h"

#include <gtest/gtest.h>

#include "foundation/errors.h"

namespace zema {
namespace {

/// A box of 2 x 4 x 6 with a corner at (1, 1, 1).
Matrix<8, 3> box() {
  return transpose(Matrix<3, 8>{{1, 3, 3, 1, 1, 3, 3, 1,  //
                                 1, 1, 5, 5, 1, 1, 5, 5,  //
                                 1, 1, 1, 1, 7, 7, 7, 7}});
}

template <class Call>
std::string listingOf(const Call& call) {
  try {
    call();
  } catch (const PlainStop& stop) {
    EXPECT_EQ(stop.console(), "");
    return stop.listing();
  }
  return "no stop";
}

TEST(Jacobian, BoxScalesEachDirectionByHalfItsEdge) {
  const ShapeFunctions<3, 8> shape = SFR3D<8>(0.3, -0.2, 0.6);
  Matrix<3, 8> CARTD;

  const double DJACB = JACOB(shape.DERIV, box(), 1, CARTD);

  EXPECT_NEAR(DJACB, 1.0 * 2.0 * 3.0, 1e-14);
  for (int a = 0; a < 8; ++a) {
    EXPECT_NEAR(CARTD(0, a), shape.DERIV(0, a) / 1.0, 1e-15);
    EXPECT_NEAR(CARTD(1, a), shape.DERIV(1, a) / 2.0, 1e-15);
    EXPECT_NEAR(CARTD(2, a), shape.DERIV(2, a) / 3.0, 1e-15);
  }
  EXPECT_NEAR(GPCOD(box(), shape.SHAPEN)[2], 4.0 + 0.6 * 3.0, 1e-14);
}

TEST(Jacobian, DerivativesOfADistortedBrickReproduceCoordinates) {
  Matrix<8, 3> ELCOD = box();
  ELCOD(6, 0) += 0.4;
  ELCOD(1, 1) -= 0.3;
  ELCOD(4, 2) += 0.5;
  Matrix<3, 8> CARTD;

  ASSERT_GT(JACOB(SFR3D<8>(0.3, -0.2, 0.6).DERIV, ELCOD, 1, CARTD), 0.0);

  const Matrix<3> unit = PROMA1(CARTD, ELCOD);  // d x_j / d x_i
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(unit(i, j), i == j ? 1.0 : 0.0, 1e-14);
}

TEST(Jacobian, TetrahedronHasSixTimesItsVolume) {
  const Matrix<4, 3> ELCOD{{0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4}};
  Matrix<3, 4> CARTD;

  EXPECT_NEAR(JACOB(SFR3D<4>(0.25, 0.25, 0.25).DERIV, ELCOD, 1, CARTD), 24.0, 1e-14);
}

TEST(Jacobian, SurfaceInSpaceHasTwiceTheAreaOfItsTriangle) {
  const Matrix<3, 3> ELCOD{{0, 0, 0, 3, 0, 0, 0, 4, 0}};   // right angle, legs 3 and 4, in the plane z = 0
  const Matrix<3, 3> tilted{{0, 0, 0, 0, 3, 3, 0, 0, 5}};  // in the plane x = 0
  const Matrix<2, 3> DERIV = SFR2D<3>(0.0, 0.0).DERIV;

  EXPECT_NEAR(JACOB2D(DERIV, ELCOD, 1), 12.0, 1e-14);
  EXPECT_NEAR(JACOB2D(DERIV, tilted, 1), 15.0, 1e-14);
}

TEST(Jacobian, LineGivesHalfItsLengthAndTheUnitTangent) {
  const Matrix<2, 3> ELCOD{{1, 1, 0, 4, 1, 4}};

  const auto line = JACOB1D(SFR1D<2>(0.0).DERIV, ELCOD, 1);

  EXPECT_NEAR(line.DJACB, 2.5, 1e-15);
  EXPECT_NEAR(line.TRANF[0], 0.6, 1e-15);
  EXPECT_NEAR(line.TRANF[2], 0.8, 1e-15);
  EXPECT_NEAR(line.CARTD(0, 1), 0.2, 1e-15);
}

TEST(Jacobian, ThatIsNotPositiveStopsWithTheElement) {
  Matrix<8, 3> mirrored = box();
  for (int a = 0; a < 8; ++a) mirrored(a, 2) = -mirrored(a, 2);
  Matrix<3, 8> CARTD3;
  const auto solid = [&] { return JACOB(SFR3D<8>(0, 0, 0).DERIV, mirrored, 17, CARTD3); };
  Matrix<2, 3> CARTD2;
  const auto flat = [&] { return JACOB(SFR2D<3>(0, 0).DERIV, Matrix<3, 2>{{0, 0, 0, 1, 1, 0}}, 3, CARTD2); };
  const auto point = [] { return JACOB1D(SFR1D<2>(0.0).DERIV, Matrix<2, 3>{}, 123456); };

  EXPECT_EQ(listingOf(solid),
            "\n\n PROGRAMA DETENIDO EN LA SUBROUTINA JACOB3D\n"
            "            AREA CERO O NEGATIVA \n"
            "           ELEMENTO NUMER    17\n");
  EXPECT_EQ(listingOf(flat),
            "\n\n PROGRAMA DETENIDO EN LA SUBROUTINA JACOB2D\n"
            "            AREA CERO O NEGATIVA \n"
            "           ELEMENTO NUMER     3\n");
  EXPECT_EQ(listingOf(point),
            "\n\n PROGRAMA DETENIDO EN LA SUBROUTINA JACOB1D\n"
            "            AREA CERO O NEGATIVA \n"
            "           ELEMENTO NUMERO *****\n");
}

}  // namespace
}  // namespace zema
