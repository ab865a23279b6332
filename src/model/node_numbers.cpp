// The identity numbering that every new job starts from, and renumbered nodes.
#include "model/node_numbers.h"

namespace zema {

NodeNumbering::NodeNumbering(int NPOIN) {
  toWork_.reserve(static_cast<std::size_t>(NPOIN));
  toDeck_.reserve(static_cast<std::size_t>(NPOIN));
  for (int i = 0; i < NPOIN; ++i) {
    toWork_.push_back({i});
    toDeck_.push_back({i + 1});
  }
}

NodeNumbering::NodeNumbering(const std::vector<DeckNode>& LPNINV) : toWork_(LPNINV.size()), toDeck_(LPNINV) {
  for (std::size_t i = 0; i < LPNINV.size(); ++i) {
    toWork_[static_cast<std::size_t>(LPNINV[i].number - 1)] = {static_cast<int>(i)};
  }
}

}  // namespace zema
