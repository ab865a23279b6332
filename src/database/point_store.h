// The state of every component at every integration point: a mechanical and an internal record, committed and trial.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "database/zeroed_block.h"

namespace zema {

/// Which of the two states of a point.
enum class StateSlot { committed = 1, trial = 2 };

/// Places of the mechanical record for n stress components, from 0: 9 n + 11 reals.
struct MechanicalPlaces {
  int n;  ///< stress components

  [[nodiscard]] constexpr int STRSG() const { return 0; }              ///< stress
  [[nodiscard]] constexpr int STRAT() const { return n; }              ///< strain
  [[nodiscard]] constexpr int STRAP() const { return 2 * n; }          ///< plastic strain
  [[nodiscard]] constexpr int lastYield() const { return 3 * n; }      ///< yield function at the last evaluation
  [[nodiscard]] constexpr int lawScalar() const { return 3 * n + 1; }  ///< second scalar of the law
  [[nodiscard]] constexpr int VSTRAT() const { return 3 * n + 4; }     ///< viscous strain
  [[nodiscard]] constexpr int STRSGT() const { return 4 * n + 4; }     ///< stress of the previous step
  [[nodiscard]] constexpr int STRATT() const { return 5 * n + 4; }     ///< strain of the previous step
  [[nodiscard]] constexpr int VSTRATT() const { return 6 * n + 4; }    ///< viscous strain of the previous step
  [[nodiscard]] constexpr int fatigue() const { return 7 * n + 4; }    ///< seven fatigue values
  [[nodiscard]] constexpr int STRFAS() const { return 7 * n + 11; }    ///< strain offset of the construction step
  [[nodiscard]] constexpr int VSTRFAS() const { return 8 * n + 11; }   ///< viscous strain offset
  [[nodiscard]] constexpr int size() const { return 9 * n + 11; }      ///< LVAR1
};

/// Places of the internal record, from 0: 16 internal variables, then the last tangent by rows.
namespace internal {
inline constexpr int kappa = 0;           ///< plastic damage variable
inline constexpr int frictionAngle = 1;   ///< radians
inline constexpr int dilatancyAngle = 2;  ///< radians
inline constexpr int yieldStress = 3;     ///< current yield stress
inline constexpr int hardening = 4;       ///< hardening parameter
inline constexpr int damage = 5;
inline constexpr int dissipation = 6;  ///< dissipated energy of damage
inline constexpr int threshold = 7;    ///< damage threshold
inline constexpr int elasticFlag = 8;  ///< 1 when the last step of the point was elastic
inline constexpr int secondVariable = 9;
inline constexpr int flowScale = 10;             ///< scale of the flow vector and the plastic strain
inline constexpr int reducedYieldStress = 11;    ///< fatigue factor times yield stress
inline constexpr int compressionDamage = 12;     ///< damage under compression of the two-sided damage laws
inline constexpr int compressionThreshold = 13;  ///< its threshold; places 6 and 8 are those of tension
inline constexpr int tensionStrength = 14;       ///< initial threshold of tension
inline constexpr int compressionStrength = 15;   ///< initial threshold of compression
inline constexpr int count = 16;                 ///< places of INTVAR; the tangent follows
}  // namespace internal

/// Rows of all points, addressed by element, point and component. Component 0 is the composite as a whole,
/// component LOCMA its simple material of that running number; where the composite is nothing but its material, one
/// record serves both. A point's number counts the places (i, j, k) of the element's NGAUS cube (square in the plane),
/// the last index fastest.
class PointStore {
 public:
  PointStore() = default;
  /// points[e], records[e]: places of element e and records per place: NUMAT, or 1 that stands for component 0 and 1.
  /// All rows start at 0.
  PointStore(int NSTR1, std::span<const int> points, std::span<const int> records);

  /// Mechanical record, LVAR1 = 9 n + 11 reals.
  [[nodiscard]] std::span<double> mechanical(StateSlot slot, int e, int point, int component) {
    return record(mechanical_[index(slot)], LVAR1_, row(e, point, component));
  }
  [[nodiscard]] std::span<const double> mechanical(StateSlot slot, int e, int point, int component) const {
    return record(mechanical_[index(slot)], LVAR1_, row(e, point, component));
  }
  /// Internal record, LVAR2 = n^2 + 16 reals.
  [[nodiscard]] std::span<double> internal(StateSlot slot, int e, int point, int component) {
    return record(internal_[index(slot)], LVAR2_, row(e, point, component));
  }
  [[nodiscard]] std::span<const double> internal(StateSlot slot, int e, int point, int component) const {
    return record(internal_[index(slot)], LVAR2_, row(e, point, component));
  }

  /// Makes the trial state of all points the committed one.
  void commit();

  /// All mechanical and all internal records of a state, by element, point and component, for the restart data.
  [[nodiscard]] std::array<std::span<double>, 2> rows(StateSlot slot) {
    ZeroedBlock& mechanical = mechanical_[index(slot)];
    ZeroedBlock& internal = internal_[index(slot)];
    return {std::span(mechanical.data(), mechanical.size()), std::span(internal.data(), internal.size())};
  }
  [[nodiscard]] std::size_t mechanicalLength() const { return LVAR1_; }
  [[nodiscard]] std::size_t internalLength() const { return LVAR2_; }
  /// Whether the two states of every point are the same to the bit, as after a commit.
  [[nodiscard]] bool committedIsTrial() const;

  [[nodiscard]] int elements() const { return static_cast<int>(points_.size()); }
  [[nodiscard]] int pointsOf(int e) const { return points_[static_cast<std::size_t>(e)]; }
  /// Records per place.
  [[nodiscard]] int recordsOf(int e) const { return records_[static_cast<std::size_t>(e)]; }
  [[nodiscard]] MechanicalPlaces places() const { return {NSTR1_}; }

 private:
  [[nodiscard]] static std::size_t index(StateSlot slot) { return slot == StateSlot::committed ? 0 : 1; }
  [[nodiscard]] std::size_t row(int e, int point, int component) const {
    const auto records = static_cast<std::size_t>(recordsOf(e));
    return first_[static_cast<std::size_t>(e)] + static_cast<std::size_t>(point) * records +
           (records == 1 ? 0 : static_cast<std::size_t>(component));
  }
  [[nodiscard]] static std::span<double> record(ZeroedBlock& all, std::size_t length, std::size_t row) {
    return {all.data() + row * length, length};
  }
  [[nodiscard]] static std::span<const double> record(const ZeroedBlock& all, std::size_t length, std::size_t row) {
    return {all.data() + row * length, length};
  }

  int NSTR1_ = 0;
  std::size_t LVAR1_ = 0;
  std::size_t LVAR2_ = 0;
  std::vector<std::size_t> first_;  // first row of an element
  std::vector<int> points_;
  std::vector<int> records_;
  std::array<ZeroedBlock, 2> mechanical_;
  std::array<ZeroedBlock, 2> internal_;
};

}  // namespace zema
