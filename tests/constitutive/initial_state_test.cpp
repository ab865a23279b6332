// The state that a material starts with, and the laws that this build has.
#include "constitutive/initial_state.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "constitutive/law_table.h"
#include "foundation/errors.h"

namespace zema {
namespace {

Material numberedMaterial(Law law) {
  Material material;
  for (int place = 1; place <= 100; ++place) material(place) = place;
  material.NTINT = law;
  return material;
}

TEST(InitialState, ComesFromThePropertiesAndDamageThresholdsDependOnTheLaw) {
  const auto stateOf = [](Law law) { return initialInternalVariables(numberedMaterial(law)); };
  EXPECT_EQ(stateOf(Law::backwardEuler), (std::array<double, 16>{0, 6, 5, 7, 33, 0, 0, 30, 1, 0, 1, 7, 0, 0, 30, 30}));
  const double compression = std::sqrt(10.0 * 0.371028691109907);
  for (const auto& [law, first, second] : {std::tuple{Law::generalDamage, 7.0, 0.0},
                                           {Law::tensionCompressionDamage, 30.0, 30.0},
                                           {Law::tensionCompressionDamageAlternative, 10.0, compression}}) {
    EXPECT_DOUBLE_EQ(stateOf(law)[7], first);
    EXPECT_DOUBLE_EQ(stateOf(law)[13], second);
  }
}

TEST(LawTable, NamesTheMaterialAndTheLawThatIsMissing) {
  const auto faultOf = [](Law law) -> std::string {
    try {
      (void)lawOf<6>(numberedMaterial(law), 3);
    } catch (const InputFault& fault) {
      return fault.what();
    }
    return "accepted";
  };

  EXPECT_EQ(faultOf(Law::elastic), "accepted");
  EXPECT_EQ(faultOf(Law::damageFriction), "material 3 asks for law 16 \"DAMAG-FRICTION\", which has no routine");
  EXPECT_EQ(faultOf(static_cast<Law>(20)),
            "material 3 asks for law 20, which does not exist; the laws are numbered from 0 to 19");
}

}  // namespace
}  // namespace zema
