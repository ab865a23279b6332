// Elimination by fronts: assembly, factorisation of the columns, what they leave for the parent; solution.
#include "solver/multifrontal_factors.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "solver/blas_threads.h"

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

/// Number of pieces of at most BandedColumns::width lines.
int pieces(int lines) {
  return (lines + BandedColumns::width - 1) / BandedColumns::width;
}

Lines piece(Lines all, int number) {
  const int first = all.first + number * BandedColumns::width;
  return {first, std::min(all.end, first + BandedColumns::width)};
}

}  // namespace

/// One factorisation.
class MultifrontalFactors::Elimination {
 public:
  Elimination(MultifrontalFactors& factors, const SparseMatrix& matrix, WorkerPool& pool)
      : factors_(factors),
        tree_(factors.tree_),
        matrix_(matrix),
        pool_(pool),
        desks_(index(pool.size()), Desk(index(tree_.first(tree_.size())))) {}

  void run() {
    for (const FrontSchedule::Stage& stage : factors_.schedule_.stages) {
      pool_.forEachBlock(static_cast<int>(stage.subtrees.size()), 1, [&](int first, int /*last*/, int worker) {
        const FrontSchedule::Subtree& subtree = stage.subtrees[index(first)];
        for (int front = subtree.first; front <= subtree.last; ++front) eliminate({front, worker, false});
      });
      for (const int front : stage.fronts) eliminate({front, 0, true});
    }
  }

 private:
  /// What a worker has for itself.
  struct Desk {
    explicit Desk(std::size_t equations) : rowAt(equations), scratch(LdlScratch::size) {}

    std::vector<int> rowAt;       // row of the present front by place, for its rest
    std::vector<int> rowOfChild;  // row of the present front by row of a child's rest
    std::vector<double> scratch;
  };

  /// A front under work, by one worker or by all together.
  struct Work {
    int front;
    int worker;
    bool together;
  };

  /// f(first, last, worker) over blocks.
  template <class F>
  void forEachBlock(const Work& work, int count, int blockSize, F&& f) {
    if (work.together) return pool_.forEachBlock(count, blockSize, f);
    for (int first = 0; first < count; first += blockSize) f(first, std::min(count, first + blockSize), work.worker);
  }

  [[nodiscard]] BandedColumns restLayout(int front) const {
    const std::size_t m = tree_.rest(front).size();
    return {m, m};
  }

  [[nodiscard]] double* rest(int front, int worker) {
    const FrontSchedule::Place& place = factors_.schedule_.places[index(front)];
    return (place.shared ? factors_.sharedRests_ : factors_.workerRests_[index(worker)]).data() + place.first;
  }

  [[nodiscard]] LdlScratch scratch(int worker) { return {desks_[index(worker)].scratch}; }

  void eliminate(const Work& work) {
    clear(work);
    placeRows(work);
    addMatrix(work);
    for (const int child : tree_.children(work.front)) addChild(work, child);
    factoriseColumns(work);
    formRest(work);
  }

  void clear(const Work& work) {
    constexpr int bandsAtATime = 1;
    const auto clearBands = [&](const BandedColumns& layout, double* values) {
      forEachBlock(work, layout.bands(), bandsAtATime, [&](int band, int /*last*/, int /*worker*/) {
        std::fill_n(values + layout.first(band), index(layout.columns(band).count()) * index(layout.leading(band)),
                    0.0);
      });
    };
    clearBands(factors_.layout(work.front), factors_.columns(work.front).L);
    clearBands(restLayout(work.front), rest(work.front, work.worker));
  }

  void placeRows(const Work& work) {
    std::vector<int>& rowAt = desks_[index(work.worker)].rowAt;
    int row = 0;
    for (int place = tree_.first(work.front); place < tree_.first(work.front + 1); ++place) rowAt[index(place)] = row++;
    for (const int place : tree_.rest(work.front)) rowAt[index(place)] = row++;
  }

  void addMatrix(const Work& work) {
    constexpr int columnsAtATime = 64;
    const SparsePattern& pattern = matrix_.pattern();
    const std::vector<int>& rowAt = desks_[index(work.worker)].rowAt;
    const FactorColumns columns = factors_.columns(work.front);
    const int start = tree_.first(work.front);
    forEachBlock(work, tree_.columns(work.front), columnsAtATime, [&](int first, int last, int /*worker*/) {
      for (int column = first; column < last; ++column) {
        const int equation = tree_.equations()[index(start + column)];
        const double* A = matrix_.A_PARD().data() + pattern.IA_PARD(equation);
        for (const int other : pattern.JA_PARD(equation)) {
          if (other == equation) factors_.diagonal_[index(start + column)] = *A;
          const int place = tree_.places()[index(other)];
          if (place >= start + column) columns.L[columns.layout.at(rowAt[index(place)], column)] += *A;
          ++A;
        }
      }
    });
  }

  /// Adds the rest of a child, column by column.
  void addChild(const Work& work, int child) {
    constexpr int columnsAtATime = 32;
    Desk& desk = desks_[index(work.worker)];
    desk.rowOfChild.clear();
    for (const int place : tree_.rest(child)) desk.rowOfChild.push_back(desk.rowAt[index(place)]);
    const std::span<const int> rows(desk.rowOfChild);
    const BandedColumns from = restLayout(child), to = restLayout(work.front);
    const FactorColumns columns = factors_.columns(work.front);
    const int n = tree_.columns(work.front);
    const double* const childRest = rest(child, work.worker);
    double* const ownRest = rest(work.front, work.worker);
    forEachBlock(work, static_cast<int>(rows.size()), columnsAtATime, [&](int first, int last, int /*worker*/) {
      for (int column = first; column < last; ++column) {
        const int target = rows[index(column)];
        // Entry (row, target) of the front stands at place row - target behind the one on the diagonal.
        double* const diagonal =
            target < n ? columns.L + columns.layout.at(target, target) : ownRest + to.at(target - n, target - n);
        const double* const source = childRest + from.at(column, column);
        const std::span<const int> below = rows.subspan(index(column));
        for (std::size_t i = 0; i < below.size(); ++i) diagonal[below[i] - target] += source[i];
      }
    });
  }

  void factoriseColumns(const Work& work) {
    const FactorColumns factor = factors_.columns(work.front);
    for (int band = 0; band < factor.layout.bands(); ++band) {
      const Lines columns = factor.layout.columns(band), below{columns.end, factor.layout.rows()};
      const int leading = factor.layout.leading(band);
      double* const values = factor.L + factor.layout.first(band);
      const auto takeFromBefore = [&](Lines rows, int worker) {
        subtractProduct(factor, band, rows, columns, values + (rows.first - columns.first), leading, scratch(worker));
      };
      takeFromBefore(columns, work.worker);
      factoriseDiagonal(factor, band, scratch(work.worker));
      forEachBlock(work, pieces(below.count()), 1, [&](int number, int /*last*/, int worker) {
        takeFromBefore(piece(below, number), worker);
        factoriseRows(factor, band, piece(below, number));
      });
    }
  }

  /// What the columns take from the rest, square by square.
  void formRest(const Work& work) {
    const FactorColumns factor = factors_.columns(work.front);
    const BandedColumns layout = restLayout(work.front);
    double* const values = rest(work.front, work.worker);
    const int n = tree_.columns(work.front), bands = layout.bands();
    forEachBlock(work, bands * (bands + 1) / 2, 1, [&](int number, int /*last*/, int worker) {
      int band = 0;
      for (int left = bands; number >= left; --left) {
        number -= left;
        ++band;
      }
      const Lines columns = layout.columns(band);
      const Lines rows = piece({columns.first, layout.rows()}, number);
      subtractProduct(factor, factor.layout.bands(), {rows.first + n, rows.end + n},
                      {columns.first + n, columns.end + n}, values + layout.at(rows.first, columns.first),
                      layout.leading(band), scratch(worker));
    });
  }

  MultifrontalFactors& factors_;
  const FrontTree& tree_;
  const SparseMatrix& matrix_;
  WorkerPool& pool_;
  std::vector<Desk> desks_;
};

MultifrontalFactors::MultifrontalFactors(const SparsePattern& pattern, std::span<const int> order)
    : tree_(pattern, order), schedule_(tree_), D_(order.size()), diagonal_(order.size()) {
  std::size_t size = 0;
  firstOf_.reserve(index(tree_.size()));
  for (int front = 0; front < tree_.size(); ++front) {
    firstOf_.push_back(size);
    size += layout(front).size();
  }
  L_ = LargeArray(size);
  sharedRests_ = LargeArray(schedule_.sharedSize);
}

BandedColumns MultifrontalFactors::layout(int front) const {
  return {index(tree_.rows(front)), index(tree_.columns(front))};
}

FactorColumns MultifrontalFactors::columns(int front) {
  return {layout(front), L_.data() + firstOf_[index(front)], D_.data() + tree_.first(front)};
}

void MultifrontalFactors::factorise(const SparseMatrix& matrix, WorkerPool& pool) {
  const BlasThreads blas(1);
  while (workerRests_.size() < index(pool.size())) workerRests_.emplace_back(schedule_.workerSize);
  Elimination(*this, matrix, pool).run();
  trustworthy_ = hasGoodPivots();
}

bool MultifrontalFactors::hasGoodPivots() const {
  constexpr double largestGrowth = 1e6, rounding = 1e-13;
  for (std::size_t place = 0; place < D_.size(); ++place)
    if (!std::isfinite(D_[place]) || !(std::abs(D_[place]) > rounding * std::abs(diagonal_[place]))) return false;
  const auto [least, most] = std::ranges::minmax(D_);
  return (least < 0.0) == (most < 0.0) || largestEntry() <= largestGrowth;
}

double MultifrontalFactors::largestEntry() const {
  double largest = 0.0;
  for (int front = 0; front < tree_.size(); ++front) {
    const BandedColumns rows = layout(front);
    for (int column = 0; column < tree_.columns(front); ++column) {
      const double* const diagonal = L_.data() + firstOf_[index(front)] + rows.at(column, column);
      for (int i = 1; i < rows.rows() - column; ++i) largest = std::max(largest, std::abs(diagonal[i]));
    }
  }
  return largest;
}

long long MultifrontalFactors::entries() const {
  long long entries = 0;
  for (int front = 0; front < tree_.size(); ++front) {
    const long long n = tree_.columns(front), rows = tree_.rows(front);
    entries += n * rows - n * (n - 1) / 2;
  }
  return entries;
}

void MultifrontalFactors::solve(std::span<double> x) {
  const BlasThreads blas(1);
  std::vector<double> y(x.size()), rows;
  for (std::size_t place = 0; place < x.size(); ++place) y[place] = x[index(tree_.equations()[place])];
  const auto gather = [&](int front) {
    rows.assign(y.begin() + tree_.first(front), y.begin() + tree_.first(front + 1));
    for (const int place : tree_.rest(front)) rows.push_back(y[index(place)]);
  };
  const auto scatterColumns = [&](int front) {
    std::copy_n(rows.begin(), tree_.columns(front), y.begin() + tree_.first(front));
  };
  for (int front = 0; front < tree_.size(); ++front) {
    gather(front);
    solveLower(columns(front), rows);
    scatterColumns(front);
    auto row = rows.begin() + tree_.columns(front);
    for (const int place : tree_.rest(front)) y[index(place)] = *row++;
  }
  std::ranges::transform(y, D_, y.begin(), std::divides<>());
  for (int front = tree_.size(); front-- > 0;) {
    gather(front);
    solveUpper(columns(front), rows);
    scatterColumns(front);
  }
  for (std::size_t place = 0; place < x.size(); ++place) x[index(tree_.equations()[place])] = y[place];
}

}  // namespace zema
