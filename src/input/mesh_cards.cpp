// Reads the model section of the deck and makes what the run keeps by element, node and point.
#include "input/mesh_cards.h"

#include <algorithm>
#include <cstdlib>

#include "input/checks.h"
#include "input/composite_cards.h"
#include "input/coordinate_cards.h"
#include "input/curve_cards.h"
#include "input/deck_echo.h"
#include "input/element_cards.h"
#include "input/element_sizes.h"
#include "input/material_cards.h"
#include "job/job.h"

namespace zema {

namespace {

void writeFrequencyHead(Job& job, const Model& model) {
  const ControlRecord& control = model.control;
  Channel& records = job.channels[channel::frequencies];
  records.line(FreeLine(model.text.CPROB));
  records.line(FreeLine(control.NPOIN, control.NELEM, control.NMATC, control.LARGE));
}

/// Sizes the mesh by the control data; nodes keep the deck's order.
void sizeMesh(Model& model, const KernelProfile& profile) {
  const ControlRecord& control = model.control;
  Mesh& mesh = model.mesh;
  mesh.dimensions = profile.dimensions;
  mesh.NNODM = control.NNODM;
  mesh.MDOFN = profile.MDOFN;
  mesh.numbering = NodeNumbering(control.NPOIN);
  mesh.elements.assign(static_cast<std::size_t>(control.NELEM), {});
  mesh.LNODS.assign(static_cast<std::size_t>(control.NELEM) * static_cast<std::size_t>(control.NNODM), 0);
  model.composites.all.assign(static_cast<std::size_t>(control.NMATC), {});
}

/// Degrees of freedom of every node, by deck number from 0: the greatest number among the elements that hold it.
std::vector<int> searchDofs(const Mesh& mesh, const Kernel& kernel) {
  std::vector<int> dofs(static_cast<std::size_t>(mesh.NPOIN()), 0);
  for (int e = 0; e < mesh.NELEM(); ++e) {
    const int NDOFN = sizesOf(kernel, mesh.element(e)).NDOFN;
    for (const int signedNode : mesh.nodesOf(e)) {
      const long node = std::abs(static_cast<long>(signedNode));
      if (node >= 1 && node <= mesh.NPOIN()) {
        int& most = dofs[static_cast<std::size_t>(node - 1)];
        most = std::max(most, NDOFN);
      }
    }
  }
  return dofs;
}

/// `NGLIB1` of all nodes. When the last two element cards are alike, every node takes the degrees of freedom of the
/// first element without a search.
void countDofs(Mesh& mesh, const Kernel& kernel, bool lastTwoAlike) {
  const auto NPOIN = static_cast<std::size_t>(mesh.NPOIN());
  mesh.NDOFP =
      lastTwoAlike ? std::vector<int>(NPOIN, sizesOf(kernel, mesh.element(0)).NDOFN) : searchDofs(mesh, kernel);
  mesh.lastDof.resize(NPOIN);
  mesh.NTOTV = 0;
  for (std::size_t n = 0; n < NPOIN; ++n) {
    mesh.NTOTV += mesh.NDOFP[n];
    mesh.lastDof[n] = mesh.NTOTV;
  }
}

/// Makes what is kept by element, once all numbers of the model have been checked.
void makeElementVectors(Model& model) {
  const Mesh& mesh = model.mesh;
  model.positions = ElementPositions(mesh);
  model.vectors = ElementVectors(mesh.NELEM(), mesh.MDOFN * mesh.NNODM, model.text.CPROB == "ACOP3D");
}

}  // namespace

void INPU(Job& job, Model& model, const Kernel& kernel) {
  const KernelProfile& profile = kernel.profile();
  if (feedsFrequencyRecords(job)) {
    writeFrequencyHead(job, model);
  }
  sizeMesh(model, profile);
  const bool lastTwoAlike = readElements(job, model, kernel);
  countDofs(model.mesh, kernel, lastTwoAlike);
  readComposites(job, model, profile);
  OTABR02(model.composites);
  readCoordinates(job, model);
  CONSTITUTIVAS(job, model);
  CHECK2(job, model);
  for (int& node : model.mesh.LNODS) {
    node = std::abs(node);
  }
  makeElementVectors(model);
  INPCU(job, model, kernel);
}

}  // namespace zema
