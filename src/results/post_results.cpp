// The blocks of the result file.
#include <algorithm>
#include <cassert>
#include <functional>
#include <numeric>
#include <optional>

#include "foundation/single_precision.h"
#include "results/columns.h"
#include "results/element_kinds.h"
#include "results/nodal_values.h"
#include "results/output_steps.h"
#include "results/point_values.h"
#include "results/post_files.h"

namespace zema {
namespace {

/// A simple material of a composite, or nothing for the composites as a whole.
struct Group {
  int composite;
  LayerComponent component;
};

/// "NAME//COMPOSITE01//LAYER02//SIMPLE MAT.03//SUFFIX" "MECHANICAL", or without numbers.
std::string resultText(const BlockForm& form, const std::optional<Group>& group, std::string_view suffix) {
  std::string text = '"' + std::string(form.name) + "//COMPOSITE";
  if (group)
    text += twoDigits(group->composite) + "//LAYER" + twoDigits(group->component.layer) + "//SIMPLE MAT." +
            twoDigits(group->component.place);
  text += suffix;
  return leftInColumns(text + R"(" "MECHANICAL")", form.textColumns);
}

class BlockWriter {
 public:
  /// Fills the values of a record in the order of the columns and says how many they are.
  using Values = std::function<std::span<const double>(const PointRecord& record, TensorRoom& room)>;

  BlockWriter(Channel& out, const Model& model, const Kernel& kernel)
      : out_(out), model_(model), post_(kernel.results().post), kinds_(elementKinds(model, kernel)), kernel_(kernel) {}

  void displacements();
  void tensors(const TensorBlock& block, bool inMaterialAxes);
  void internalVariable(std::size_t place);

 private:
  void pointBlocks(const BlockForm& form, std::string_view suffix, std::string_view names, const Values& whole,
                   const Values& part);
  void pointBlock(const BlockForm& form, const std::string& text, std::string_view names, const ElementKind& kind,
                  std::span<const int> elements, int component, const Values& values);
  void pointRows(const BlockForm& form, const ElementKind& kind, int e, int component, const Values& values);
  [[nodiscard]] std::span<const double> tensorColumns(const PointRecord& record, TensorOutput output,
                                                      bool inMaterialAxes, TensorRoom& room) const;

  Channel& out_;
  const Model& model_;
  const PostProfile& post_;
  std::vector<ElementKind> kinds_;
  const Kernel& kernel_;
};

void BlockWriter::displacements() {
  static constexpr Layout head{R"("Result" 1X A 1X E12.6 1X A 1X "Onnodes")"};
  const BlockForm& form = post_.displacements;
  out_.write(head, leftInColumns(form.name, form.textColumns), model_.loop.TTIME, form.kind);
  out_.line(post_.displacementNames);
  out_.line(FreeLine("Values"));
  if (std::ranges::find(post_.nodalTypes, model_.mesh.elements.back().NTYPE) != post_.nodalTypes.end()) {
    for (int node = 1; node <= model_.mesh.NPOIN(); ++node) {
      appendRow(out_.buffer(), rightInColumns(node, form.numberColumns), form.values, nodalMotion(model_, {node}, 1));
      out_.commitBuffer();
    }
  }
  out_.line(FreeLine("End Values"));
}

std::span<const double> BlockWriter::tensorColumns(const PointRecord& record, TensorOutput output, bool inMaterialAxes,
                                                   TensorRoom& room) const {
  TensorRoom stored;
  const std::span<double> tensor = outputTensor(model_, kernel_, record, output, stored);
  if (inMaterialAxes) post_.toMaterialAxes(tensor, model_.mesh.element(record.e).EAEULER, output.quantity);
  assert(post_.columnOrder.size() <= room.size());
  std::ranges::transform(post_.columnOrder, room.begin(),
                         [tensor](int place) { return tensor[static_cast<std::size_t>(place)]; });
  return std::span(room).first(post_.columnOrder.size());
}

void BlockWriter::tensors(const TensorBlock& block, bool inMaterialAxes) {
  const auto values = [this, &block](bool turned) {
    return [this, &block, turned](const PointRecord& record, TensorRoom& room) {
      return tensorColumns(record, block.tensor, turned, room);
    };
  };
  pointBlocks(block.form, "", block.componentNames, values(inMaterialAxes), values(false));
}

void BlockWriter::internalVariable(std::size_t place) {
  const auto values = [this, place](const PointRecord& record, TensorRoom&) {
    return model_.points.internal(record.slot, record.e, record.number, record.component).subspan(place, 1);
  };
  const std::string name(post_.INTE[place]);
  const FreeLine names("ComponentNames ", '"' + name + '"');
  pointBlocks(post_.internalVariables, "//" + name, names, values, values);
}

/// The block of the composites as a whole and, on demand, those of each simple material; in a mixed mesh only for the
/// kinds of elements that the composite has.
void BlockWriter::pointBlocks(const BlockForm& form, std::string_view suffix, std::string_view names,
                              const Values& whole, const Values& part) {
  for (const ElementKind& kind : kinds_)
    pointBlock(form, resultText(form, {}, suffix), names, kind, kind.elements, 0, whole);
  if (model_.increment.NOUTP[2] != 1) return;
  for (std::size_t c = 0; c < model_.composites.all.size(); ++c) {
    const Composite& composite = model_.composites.all[c];
    for (const LayerComponent& component : componentsOf(composite)) {
      const std::string text = resultText(form, Group{static_cast<int>(c) + 1, component}, suffix);
      for (const ElementKind& kind : kinds_) {
        const auto ofKind = [this, &kind](int e) { return kind.holds(model_.mesh.element(e)); };
        if (kinds_.size() > 1 && std::ranges::none_of(composite.ELECOM, ofKind)) continue;
        pointBlock(form, text, names, kind, composite.ELECOM, component.LOCMA, part);
      }
    }
  }
}

/// One block: of the given elements those that are active and of the kind.
void BlockWriter::pointBlock(const BlockForm& form, const std::string& text, std::string_view names,
                             const ElementKind& kind, std::span<const int> elements, int component,
                             const Values& values) {
  static constexpr Layout head{R"("Result" 1X A 1X E12.6 1X A 1X "OnGaussPoints" 1X A)"};
  out_.write(head, text, model_.loop.TTIME, form.kind, kind.gaussWord);
  out_.line(names);
  out_.line(FreeLine("Values"));
  for (const int e : elements) {
    const ElementData& element = model_.mesh.element(e);
    if (kind.holds(element) && model_.active(element)) pointRows(form, kind, e, component, values);
  }
  out_.line(FreeLine("End Values"));
}

void BlockWriter::pointRows(const BlockForm& form, const ElementKind& kind, int e, int component,
                            const Values& values) {
  const std::string blanks(static_cast<std::size_t>(form.numberColumns), ' ');
  std::string front = rightInColumns(e + 1, form.numberColumns);
  TensorRoom room;
  for (std::size_t p = 0; p < kind.walk.size(); ++p) {
    const PointRecord record{StateSlot::committed, e, kind.walk[p], kind.pointNumbers[p], component};
    appendRow(out_.buffer(), front, form.values, values(record, room));
    front = blanks;
  }
  out_.commitBuffer();
}

}  // namespace

void POSPRO(Job& job, const Model& model, const Kernel& kernel) {
  if (!loadTableAsksForResults(model) && (timeDependent(model) || model.loadStep.dynamic())) return;
  const PostProfile& post = kernel.results().post;
  const IncrementCard& card = model.increment;
  Channel& out = job.channels[channel::postResults];
  BlockWriter writer(out, model, kernel);

  if (card.IPOST3D[0] == 1) writer.displacements();
  for (std::size_t i = 0; i < post.tensors.size(); ++i)
    if (const int selection = card.IPOST3D[i + 1]; selection > 0) writer.tensors(post.tensors[i], selection == 2);
  if (std::accumulate(card.IIFLAG.begin(), card.IIFLAG.end(), 0) > 0)
    for (std::size_t i = 0; i < post.INTE.size(); ++i)
      if (card.IIFLAG[i] == 1) writer.internalVariable(i);
  out.flush();
}

}  // namespace zema
