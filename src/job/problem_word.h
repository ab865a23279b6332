// The problem words of the deck and what hangs on them.
#pragma once

#include <optional>
#include <string_view>

namespace zema {

/// Which of the four kernels a problem word goes to.
enum class KernelKind { plane, solid, beam, shell };

/// What the head of the deck looks like for a problem word.
enum class HeadForm {
  planeFrame,  ///< "VIGAS2D"
  beam,        ///< "VIGAS3D", "SUBPROG"
  continuum    ///< all others
};

/// One row of the dispatch table.
struct ProblemWord {
  std::string_view CPROB;  ///< the word
  int NNODM;               ///< greatest number of nodes of an element
  KernelKind kernel;
  HeadForm head;
  bool constructionSteps;  ///< NFASE must be given
};

/// The row of a word; nothing for an unknown word. Words are compared exactly.
[[nodiscard]] std::optional<ProblemWord> findProblemWord(std::string_view CPROB);

}  // namespace zema
