// A job in a folder of its own and a small model of solids, for the tests of the results.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "job/job.h"
#include "jobs/job_runner.h"
#include "kernel/solid_model.h"

namespace zema::test {

constexpr int stressPlace = 0;
constexpr int strainPlace = 6;
constexpr int plasticPlace = 12;

/// An open job "a.b" in a folder that is the current one during the test, and a tetrahedron on the axes.
class ResultTest : public testing::Test {
 protected:
  ResultTest();
  ~ResultTest() override { std::filesystem::current_path(before_); }

  /// Changes the model; composite 1 has all elements, in layer 1 one material and in layer 2 as many as is said here.
  void use(const std::vector<Point>& nodes, const std::vector<std::vector<int>>& elements, int secondLayer = 0);
  /// Sets places of a mechanical record of the first element.
  void set(StateSlot slot, int point, int component, int place, const std::vector<double>& values);
  /// In the current configuration with u = x along an axis: F = 2, so there S_ii is doubled and E_ii quartered.
  void stretchTwofold(std::size_t axis);
  /// What was written to a channel since the last call.
  [[nodiscard]] std::string written(int channelNumber);

  JobFolder folder;
  Job job;
  std::unique_ptr<Kernel> kernel;
  Model model;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
  std::map<int, std::size_t> seen_;
};

/// Of the lines of a text that begin with `front` some columns.
[[nodiscard]] std::vector<std::string> columnsOf(const std::string& text, const std::string& front, std::size_t first,
                                                 std::size_t count);

}  // namespace zema::test
