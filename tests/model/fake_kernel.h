// A kernel without mechanics, for the tests of what reads decks.
#pragma once

#include <array>
#include <cstdlib>

#include "model/kernel.h"

namespace zema::test {

inline constexpr std::array<int, 4> fakeTypes{3, 6, 20, 21};

/// Sizes of solids, or of plane elements with other figures in its row; loads leave a record of what came.
class FakeKernel : public Kernel {
 public:
  KernelProfile row{.name = "V3D",
                    .dimensions = 3,
                    .MDOFN = 3,
                    .NSTR1 = 6,
                    .elementAngles = 3,
                    .internalFlags = 16,
                    .elementTypes = fakeTypes,
                    .mostNodes = 21,
                    .mostGauss = 2,
                    .fixityCheckBelow = 10,
                    .thermalFrom = 20,
                    .fixityEcho = "1X I9 5X I6 5X 5E10.6",
                    .jacobianMessage = ""};
  int dofsOfType20 = 0;  ///< of a node; 0: elements of NTYPE 20 have no sizes

  [[nodiscard]] const KernelProfile& profile() const override { return row; }
  [[nodiscard]] const ResultProfile& results() const override { std::abort(); }
  [[nodiscard]] ElementSizes TYPE(int NTYPE, int NNODE, int NGAUS) const override {
    const int across = NNODE == row.dimensions + 1 ? 1 : NGAUS;
    return {row.NSTR1, NTYPE == 20 ? dofsOfType20 : row.MDOFN, NGAUS, across, row.dimensions == 3 ? across : 1};
  }
  /// Puts the force on the first node of the element, as if its volume were 1.
  void addBodyForce(const Model&, int, std::span<const double> force, std::span<double> RLOAD) const override {
    for (std::size_t i = 0; i < force.size(); ++i) RLOAD[i] += force[i];
  }
  [[nodiscard]] int faceNodes(const ElementData&) const override { return row.dimensions; }
  /// Puts each value at its node, as if the share of every node of the face were 1.
  void addFaceLoad(const Model&, int, std::span<const int> places, std::span<const double> values,
                   std::span<double> RLOAD) const override {
    const std::size_t NDOFN = values.size() / places.size();
    for (std::size_t k = 0; k < values.size(); ++k)
      RLOAD[static_cast<std::size_t>(places[k / NDOFN]) * NDOFN + k % NDOFN] += values[k];
  }
  [[nodiscard]] int pointNumber(const ElementData&, PointIndex) const override { return 0; }
  void prepare(Model&) override {}
  void CALCIN(const Model&, double) override {}
  void IMPORTINFON1(const Model&) override {}
  void RIGI(const Model&, int, std::span<double>) const override {}
  void addMass(const Model&, int, double, std::span<double>) const override {}
  void addViscosity(const Model&, int, double, std::span<double>) const override {}
  [[nodiscard]] double volume(const Model&, int) const override { return 0.0; }
  EnergySums RESIDU(Model&, int) const override { return {}; }
  void CAUCHY(const Model&, int, PointIndex, int, std::span<double>) const override {}
  void ALMANS(const Model&, int, PointIndex, int, std::span<double>) const override {}
};

}  // namespace zema::test
