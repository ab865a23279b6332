// The table of the laws.
#include "constitutive/law_table.h"

#include <array>
#include <string>

#include "constitutive/backward_euler.h"
#include "constitutive/elastic_law.h"
#include "constitutive/euler_corrector.h"
#include "constitutive/kelvin_voigt_law.h"
#include "constitutive/kinematic_hardening.h"
#include "constitutive/subincrementing.h"
#include "constitutive/user_law.h"
#include "constitutive/visco_damage_law.h"
#include "constitutive/viscoelastic_law.h"
#include "foundation/errors.h"

namespace zema {
namespace {

template <int N>
constexpr std::array<LawRow<N>, 20> laws{{
    {Law::elastic, "ELASTIC", ECUA0<N>},
    {Law::eulerCorrector, "EULER", ECUAA<N>},
    {Law::subincrementing, "HINTON Y OWEN", ECUAB<N>},
    {Law::kinematicHardening, "LUBLINER", ECUAC<N>},
    {Law::simpleDamage, "SIMPLE DAMAGE"},
    {Law::generalDamage, "GENER. DAMAGE"},
    {Law::viscoelastic, "VISCOELASTIC", VISCOE<N>},
    {Law::viscoelasticDynamic, "VISCOELASTIC", VISCOK<N>},
    {Law::backwardEuler, "BACK. EURLER", ECUAD<N>},
    {Law::backwardEulerCorrector, "BACK. EURLER", ECUAE<N>},
    {Law::backwardEulerNumeric, "NUMERIC BACK.", ECUAF<N>},
    {Law::viscoDamage, "VISCO-DAMAGE", VISDAM<N>},
    {Law::damagePlastic, "DAMAGE-PLASTIC"},
    {Law::generalDamagePlastic, "DAMAGE-PLASTIC"},
    {Law::unnamed14, "", ECUA0<N>},
    {Law::userDefined, "USER DEFINED", ECUAJ<N>},
    {Law::damageFriction, "DAMAG-FRICTION"},
    {Law::unnamed17, ""},
    {Law::tensionCompressionDamage, "DMDM-MCM"},
    {Law::tensionCompressionDamageAlternative, "DMDMD"},
}};

}  // namespace

template <int N>
LawFunction<N> lawOf(const Material& material, int m) {
  std::string fault =
      "material " + std::to_string(m) + " asks for law " + std::to_string(static_cast<int>(material.NTINT));
  for (const LawRow<N>& row : laws<N>) {
    if (row.code != material.NTINT) continue;
    if (row.update != nullptr) return row.update;
    fault.append(" \"").append(row.label).append("\"");
    throw InputFault(fault + ", which is not in this build yet");
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
