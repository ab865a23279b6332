// The stop at a Jacobian that is not positive.
#include "element/jacobian.h"

#include <string>

#include "foundation/errors.h"
#include "foundation/layout.h"

namespace zema {

void stopAtJacobian(std::string_view firstLine, int element) {
  static constexpr Layout lines("/ / A / 11X A / 10X A I5");
  const std::string_view elementWords = firstLine == jacobian_stop::line ? " ELEMENTO NUMERO " : " ELEMENTO NUMER ";
  std::string listing;
  lines.append(listing, firstLine, std::string_view(" AREA CERO O NEGATIVA "), elementWords, element);
  listing += '\n';
  throw PlainStop("", listing);
}

}  // namespace zema
