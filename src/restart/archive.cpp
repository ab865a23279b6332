// Marks between the parts of a state.
#include "restart/archive.h"

#include "foundation/errors.h"

namespace zema {

void Archive::section(std::string_view name) {
  std::string mark(name);
  bytes(mark.data(), mark.size());
  if (mark != name) {
    throw InputFault("the restart data have no part \"" + std::string(name) +
                     "\" where it is expected: another build of the program wrote them");
  }
}

}  // namespace zema
