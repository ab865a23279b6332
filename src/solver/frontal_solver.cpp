// The frontal solver: assembly and elimination element by element, and the back-substitution.
#include "solver/frontal_solver.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "foundation/errors.h"
#include "foundation/layout.h"
#include "foundation/parallel.h"
#include "solver/front_equations.h"
#include "solver/front_slots.h"
#include "solver/phase_timer.h"

namespace zema {
namespace {

using Walk = FrontEquations::Walk;

constexpr int elementsFormedAtATime = 64;
constexpr int elementsPerForming = 4;  // that a thread takes at a time

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// A pivot of exactly 0, whatever the words say: a negative one passes.
[[noreturn]] void stopAtPivot(int NIKNO, double pivot) {
  static constexpr Layout line("'0' 3X A I4 A F17.6");
  std::string text;
  line.append(text, "PIVOTE CERO O NEGATIVO ENCONTRADO PARA LA VARIABLE. ", NIKNO, " DE VALOR ", pivot);
  throw PlainStop("", text + '\n');
}

// Everything of one sequence of elements: who leaves where, the front, and the files.
class Front {
 public:
  Front(const ElementSource& source, int positions, FrontForm form, const std::string& files)
      : last_(lastElements(source, positions)),
        NFRMX_(frontWidth(source, last_)),
        NEVAB_(index(source.largest())),
        GSTIF_(NFRMX_, form),
        GLOAD_(index(NFRMX_)),
        VECRV_(index(NFRMX_)),
        record_(2 * NEVAB_ + index(NFRMX_) + 1),
        equations_(NFRMX_, source.elements() + 1, form, files),
        elements_(files + ".elements", record_.size() * sizeof(int)) {}

  // Adds the elements and eliminates: makes the equations, or reuses them for new loads.
  void eliminate(ElementSource& source, const EquationSystem& system, RightHandSide side, Walk walk, WorkerPool& pool) {
    walk_ = walk;
    GSTIF_.clear();
    std::ranges::fill(GLOAD_, 0.0);
    slots_.clear();
    equations_.begin(walk);
    sumLoads(source, side);
    for (int e = 0; e < source.elements(); ++e) {
      if (walk == Walk::make) form(source, e, pool);
      placeElement(source, e);
      const std::size_t n = source.positions(e).size();
      if (walk == Walk::make) GSTIF_.add(NDEST().first(n), ESTIF(e, n));
      for (std::size_t k = 0; k < n; ++k)
        if (LOCEL()[k] < 0) eliminate(-LOCEL()[k], system, side);
    }
    equations_.finish();
  }

  // The equations, for a restart.
  [[nodiscard]] std::vector<double> save() const { return equations_.save(); }

  // Takes back what save() gave, for the same elements.
  void restore(const ElementSource& source, std::span<const double> values) {
    equations_.restore(values);
    walk_ = Walk::make;
    slots_.clear();
    for (int e = 0; e < source.elements(); ++e) {
      placeElement(source, e);
      for (std::size_t k = 0; k < source.positions(e).size(); ++k)
        if (LOCEL()[k] < 0) slots_.leave(NDEST()[k]);
      slots_.trim();
    }
  }

  void substituteBack(EquationSystem& system, RightHandSide side) {
    std::vector<double>& prescribed = side == RightHandSide::outOfBalance ? system.FIXED : system.FIXWO;
    std::ranges::fill(VECRV_, 0.0);
    while (equations_.previous()) {
      const std::size_t position = index(equations_.NAMEV() - 1);
      const std::size_t p = index(equations_.NPIVO());
      const std::span<const double> EQUAT = equations_.equation().EQUAT;
      const int equation = system.IPERM[position];
      VECRV_[p] = equation == 0 ? prescribed[position] : 0.0;
      double rest = equations_.EQRHS();
      for (std::size_t j = 0; j < EQUAT.size(); ++j) rest -= VECRV_[j] * EQUAT[j];
      if (equation == 0) {
        prescribed[position] = -rest;  // the reaction
      } else {
        VECRV_[p] = rest / EQUAT[p];
        system.ELOADG[index(equation - 1)] = VECRV_[p];
      }
      system.result(side)[position] = VECRV_[p];
    }
  }

 private:
  // The parts of an element's record.
  [[nodiscard]] std::span<int> LOCEL() { return std::span(record_).first(NEVAB_); }
  [[nodiscard]] std::span<int> NDEST() { return std::span(record_).subspan(NEVAB_, NEVAB_); }
  [[nodiscard]] std::span<int> NACVA() { return std::span(record_).subspan(2 * NEVAB_, index(NFRMX_)); }

  [[nodiscard]] std::span<double> ESTIF(int e, std::size_t n) {
    return {&ESTIF_[index(e % elementsFormedAtATime) * NEVAB_ * NEVAB_], n * n};
  }

  // Forms the elements of a batch, at its first one.
  void form(ElementSource& source, int first, WorkerPool& pool) {
    if (first % elementsFormedAtATime != 0) return;
    const int count = std::min(elementsFormedAtATime, source.elements() - first);
    ESTIF_.resize(index(elementsFormedAtATime) * NEVAB_ * NEVAB_);
    pool.forEachBlock(count, elementsPerForming, [&](int from, int to, int /*worker*/) {
      for (int e = first + from; e < first + to; ++e) source.form(e, ESTIF(e, source.positions(e).size()));
    });
  }

  // The loads of elements nearly cancel at a node. They are summed before anything else enters the front, lest the
  // rounding of their partial sums drown what is left.
  void sumLoads(const ElementSource& source, RightHandSide side) {
    loads_.assign(last_.size(), 0.0);
    for (int e = 0; e < source.elements(); ++e) {
      const std::span<const double> load = source.load(e, side);
      for (std::size_t k = 0; const int p : source.positions(e)) loads_[index(p)] += load[k++];
    }
  }

  // LOCEL and NDEST of an element, and the front as it stands with it: worked out and kept, or read.
  void placeElement(const ElementSource& source, int e) {
    if (walk_ == Walk::make) {
      const std::size_t n = source.positions(e).size();
      FrontSlots::markVariables(source.positions(e), e, last_, LOCEL());
      slots_.enter(LOCEL().first(n), NDEST());
      std::ranges::fill(NACVA(), 0);
      std::ranges::copy(slots_.NACVA(), NACVA().begin());
      record_.back() = slots_.NFRON();
      elements_.write(e, {std::as_bytes(std::span(record_))});
    } else {
      elements_.read(e, {std::as_writable_bytes(std::span(record_))});
      slots_.restore(NACVA(), record_.back());
    }
  }

  void eliminate(int NIKNO, const EquationSystem& system, RightHandSide side) {
    const int p = slots_.find(NIKNO);
    if (p >= 0) {
      equations_.next();
      const FrontEquation equation = equations_.equation();
      if (walk_ == Walk::make) GSTIF_.takeOut(p, equation);
      const double right = std::exchange(GLOAD_[index(p)], 0.0) + loads_[index(NIKNO - 1)];
      equations_.EQRHS() = right;
      equations_.NAMEV() = NIKNO;
      equations_.NPIVO() = p;
      const double pivot = equation.EQUAT[index(p)];
      if (pivot == 0.0) stopAtPivot(NIKNO, pivot);
      setPivot(equation, p, 0.0);
      if (system.IPERM[index(NIKNO - 1)] > 0)
        eliminateFree(equation, pivot, right);
      else
        eliminatePrescribed(equation, system.prescribed(side)[index(NIKNO - 1)]);
      setPivot(equation, p, pivot);
      slots_.leave(p);
    }
    slots_.trim();
  }

  static void setPivot(const FrontEquation& equation, int p, double value) {
    equation.EQUAT[index(p)] = value;
    if (!equation.EQCOL.empty()) equation.EQCOL[index(p)] = value;
  }

  void eliminateFree(const FrontEquation& equation, double pivot, double right) {
    const std::span<const double> column = equation.column();
    for (std::size_t i = 0; i < index(slots_.NFRON()); ++i) GLOAD_[i] -= column[i] / pivot * right;
    if (walk_ == Walk::make) GSTIF_.reduce(slots_.NFRON(), pivot, equation);
  }

  void eliminatePrescribed(const FrontEquation& equation, double value) {
    const std::span<const double> column = equation.column();
    for (std::size_t i = 0; i < index(slots_.NFRON()); ++i) GLOAD_[i] -= column[i] * value;
  }

  std::vector<int> last_;  // last element of each position
  int NFRMX_;
  std::size_t NEVAB_;
  Walk walk_ = Walk::make;
  FrontSlots slots_;
  FrontMatrix GSTIF_;
  std::vector<double> loads_;  // sums of the element loads, by position
  std::vector<double> GLOAD_;  // what eliminated variables add to the right-hand side of the front, by slot
  std::vector<double> VECRV_;  // solution of the variables in the front, by slot
  std::vector<double> ESTIF_;  // matrices of a batch of elements
  std::vector<int> record_;    // LOCEL, NDEST, NACVA, NFRON of an element
  FrontEquations equations_;
  WorkFile elements_;
};

class FrontalSolver final : public Solver {
 public:
  FrontalSolver(FrontForm form, std::string files)
      : Solver(ResidualCheck::byDoorWithoutForming), form_(form), files_(std::move(files)) {}

  [[nodiscard]] std::span<const double> factors() const override {
    saved_ = front_ && !IPERM_.empty() ? front_->save() : restored_;
    return saved_;
  }

  // The elements are not at hand here: the next solve takes the equations up.
  void restoreFactors(const EquationSystem& /*system*/, std::span<const double> values) override {
    front_.reset();
    IPERM_.clear();
    restored_.assign(values.begin(), values.end());
  }

 protected:
  void solveFree(const Task& task) override {
    EquationSystem& system = task.system;
    if (!task.newMatrix && !restored_.empty()) {
      front_.emplace(task.source, system.NTOTV, form_, files_);
      front_->restore(task.source, restored_);
      IPERM_ = system.IPERM;
    }
    restored_.clear();
    const bool anew = task.newMatrix || IPERM_ != system.IPERM;
    if (anew) {
      IPERM_.clear();  // should the elimination stop, there are no equations to reuse
      front_.emplace(task.source, system.NTOTV, form_, files_);
      const PhaseTimer timer(task.times.decomposition);
      front_->eliminate(task.source, system, task.side, Walk::make, task.pool);
      IPERM_ = system.IPERM;
    } else {
      const PhaseTimer timer(task.times.lower);
      front_->eliminate(task.source, system, task.side, Walk::reuse, task.pool);
    }
    const PhaseTimer timer(task.times.upper);
    front_->substituteBack(system, task.side);
  }

 private:
  FrontForm form_;
  std::string files_;
  std::optional<Front> front_;
  std::vector<double> restored_;       // equations of a restart that no solve has taken up yet
  mutable std::vector<double> saved_;  // what factors() gives
  std::vector<int> IPERM_;             // equation numbers of the stored equations; empty when there are none
};

}  // namespace

std::unique_ptr<Solver> makeFrontalSolver(FrontForm form, std::string files) {
  return std::make_unique<FrontalSolver>(form, std::move(files));
}

}  // namespace zema
