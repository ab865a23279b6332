// Nodal and point results in the listing.
#include "results/listing.h"

#include <array>
#include <numeric>

#include "results/columns.h"
#include "results/curves.h"
#include "results/nodal_values.h"
#include "results/output_steps.h"
#include "results/point_values.h"

namespace zema {
namespace {

/// NOUTP(2) at a later iteration or when the first one has converged, NOUTP(1) otherwise.
int listingLevel(const Model& model) {
  const bool first = model.loop.IITER <= 1 && model.loop.KCONV != 0;
  return model.increment.NOUTP[first ? 0 : 1];
}

void writeLineByType(Channel& out, std::span<const LineByType> lines, int NTYPE) {
  for (const LineByType& line : lines) {
    if (NTYPE < line.from || NTYPE >= line.below) continue;
    out.write(line.text);
    return;
  }
}

class ListingWriter {
 public:
  ListingWriter(Channel& out, const Model& model, const Kernel& kernel, StateSlot slot)
      : out_(out), model_(model), kernel_(kernel), slot_(slot), NTYPE_(model.mesh.elements.back().NTYPE) {}

  void displacements();
  void velocities();
  void reactions();
  void pointTable(const PointTable& table);

 private:
  [[nodiscard]] bool begin(const NodalTable& table);
  void elementRows(const PointTable& table, int e);
  void pointRow(const PointTable& table, int number, const PointRecord& record);
  [[nodiscard]] const ListingProfile& profile() const { return kernel_.results().listing; }

  Channel& out_;
  const Model& model_;
  const Kernel& kernel_;
  StateSlot slot_;
  int NTYPE_;  // of the element that stands for all
};

/// Writes title and heading of a nodal table; false when the table is not for these elements.
bool ListingWriter::begin(const NodalTable& table) {
  if (NTYPE_ >= table.typesBelow) return false;
  out_.write(table.title);
  writeLineByType(out_, table.heads, NTYPE_);
  return true;
}

void ListingWriter::displacements() {
  const NodalTable& table = profile().displacements;
  if (!begin(table)) return;
  for (int node = 1; node <= model_.mesh.NPOIN(); ++node) out_.write(table.row, node, nodalMotion(model_, {node}, 1));
}

void ListingWriter::velocities() {
  const NodalTable& table = profile().velocities;
  if (!begin(table)) return;
  for (int node = 1; node <= model_.mesh.NPOIN(); ++node)
    out_.write(table.row, node, nodalMotion(model_, {node}, 2), nodalMotion(model_, {node}, 3));
}

void ListingWriter::reactions() {
  const NodalTable& table = profile().reactions;
  if (!begin(table)) return;
  const Reactions reactions(model_);
  for (const int node : model_.working.NOFIX) out_.write(table.row, node, reactions.of({node}));
}

void ListingWriter::pointTable(const PointTable& table) {
  out_.write(table.rule);
  writeLineByType(out_, table.heads, NTYPE_);
  for (int e = 0; e < model_.mesh.NELEM(); ++e) elementRows(table, e);
}

void ListingWriter::elementRows(const PointTable& table, int e) {
  out_.write(profile().elementLine, rightInColumns(e + 1, profile().elementColumns));
  const ElementData& element = model_.mesh.element(e);
  const ElementSizes sizes = kernel_.TYPE(element.NTYPE, element.NNODE, element.NGAUS);
  int number = 0;
  for (int i = 1; i <= sizes.NGAU1; ++i)
    for (int j = 1; j <= sizes.NGAU2; ++j)
      for (int k = 1; k <= sizes.NGAU3; ++k, ++number) {
        const PointIndex point{i, j, k};
        PointRecord record{slot_, e, point, kernel_.pointNumber(element, point), 0};
        pointRow(table, number, record);
        if (model_.increment.NOUTP[2] == 0) continue;
        for (const LayerComponent& component : componentsOf(model_.composites(element.MATNO[0]))) {
          record.component = component.LOCMA;
          pointRow(table, number, record);
        }
      }
}

void ListingWriter::pointRow(const PointTable& table, int number, const PointRecord& record) {
  TensorRoom room;
  const std::span<const double> tensor = outputTensor(model_, kernel_, record, table.tensor, room);
  std::array<double, 4> principal{};
  const int count = profile().principal(tensor, table.tensor.quantity, principal);
  const double last =
      table.last == PointTable::LastColumn::sumOfComponents
          ? std::accumulate(tensor.begin(), tensor.end(), 0.0)
          : model_.points.mechanical(record.slot, record.e, record.number,
                                     record.component)[static_cast<std::size_t>(model_.points.places().lastYield())];
  const int unused = 0;  // second column of the row: a number that this walk has no value for
  out_.write(profile().pointRow, number, unused, record.component, tensor,
             std::span<const double>(principal).first(static_cast<std::size_t>(count)), last);
}

}  // namespace

void OUTPUT(Job& job, const Model& model, const Kernel& kernel, OutputMoment moment) {
  if (timeDependent(model) && !loadTableAsksForResults(model)) return;
  const ListingProfile& profile = kernel.results().listing;
  const StateSlot slot = moment == OutputMoment::converged ? StateSlot::committed : StateSlot::trial;
  const int level = listingLevel(model);
  Channel& out = job.listing();
  out.write(profile.loadFactor, model.working.FACTO);

  ListingWriter writer(out, model, kernel, slot);
  if (level >= 1) writer.displacements();
  if (level >= 1 && model.loadStep.dynamic()) writer.velocities();
  if (level >= 2) writer.reactions();
  if (level >= 3)
    for (const PointTable& table : profile.pointTables) writer.pointTable(table);
  if (!model.curves.empty()) OUTCU(job, model, kernel, slot);
}

}  // namespace zema
