// The state that a material starts with, and the laws that this build has.
#include "constitutive/initial_state.h"

#include <gtest/gtest.h>

#include <cmath>

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

TEST(InitialState, ComesFromTheProperties) {
  const auto INTVAR = initialInternalVariables(numberedMaterial(Law::backwardEuler));

  const std::array<double, 16> expected{0, 6, 5, 7, 33, 0, 0, 30, 1, 0, 1, 7, 0, 0, 30, 30};
  EXPECT_EQ(INTVAR, expected);
}

TEST(InitialState, DamageThresholdsDependOnTheLaw) {
  const auto general = initialInternalVariables(numberedMaterial(Law::generalDamage));
  const auto coupled = initialInternalVariables(numberedMaterial(Law::tensionCompressionDamage));
  const auto separate = initialInternalVariables(numberedMaterial(Law::tensionCompressionDamageAlternative));

  EXPECT_EQ(general[7], 7.0);
  EXPECT_EQ(general[13], 0.0);
  EXPECT_EQ(coupled[7], 30.0);
  EXPECT_EQ(coupled[13], 30.0);
  EXPECT_DOUBLE_EQ(separate[7], 10.0 / std::sqrt(1.0));
  EXPECT_DOUBLE_EQ(separate[13], std::sqrt(10.0 * 0.371028691109907));
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
  EXPECT_EQ(faultOf(Law::damageFriction),
            "material 3 asks for law 16 \"DAMAG-FRICTION\", which has no routine");
  EXPECT_EQ(faultOf(static_cast<Law>(20)),
            "material 3 asks for law 20, which does not exist; the laws are numbered from 0 to 19");
}

}  // namespace
}  // namespace zema
