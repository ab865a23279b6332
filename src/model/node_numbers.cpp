// The identity numbering that every new job starts from.
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

}  // namespace zema
