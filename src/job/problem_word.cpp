// The dispatch table of problem words.
#include "job/problem_word.h"

#include <algorithm>
#include <array>

namespace zema {

namespace {
constexpr std::array<ProblemWord, 8> table = {{{"VIGAS2D", 3, KernelKind::plane, HeadForm::planeFrame, false},
                                               {"VIGAS3D", 3, KernelKind::beam, HeadForm::beam, false},
                                               {"SUBPROG", 6, KernelKind::beam, HeadForm::beam, false},
                                               {"SHELL", 6, KernelKind::shell, HeadForm::continuum, false},
                                               {"MEC2D", 8, KernelKind::plane, HeadForm::continuum, true},
                                               {"MEC3D", 8, KernelKind::solid, HeadForm::continuum, true},
                                               {"ACOP2D", 8, KernelKind::plane, HeadForm::continuum, true},
                                               {"ACOP3D", 20, KernelKind::solid, HeadForm::continuum, true}}};
}  // namespace

std::optional<ProblemWord> findProblemWord(std::string_view CPROB) {
  const auto row =
      std::find_if(table.begin(), table.end(), [&](const ProblemWord& word) { return word.CPROB == CPROB; });
  if (row == table.end()) {
    return std::nullopt;
  }
  return *row;
}

}  // namespace zema
