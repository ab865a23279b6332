// A job in a folder of its own, small models and a kernel without mechanics, for the tests of the results.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "job/job.h"
#include "kernel/solid3d/post_profile.h"
#include "model/kernel.h"

namespace zema::test {

/// The words and sizes of the kernel of solids; in the current configuration a stress is doubled and a strain halved.
class SolidWithoutMechanics : public Kernel {
 public:
  [[nodiscard]] const KernelProfile& profile() const override;
  [[nodiscard]] const ResultProfile& results() const override { return solid3d::resultProfile(); }
  [[nodiscard]] ElementSizes TYPE(int NTYPE, int NNODE, int NGAUS) const override;
  [[nodiscard]] int pointNumber(const ElementData& element, PointIndex point) const override;
  void CAUCHY(const Model& model, int e, PointIndex point, int component, std::span<double> stress) const override;
  void ALMANS(const Model& model, int e, PointIndex point, int component, std::span<double> strain) const override;

  void addBodyForce(const Model&, int, std::span<const double>, std::span<double>) const override {}
  [[nodiscard]] int faceNodes(const ElementData&) const override { return 0; }
  void addFaceLoad(const Model&, int, std::span<const int>, std::span<const double>, std::span<double>) const override {
  }
  void prepare(Model&) override {}
  void CALCIN(const Model&, double) override {}
  void IMPORTINFON1(const Model&) override {}
  void RIGI(const Model&, int, std::span<double>) const override {}
  [[nodiscard]] double volume(const Model&, int) const override { return 0.0; }
  EnergySums RESIDU(Model&, int) const override { return {}; }
};

/// A model of solids: nodes on a line x = 1, 2, ..., one element for each list of nodes, all of composite 1 with one
/// layer of one material, everything 0, one active construction step.
[[nodiscard]] Model makeModel(int NPOIN, const std::vector<std::vector<int>>& elementNodes, int NGAUS);

/// Gives composite 1 another layer of `materials` components.
void addLayer(Model& model, int materials);

/// Makes the stores anew after elements or composites have changed.
void makeStores(Model& model);

/// Sets a tensor of six places in the committed or trial record of a point.
void setTensor(Model& model, StateSlot slot, int e, int point, int component, int place, std::vector<double> values);

/// A folder with an open job "a.b" in it, removed at the end of the test.
class ResultTest : public testing::Test {
 protected:
  ResultTest();
  ~ResultTest() override;

  /// What stands in the file of a channel so far.
  [[nodiscard]] std::string written(int channelNumber);
  [[nodiscard]] std::string content(const std::string& name) const;
  [[nodiscard]] bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

  Job job;
  SolidWithoutMechanics kernel;

 private:
  std::filesystem::path folder_;
  std::filesystem::path before_;
};

/// Lines of a text, without their ends.
[[nodiscard]] std::vector<std::string> linesOf(const std::string& text);

}  // namespace zema::test
