// Where and in which state a law gave up.
#include "constitutive/law_failure.h"

#include <sstream>

#include "constitutive/law_table.h"

namespace zema {
namespace {

template <class Values>
void list(std::ostream& text, const char* heading, const Values& values) {
  text << "\n  " << heading;
  for (const double value : values) text << ' ' << value;
}

}  // namespace

template <int N>
ConstitutiveStop located(const ConstitutiveStop& stop, const MaterialPoint<N>& at, const Strain<N>& strain,
                         const LawState& committed) {
  std::ostringstream text;
  text << "element " << at.place.element << ", point " << at.place.point << ", layer " << at.place.layer
       << ", component " << at.place.component << ": law " << static_cast<int>(at.material.NTINT) << " \""
       << lawLabel(at.material.NTINT) << "\" gave up";
  list(text, "strain in material axes:", strain.values);
  list(text, "internal variables at the start of the step:", committed.INTVAR);
  if (!stop.explanation().empty()) text << "\n  " << stop.explanation();
  return {stop.what(), stop.A(), stop.B(), text.str()};
}

template ConstitutiveStop located(const ConstitutiveStop&, const MaterialPoint<4>&, const Strain<4>&, const LawState&);
template ConstitutiveStop located(const ConstitutiveStop&, const MaterialPoint<6>&, const Strain<6>&, const LawState&);

}  // namespace zema
