// A job and a small model of solids.
#include "results/result_fixture.h"

#include <algorithm>
#include <numeric>
#include <sstream>

#include "constitutive/sample_materials.h"

namespace zema::test {

ResultTest::ResultTest() {
  std::filesystem::current_path(folder.path());
  job.CFILE[21] = "a.b.mec.sal";
  job.IRUN.LNAME = 1;
  job.channels.assign(channel::listing, "listing", OpenMode::append);
  job.channels.assign(channel::postMesh, "mesh", OpenMode::fromStart);
  job.channels.assign(channel::postResults, "results", OpenMode::append);
  use({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{1, 2, 3, 4}});
}

void ResultTest::use(const std::vector<Point>& nodes, const std::vector<std::vector<int>>& elements, int secondLayer) {
  model = solidModel(nodes, elements, isotropicMaterial(1000.0, 0.25));
  model.working.IFFIX.assign(3 * nodes.size(), 0);
  model.working.FIXEM.assign(3 * nodes.size(), 0.0);
  Composite& composite = model.composites(1);
  composite.ELECOM.resize(elements.size());
  std::iota(composite.ELECOM.begin(), composite.ELECOM.end(), 0);
  Layer layer;
  for (int i = 0; i < secondLayer; ++i) layer.components.push_back({1, 1.0, composite.NUMAT++});
  if (secondLayer > 0) composite.layers.push_back(layer);
  kernel = makeSolid3D();
  kernel->prepare(model);
}

void ResultTest::set(StateSlot slot, int point, int component, int place, const std::vector<double>& values) {
  std::ranges::copy(values, model.points.mechanical(slot, 0, point, component).begin() + place);
}

void ResultTest::stretchTwofold(std::size_t axis) {
  model.control.LARGE = 1;
  model.control.KPUSH = 2;
  for (std::size_t k = axis; k < model.mesh.COORD.size(); k += 3) model.working.TDISP[k] = model.mesh.COORD[k];
}

std::string ResultTest::written(int channelNumber) {
  job.channels[channelNumber].flush();
  const std::string all = folder.read(job.channels[channelNumber].path());
  return all.substr(std::exchange(seen_[channelNumber], all.size()));
}

std::vector<std::string> columnsOf(const std::string& text, const std::string& front, std::size_t first,
                                   std::size_t count) {
  std::vector<std::string> columns;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    if (line.starts_with(front)) columns.push_back(line.substr(first, count));
  return columns;
}

}  // namespace zema::test
