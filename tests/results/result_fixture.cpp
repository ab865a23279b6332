// A job, small models and a kernel without mechanics.
#include "results/result_fixture.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace zema::test {

const KernelProfile& SolidWithoutMechanics::profile() const {
  static const KernelProfile row{};
  return row;
}

ElementSizes SolidWithoutMechanics::TYPE(int, int NNODE, int NGAUS) const {
  return NNODE == 4 ? ElementSizes{6, 3, NGAUS, 1, 1} : ElementSizes{6, 3, NGAUS, NGAUS, NGAUS};
}

int SolidWithoutMechanics::pointNumber(const ElementData& element, PointIndex point) const {
  return ((point.i - 1) * element.NGAUS + point.j - 1) * element.NGAUS + point.k - 1;
}

void SolidWithoutMechanics::CAUCHY(const Model&, int, PointIndex, int, std::span<double> stress) const {
  for (double& value : stress) value *= 2.0;
}

void SolidWithoutMechanics::ALMANS(const Model&, int, PointIndex, int, std::span<double> strain) const {
  for (double& value : strain) value *= 0.5;
}

Model makeModel(int NPOIN, const std::vector<std::vector<int>>& elementNodes, int NGAUS) {
  Model model;
  model.NSTR1 = 6;
  model.increment.NOUTP = {0, 0, 0, 0};
  model.loadStep.ACTIV = {1};
  model.loop.INCRE = 1;
  model.composites.all = {Composite{}};
  addLayer(model, 1);
  Mesh& mesh = model.mesh;
  mesh.dimensions = mesh.MDOFN = 3;
  mesh.NNODM = 8;
  mesh.NTOTV = 3 * NPOIN;
  mesh.numbering = NodeNumbering(NPOIN);
  for (int node = 1; node <= NPOIN; ++node) {
    mesh.COORD.insert(mesh.COORD.end(), {static_cast<double>(node), 0.0, 0.0});
    mesh.NDOFP.push_back(3);
    mesh.lastDof.push_back(3 * node);
  }
  for (const std::vector<int>& nodes : elementNodes) {
    ElementData element;
    element.MATNO[0] = 1;
    element.NTYPE = 6;
    element.IFASE = 1;
    element.NNODE = static_cast<int>(nodes.size());
    element.NGAUS = NGAUS;
    model.composites(1).ELECOM.push_back(mesh.NELEM());
    mesh.elements.push_back(element);
    mesh.LNODS.resize(mesh.elements.size() * 8, 0);
    std::ranges::copy(nodes, mesh.LNODS.end() - 8);
  }
  model.working.TDISP.assign(static_cast<std::size_t>(9 * NPOIN), 0.0);
  model.working.IFFIX.assign(static_cast<std::size_t>(3 * NPOIN), 0);
  model.working.FIXEM.assign(static_cast<std::size_t>(3 * NPOIN), 0.0);
  makeStores(model);
  return model;
}

void addLayer(Model& model, int materials) {
  Composite& composite = model.composites(1);
  Layer layer;
  for (int i = 0; i < materials; ++i) layer.components.push_back({1, 1.0, composite.NUMAT++});
  composite.layers.push_back(layer);
}

void makeStores(Model& model) {
  std::vector<int> points;
  std::vector<int> components;
  for (const ElementData& element : model.mesh.elements) {
    points.push_back(element.NGAUS * element.NGAUS * element.NGAUS);
    components.push_back(model.composites(element.MATNO[0]).NUMAT);
  }
  model.points = PointStore(6, points, components);
  model.positions = ElementPositions(model.mesh);
  model.vectors = ElementVectors(model.mesh.NELEM(), 24, false);
}

void setTensor(Model& model, StateSlot slot, int e, int point, int component, int place, std::vector<double> values) {
  std::ranges::copy(values, model.points.mechanical(slot, e, point, component).begin() + place);
}

ResultTest::ResultTest() : before_(std::filesystem::current_path()) {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  folder_ =
      std::filesystem::path(testing::TempDir()) / (std::string("results_") + test.test_suite_name() + test.name());
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(folder_);
  std::filesystem::current_path(folder_);
  job.CFILE[21] = "a.b.mec.sal";
  job.IRUN.LNAME = 1;
  job.channels.assign(channel::listing, "listing", OpenMode::append);
  job.channels.assign(channel::postMesh, "mesh", OpenMode::fromStart);
  job.channels.assign(channel::postResults, "results", OpenMode::append);
}

ResultTest::~ResultTest() {
  std::filesystem::current_path(before_);
  std::filesystem::remove_all(folder_);
}

std::string ResultTest::written(int channelNumber) {
  job.channels[channelNumber].flush();
  return content(job.channels[channelNumber].path());
}

std::string ResultTest::content(const std::string& name) const {
  std::ostringstream text;
  text << std::ifstream(folder_ / name).rdbuf();
  return text.str();
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace zema::test
