// Serial-parallel and short-fibre layers: elastic constants, reductions, axes.
#include <gtest/gtest.h>

#include <cmath>

#include "composite/point_model.h"
#include "composite/short_fibre_share.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

constexpr std::array<double, 3> noAngles{};
const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
const std::vector<int> alongX{1, 0, 0, 0, 0, 0};
const std::vector<int> allParallel(6, 1), allSerial(6, 0);

struct Constants {
  double E1, E2, nu12, nu23, G12, G23;
};

/// Elastic constants of composite 1, with the stress of a point checked against its matrix.
Constants constantsOf(const Composite& composite, const std::vector<Material>& materials) {
  Model model = pointModel<6>(materials, {composite}, {{1, noAngles}});
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  block.IMPORTINFON1(model);
  const Stress<6> stress = block.RESI2D(model, {.STRAT = someStrain, .STRAN = someStrain, .VSTRAT = {}}).STRSG;
  EXPECT_LT(distance(stress, CALTEN(block.elasticMatrix(0), someStrain)), 1.0e-11);
  const Matrix<6>& S = block.compositeRecord(1).VDMANXI;
  return {1.0 / S(0, 0), 1.0 / S(1, 1), -S(1, 0) / S(0, 0), -S(3, 1) / S(1, 1), 1.0 / S(2, 2), 1.0 / S(5, 5)};
}

void expectConstants(const Constants& found, const Constants& expected) {
  EXPECT_NEAR(found.E1, expected.E1, 5.1e-5);
  EXPECT_NEAR(found.E2, expected.E2, 5.1e-5);
  EXPECT_NEAR(found.nu12, expected.nu12, 5.1e-7);
  EXPECT_NEAR(found.nu23, expected.nu23, 5.1e-7);
  EXPECT_NEAR(found.G12, expected.G12, 5.1e-5);
  EXPECT_NEAR(found.G23, expected.G23, 5.1e-5);
}

TEST(SerialParallelLayer, ElasticConstants) {
  const std::vector<Material> materials{isotropicMaterial(3500.0, 0.35), isotropicMaterial(72000.0, 0.22)};
  Composite parallel = plainComposite(1);
  parallel.layers[0].components = {{1, 0.4, 1}, {2, 0.6, 2}};
  parallel.NUMAT = 3;
  const Constants voigt{44710.7832, 44710.7832, 0.226739, 0.226739, 18223.4366, 18223.4366};

  expectConstants(constantsOf(serialParallel(1, 2, 0.4, alongX), materials),
                  {44600.0, 9101.2888, 0.272, 0.496729, 3040.3938, 3040.3938});
  expectConstants(constantsOf(serialParallel(1, 2, 0.4, allParallel), materials), voigt);
  expectConstants(constantsOf(parallel, materials), voigt);
  expectConstants(constantsOf(serialParallel(1, 2, 0.4, allSerial), materials),
                  {8155.3398, 8155.3398, 0.341165, 0.341165, 3040.3938, 3040.3938});
}

TEST(ShortFibreLayer, ElasticConstants) {
  struct Case {
    double length, N, E, nu, G;
  };
  const Material matrix = isotropicMaterial(3000.0, 0.35);
  for (const Case& expected :
       {Case{50.0, 0.7768307, 80725.2107, 0.2088828, 33388.353}, Case{1000.0, 0.9888458, 101559.7318, 0.0, 0.0}}) {
    Material fibre = isotropicMaterial(500.0e3, 0.2);
    fibre(slot::fibreRadius) = 1.0;
    fibre(slot::fibreLength) = expected.length;
    const Composite composite = shortFibre(1, 2, 0.5, 0.2, 0.3);

    const double transfers = transferLengths(composite.layers[0], fibre, matrix);
    const Constants found = constantsOf(composite, {matrix, fibre});

    EXPECT_NEAR(transfers / expected.length, 0.09849339, 5.0e-9);
    EXPECT_NEAR(NPARORI(transfers), expected.N, 5.0e-8);
    EXPECT_NEAR(found.E1, expected.E, 5.0e-5);
    if (expected.nu != 0.0) {
      EXPECT_NEAR(found.nu12, expected.nu, 5.0e-8);
      EXPECT_NEAR(found.G12, expected.G, 5.0e-4);
    }
  }
  EXPECT_NEAR(NPARORI(700.1), NPARORI(699.9), 1.0e-6);
  EXPECT_NEAR(NPARORI(800.0), 1.0 - std::log(3.0) / 800.0, 1.0e-15);
}

}  // namespace
}  // namespace zema
