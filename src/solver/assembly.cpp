// Assembly: batches of elements are formed in parallel, then added by equations, each thread its own.
#include "solver/assembly.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "solver/phase_timer.h"

namespace zema {
namespace {

constexpr int batchValues = 1 << 18;   // entries of element matrices held at a time (2 MiB)
constexpr int smallestBatch = 16;      // elements
constexpr int neighbouringRows = 8;    // equations in a row that one thread adds: a cache line of ELOADG
constexpr int elementsPerForming = 4;  // elements that a thread takes at a time

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

class Assembly {
 public:
  Assembly(ElementSource& source, EquationSystem& system, RightHandSide side, GlobalMatrix* matrix, WorkerPool& pool)
      : source_(source),
        system_(system),
        prescribed_(system.prescribed(side)),
        side_(side),
        matrix_(matrix),
        pool_(pool),
        square_(index(source.largest()) * index(source.largest())),
        equations_(index(pool.size()), std::vector<int>(index(source.largest()))) {
    const int wanted = batchValues / std::max(1, static_cast<int>(std::min<std::size_t>(square_, batchValues)));
    batch_ = std::min(std::max(wanted, smallestBatch), std::max(1, source.elements()));
    findPulling();
    if (anyFormed_) ESTIF_.resize(index(batch_) * square_);
  }

  void run(SolverTimes& times) {
    std::ranges::fill(system_.ELOADG, 0.0);
    for (int first = 0; first < source_.elements(); first += batch_) {
      const int last = std::min(first + batch_, source_.elements());
      if (anyFormed_) {
        const PhaseTimer timer(times.stiffness);
        form(first, last);
      }
      const PhaseTimer timer(times.assembly);
      add(first, last);
    }
  }

 private:
  // Marks the elements with a fixed position whose prescribed value is not 0.
  void findPulling() {
    const auto pulls = [this](int p) { return system_.IPERM[index(p)] == 0 && prescribed_[index(p)] != 0.0; };
    pulling_.resize(index(source_.elements()));
    anyFormed_ = matrix_ != nullptr;
    bool anyPulls = false;
    for (int p = 0; p < system_.NTOTV && !anyPulls; ++p) anyPulls = pulls(p);
    if (!anyPulls) return;
    for (int e = 0; e < source_.elements(); ++e)
      pulling_[index(e)] = std::ranges::any_of(source_.positions(e), pulls) ? 1 : 0;
    anyFormed_ = anyFormed_ || std::ranges::find(pulling_, 1) != pulling_.end();
  }

  [[nodiscard]] bool isFormed(int e) const { return matrix_ != nullptr || pulling_[index(e)] != 0; }

  [[nodiscard]] std::span<double> ESTIF(int e, int first) {
    const std::size_t n = source_.positions(e).size();
    return {&ESTIF_[index(e - first) * square_], n * n};
  }

  void form(int first, int last) {
    pool_.forEachBlock(last - first, elementsPerForming, [&](int from, int to, int /*worker*/) {
      for (int e = first + from; e < first + to; ++e)
        if (isFormed(e)) source_.form(e, ESTIF(e, first));
    });
  }

  // Every thread walks all elements and adds the rows of its own equations: no two write the same entry, and each
  // entry is summed in element order.
  void add(int first, int last) {
    const int shares = matrix_ != nullptr ? pool_.size() : 1;
    pool_.forEachBlock(shares, 1, [&](int share, int /*last*/, int worker) {
      for (int e = first; e < last; ++e) addElement(e, first, share, shares, equations_[index(worker)]);
    });
  }

  void addElement(int e, int first, int share, int shares, std::vector<int>& work) {
    const std::span<const int> positions = source_.positions(e);
    const std::span<int> equations(work.data(), positions.size());
    std::ranges::transform(positions, equations.begin(), [this](int p) { return system_.IPERM[index(p)]; });
    const std::span<const double> load = source_.load(e, side_);
    for (std::size_t r = 0; r < equations.size(); ++r) {
      const int equation = equations[r];
      if (equation == 0 || (equation / neighbouringRows) % shares != share) continue;
      double& right = system_.ELOADG[index(equation - 1)];
      right += load[r];
      if (!isFormed(e)) continue;
      const double* row = ESTIF(e, first).data() + r * equations.size();
      if (pulling_[index(e)] != 0) right = withoutPrescribed(right, row, positions, equations);
      if (matrix_ != nullptr) matrix_->ENSAMB({e, static_cast<int>(r), equation, equations, row});
    }
  }

  // right -= sum over the fixed columns of ESTIF * prescribed value
  [[nodiscard]] double withoutPrescribed(double right, const double* row, std::span<const int> positions,
                                         std::span<const int> equations) const {
    for (std::size_t c = 0; c < equations.size(); ++c)
      if (equations[c] == 0) right -= row[c] * prescribed_[index(positions[c])];
    return right;
  }

  ElementSource& source_;
  EquationSystem& system_;
  const std::vector<double>& prescribed_;
  RightHandSide side_;
  GlobalMatrix* matrix_;
  WorkerPool& pool_;
  std::size_t square_;                       // entries of the largest element matrix
  std::vector<std::vector<int>> equations_;  // scratch of each worker: equation numbers of one element
  int batch_ = 1;                            // elements formed at a time
  std::vector<char> pulling_;                // by element: not 0 where a prescribed value acts, see findPulling()
  bool anyFormed_ = false;
  std::vector<double> ESTIF_;  // matrices of a batch
};

}  // namespace

void KGLOB(ElementSource& source, EquationSystem& system, RightHandSide side, GlobalMatrix* matrix, WorkerPool& pool,
           SolverTimes& times) {
  Assembly(source, system, side, matrix, pool).run(times);
}

}  // namespace zema
