// The post mesh and the head of the result file.
#include <cstdlib>

#include "results/columns.h"
#include "results/element_kinds.h"
#include "results/post_files.h"

namespace zema {
namespace {

void writeCoordinates(Channel& out, const Mesh& mesh) {
  static constexpr Layout row{"I9 9E12.6"};
  for (int node = 1; node <= mesh.NPOIN(); ++node) out.write(row, node, mesh.coordinates({node}));
}

void writeElements(Channel& out, const Mesh& mesh, const ElementKind& kind) {
  static constexpr Layout numbers{"99I9"};
  static constexpr Layout material{"I7"};
  for (const int e : kind.elements) {
    numbers.append(out.buffer(), e + 1);
    for (const int node : mesh.nodesOf(e)) numbers.append(out.buffer(), std::abs(node));
    out.write(material, mesh.element(e).MATNO[0]);
  }
}

/// One mesh; all coordinates stand in the first one of the file.
void writeMesh(Channel& out, const Mesh& mesh, const ElementKind& kind, bool first) {
  static constexpr Layout head{R"("MESH" 1X A10 1X "Dimension" 1X I1 1X "Elemtype" 1X A 1X "Nnode" 1X A)"};
  out.write(head, kind.gaussWord, mesh.dimensions, kind.typeWord, std::to_string(kind.NNODE));
  out.line(FreeLine("Coordinates"));
  if (first) writeCoordinates(out, mesh);
  out.line(FreeLine("End Coordinates"));
  out.line(FreeLine("Elements"));
  writeElements(out, mesh, kind);
  out.line(FreeLine("End elements"));
}

void writePointRule(Channel& out, const ElementKind& kind) {
  static constexpr Layout rule{R"(1X "GaussPoints" 2X A 5X "Elemtype" 3X A 3X A)"};
  static constexpr Layout count{R"(1X "Number of Gauss Points: " I3)"};
  out.write(rule, kind.gaussWord, kind.typeWord, kind.gaussWord);
  out.write(count, kind.walk.size());
  out.line(FreeLine("Natural Coordinates   : Internal"));
  out.line(FreeLine("End GaussPoints"));
  out.blank();
}

}  // namespace

void GEOPOST(Job& job, const Model& model, const Kernel& kernel) {
  const std::vector<ElementKind> kinds = elementKinds(model, kernel);
  Channel& mesh = job.channels[channel::postMesh];
  for (const ElementKind& kind : kinds) writeMesh(mesh, model.mesh, kind, &kind == &kinds.front());
  mesh.flush();

  Channel& results = job.channels[channel::postResults];
  results.line(FreeLine("Qor Post Results File 1.0"));
  results.blank();
  for (const ElementKind& kind : kinds) writePointRule(results, kind);
  results.flush();
}

}  // namespace zema
