// The table of the laws.
#include "constitutive/law_table.h"

#include <array>
#include <string>

#include "constitutive/backward_euler.h"
#include "constitutive/damage_plastic.h"
#include "constitutive/elastic_law.h"
#include "constitutive/euler_corrector.h"
#include "constitutive/general_damage.h"
#include "constitutive/kelvin_voigt_law.h"
#include "constitutive/kinematic_hardening.h"
#include "constitutive/one_measure_damage.h"
#include "constitutive/plastic_answer.h"
#include "constitutive/simple_damage.h"
#include "constitutive/subincrementing.h"
#include "constitutive/two_measure_damage.h"
#include "constitutive/user_law.h"
#include "constitutive/visco_damage_law.h"
#include "constitutive/viscoelastic_law.h"
#include "foundation/errors.h"

namespace zema {
namespace {

template <int N>
constexpr std::array<LawRow<N>, 20> laws{{
    {Law::elastic, "ELASTIC", ECUA0<N>},
    {Law::eulerCorrector, "EULER", ECUAA<N>, Criterion::lublinerOller, checkPlasticFlow},
    {Law::subincrementing, "HINTON Y OWEN", ECUAB<N>, Criterion::lublinerOller, checkPlasticFlow},
    {Law::kinematicHardening, "LUBLINER", ECUAC<N>, Criterion::vonMises, checkGeneralisedPlasticity},
    {Law::simpleDamage, "SIMPLE DAMAGE", DEGRAA<N>, Criterion::shear, checkSimpleDamage},
    {Law::generalDamage, "GENER. DAMAGE", DEGRAB<N>, Criterion::lublinerOller, checkGeneralDamage},
    {Law::viscoelastic, "VISCOELASTIC", VISCOE<N>},
    {Law::viscoelasticDynamic, "VISCOELASTIC", VISCOK<N>},
    {Law::backwardEuler, "BACK. EURLER", ECUAD<N>, Criterion::lublinerOller, checkPlasticFlow},
    {Law::backwardEulerCorrector, "BACK. EURLER", ECUAE<N>, Criterion::lublinerOller, checkPlasticFlow},
    {Law::backwardEulerNumeric, "NUMERIC BACK.", ECUAF<N>, Criterion::lublinerOller, checkPlasticFlow},
    {Law::viscoDamage, "VISCO-DAMAGE", VISDAM<N>, Criterion::shear, checkViscoDamage},
    {Law::damagePlastic, "DAMAGE-PLASTIC", ECUAG<N>, Criterion::lublinerOller, checkSimpleDamagePlastic},
    {Law::generalDamagePlastic, "DAMAGE-PLASTIC", ECUAH<N>, Criterion::lublinerOller, checkGeneralDamagePlastic},
    {Law::unnamed14, "", ECUA0<N>},
    {Law::userDefined, "USER DEFINED", ECUAJ<N>},
    {Law::damageFriction, "DAMAG-FRICTION"},
    {Law::unnamed17, ""},
    {Law::tensionCompressionDamage, "DMDM-MCM", DEGRA18<N>, Criterion::lublinerOller, checkOneMeasureDamage},
    {Law::tensionCompressionDamageAlternative, "DMDMD", DEGRAC<N>, Criterion::shear, checkTwoMeasureDamage},
}};

template <int N>
void refuseMaterial(const LawRow<N>& row, const Material& material, const std::string& who) {
  if (material.NCRIT > row.lastCriterion)
    throw InputFault(who + ", which does not admit yield function " + std::to_string(static_cast<int>(material.NCRIT)) +
                     ", only 1 to " + std::to_string(static_cast<int>(row.lastCriterion)));
  if (row.check != nullptr) row.check(material, who);
}

}  // namespace

template <int N>
LawFunction<N> lawOf(const Material& material, int m) {
  std::string fault =
      "material " + std::to_string(m) + " asks for law " + std::to_string(static_cast<int>(material.NTINT));
  for (const LawRow<N>& row : laws<N>) {
    if (row.code != material.NTINT) continue;
    fault.append(" \"").append(row.label).append("\"");
    if (row.update != nullptr) {
      refuseMaterial(row, material, fault);
      return row.update;
    }
    throw InputFault(fault + ", which has no routine");
  }
  throw InputFault(fault + ", which does not exist; the laws are numbered from 0 to " +
                   std::to_string(laws<N>.size() - 1));
}

std::string_view lawLabel(Law law) {
  return laws<6>[static_cast<std::size_t>(law)].label;
}

template LawFunction<4> lawOf<4>(const Material&, int);
template LawFunction<6> lawOf<6>(const Material&, int);

}  // namespace zema
