// The constraints of arc-length control and what a correction of the load factor changes.
#include "analysis/arc_length.h"

#include <algorithm>
#include <cmath>

#include "analysis/analysis.h"
#include "analysis/solving.h"

namespace zema {

namespace {

/// A displacement, or a sum or difference of displacements, in its three parts.
struct Motion {
  double D = 0.0;  ///< of the increment so far
  double A = 0.0;  ///< correction of the iteration
  double T = 0.0;  ///< solution for the reference load

  Motion& operator+=(const Motion& other) {
    D += other.D;
    A += other.A;
    T += other.T;
    return *this;
  }
  friend Motion operator-(const Motion& p, const Motion& q) { return {p.D - q.D, p.A - q.A, p.T - q.T}; }
};

/// Sums of the spherical constraint a dl^2 + 2 b dl + c = 0; c lacks the square of the arc length.
struct Sphere {
  double a = 0.0;
  double b = 0.0;
  double c = 0.0;

  void add(const Motion& motion) {
    const double X = motion.D + motion.A;
    a += motion.T * motion.T;
    b += motion.T * X;
    c += X * X;
  }
};

class ArcLengthControl {
 public:
  explicit ArcLengthControl(const Analysis& analysis)
      : mesh_(analysis.model.mesh),
        card_(analysis.model.increment),
        DDISP_(analysis.model.displacements.DDISP),
        ASDIS_(analysis.equations.ASDIS),
        DISPM_(analysis.equations.DISPM) {}

  /// Correction of the load factor by the constraint of the card; 0 for a type that is none.
  [[nodiscard]] double correction() const {
    switch (static_cast<ArcLength>(card_.KARCL)) {
      case ArcLength::updatedNormalPlane:
        return normalPlane();
      case ArcLength::sumOfDisplacements:
        return reach(sumOfAll());
      case ArcLength::spherical:
        return root(sphereOfAll());
      case ArcLength::onePosition:
        return reach(at(card_.NODAR));
      case ArcLength::relative:
        return reach(sumOfPairs());
      case ArcLength::sphericalRelative:
        return root(sphereOfPairs());
    }
    return 0.0;
  }

 private:
  [[nodiscard]] Motion motion(std::size_t i) const { return {DDISP_[i], ASDIS_[i], DISPM_[i]}; }
  [[nodiscard]] std::size_t positions() const { return ASDIS_.size(); }
  /// Of the degree of freedom IDOFA of a node of the deck.
  [[nodiscard]] Motion at(int node) const {
    return motion(static_cast<std::size_t>(mesh_.firstPosition(DeckNode{node}) + card_.IDOFA - 1));
  }
  [[nodiscard]] Motion between(const std::array<int, 2>& pair) const { return at(pair[1]) - at(pair[0]); }

  [[nodiscard]] Motion sumOfAll() const {
    Motion sum;
    for (std::size_t i = 0; i < positions(); ++i) sum += motion(i);
    return sum;
  }
  [[nodiscard]] Motion sumOfPairs() const {
    Motion sum;
    for (const auto& pair : card_.pairs) sum += between(pair);
    return sum;
  }
  [[nodiscard]] Sphere sphereOfAll() const {
    Sphere sphere;
    for (std::size_t i = 0; i < positions(); ++i) sphere.add(motion(i));
    return sphere;
  }
  /// Only the first half of the rows counts.
  [[nodiscard]] Sphere sphereOfPairs() const {
    Sphere sphere;
    for (std::size_t row = 0; row < card_.pairs.size() / 2; ++row) sphere.add(between(card_.pairs[row]));
    return sphere;
  }

  /// Puts D on the plane that is normal to the path so far, at the distance L: dl = (L |D| - D.D - A.D) / T.D.
  [[nodiscard]] double normalPlane() const {
    double DD = 0.0;
    double AD = 0.0;
    double TD = 0.0;
    for (std::size_t i = 0; i < positions(); ++i) {
      DD += DDISP_[i] * DDISP_[i];
      AD += ASDIS_[i] * DDISP_[i];
      TD += DISPM_[i] * DDISP_[i];
    }
    return TD == 0.0 ? 0.0 : (std::abs(card_.ARCLN) * std::sqrt(DD) - DD - AD) / TD;
  }

  /// dl = (L - D - A) / T
  [[nodiscard]] double reach(const Motion& motion) const {
    return motion.T == 0.0 ? 0.0 : (card_.ARCLN - motion.D - motion.A) / motion.T;
  }

  /// The larger root of the spherical constraint; the smaller one where only that does not turn back.
  [[nodiscard]] double root(const Sphere& sphere) const {
    const auto [a, b, sum] = sphere;
    const double c = sum - card_.ARCLN * card_.ARCLN;
    if (a == 0.0) {
      return b == 0.0 ? 0.0 : -c / (2.0 * b);
    }
    const double discriminant = 4.0 * b * b - 4.0 * a * c;
    if (discriminant < 0.0) {
      throw RunEnd("ARC_LENGTH: SPHERICAL; RADICANDO < 0 ", discriminant, 0.0);
    }
    const double half = std::sqrt(discriminant) / (2.0 * a);
    const double larger = half - b / a;
    const double smaller = -(b / a + half);
    const double P1 = alongPath(larger);
    const double P2 = alongPath(smaller);
    if (P1 * P2 >= 0.0 && P1 < 0.0) {
      throw RunEnd("FACTOR INICIAL MUY ALTO EN: SPHERICAL PATH", P1, P2);
    }
    return P1 < 0.0 ? smaller : larger;
  }

  /// (T dl + A + D).D: below 0 when the path would turn back.
  [[nodiscard]] double alongPath(double dl) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < positions(); ++i) {
      sum += (DISPM_[i] * dl + ASDIS_[i] + DDISP_[i]) * DDISP_[i];
    }
    return sum;
  }

  const Mesh& mesh_;
  const IncrementCard& card_;
  const std::vector<double>& DDISP_;
  const std::vector<double>& ASDIS_;
  const std::vector<double>& DISPM_;
};

/// TLOAD += dl RLOAD where the degree of freedom is free.
void addToLoads(Model& model, double dl) {
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<const int> positions = model.positions.of(e);
    const std::span<const double> RLOAD = model.vectors.RLOAD(e, 1);
    const std::span<double> TLOAD = model.vectors.TLOAD(e);
    for (std::size_t k = 0; k < positions.size(); ++k) {
      if (model.working.IFFIX[static_cast<std::size_t>(positions[k])] == 0) {
        TLOAD[k] += dl * RLOAD[k];
      }
    }
  }
}

/// The prescribed motion of fixed degrees of freedom at a full load factor. Set before every solve: the frontal solver
/// leaves reactions in its place.
void prescribeReferenceMotion(Analysis& analysis) {
  const FieldState& state = analysis.model.working;
  std::transform(state.FIXEM.begin(), state.FIXEM.end(), state.IFFIX.begin(), analysis.equations.FIXWO.begin(),
                 [](double value, int fixed) { return fixed != 0 ? value : 0.0; });
}

}  // namespace

void ARCLE(Analysis& analysis) {
  Model& model = analysis.model;
  EquationSystem& equations = analysis.equations;
  prescribeReferenceMotion(analysis);
  SOLVER(analysis, RightHandSide::referenceLoad, false);
  const double dl = ArcLengthControl(analysis).correction();
  model.increment.DFACT += dl;
  model.working.FACTO += dl;
  addToLoads(model, dl);
  for (std::size_t i = 0; i < equations.ASDIS.size(); ++i) {
    equations.ASDIS[i] += dl * equations.DISPM[i];
    if (model.working.IFFIX[i] != 0) {
      equations.FIXED[i] += dl * model.working.FIXEM[i];
    }
  }
}

}  // namespace zema
