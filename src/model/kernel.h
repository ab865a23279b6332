// What a kernel supplies: its data as one profile row, its behaviour as one virtual call per stage or element.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "model/model.h"

namespace zema {

class FrequencySource;
struct ResultProfile;

/// What differs between kernels as data. One row a kernel, in the kernel's own folder.
struct KernelProfile {
  std::string_view name;              ///< suffix of the kernel in texts: "V3D"
  int dimensions;                     ///< coordinates of a node
  int MDOFN;                          ///< greatest number of degrees of freedom of a node
  int NSTR1;                          ///< stress components
  int elementAngles;                  ///< Euler angles on an element card
  int internalFlags;                  ///< NINTV: flags of internal variables on the increment card
  std::span<const int> elementTypes;  ///< valid NTYPE
  int mostNodes;                      ///< greatest NNODE that the element check admits
  int mostGauss;                      ///< greatest NGAUS that the element check admits
  int fixityCheckBelow;               ///< NTYPE below which a load step must have fixities
  int thermalFrom;                    ///< NTYPE from which an element belongs to the thermal field
  std::string_view fixityEcho;        ///< layout of the echo of a fixity card
  std::string_view jacobianMessage;   ///< first line of the stop at a Jacobian that is not positive
};

/// Sizes of an element that follow from its type, node and point counts.
struct ElementSizes {
  int NSTRE = 0;  ///< stress components of the element
  int NDOFN = 0;  ///< degrees of freedom of a node
  int NGAU1 = 0;  ///< integration points of the first loop
  int NGAU2 = 0;  ///< of the second loop
  int NGAU3 = 0;  ///< of the third loop

  [[nodiscard]] int points() const { return NGAU1 * NGAU2 * NGAU3; }
};

/// The indices of an integration point in the three loops of an element, from 1.
struct PointIndex {
  int i = 1;
  int j = 1;
  int k = 1;
};

/// A kernel: everything about one family of elements. Element numbers count from 0; RIGI, the matrices in time
/// and RESIDU are called for different elements from several threads at once.
class Kernel {
 public:
  virtual ~Kernel() = default;

  [[nodiscard]] virtual const KernelProfile& profile() const = 0;
  /// Words, headings and layouts of the results (solid3d::resultProfile() in the kernel of solids).
  [[nodiscard]] virtual const ResultProfile& results() const = 0;
  /// Sizes of an element by its type; for a type without sizes all are 0.
  [[nodiscard]] virtual ElementSizes TYPE(int NTYPE, int NNODE, int NGAUS) const = 0;
  /// Number of a point of an element in the point store: place (i, j, k) of its NGAUS cube (square in the plane).
  [[nodiscard]] virtual int pointNumber(const ElementData& element, PointIndex point) const = 0;

  /// Adds a body force (force / volume, global directions) to RLOAD, by the element's own rule.
  virtual void addBodyForce(const Model& model, int e, std::span<const double> force,
                            std::span<double> RLOAD) const = 0;
  /// `NODEG1`: number of nodes of a loaded face of the element.
  [[nodiscard]] virtual int faceNodes(const ElementData& element) const = 0;
  /// Adds a face load (force / area, NDOFN values a face node) on the face that the given places (from 0) of the
  /// element's node list span.
  virtual void addFaceLoad(const Model& model, int e, std::span<const int> places, std::span<const double> values,
                           std::span<double> RLOAD) const = 0;

  /// Prepares the kernel for the model that has been read and seeds the state of every point (`ZERO`): called once,
  /// before the first load step. Throws InputFault for what the kernel cannot do.
  virtual void prepare(Model& model) = 0;
  /// `CALCIN`: rebuilds the elastic tensors of all materials and composites for a temperature.
  virtual void CALCIN(const Model& model, double temperature) = 0;
  /// `IMPORTINFON1`: takes over what the laws need to know of the increment; called once per residual pass.
  virtual void IMPORTINFON1(const Model& model) = 0;

  /// `RIGI`: tangent stiffness of an element, NEVAB x NEVAB by rows with NEVAB = NDOFN NNODE. An inactive element has
  /// its full stiffness here.
  virtual void RIGI(const Model& model, int e, std::span<double> ESTIF) const = 0;
  /// `MASMAT`: adds factor times the mass of an element to a matrix like that of RIGI: consistent with KLUMP 1,
  /// otherwise lumped by row sums.
  virtual void addMass(const Model& model, int e, double factor, std::span<double> matrix) const = 0;
  /// `DMATRI`: adds factor times the viscous matrix of an element to a matrix like that of RIGI.
  virtual void addViscosity(const Model& model, int e, double factor, std::span<double> matrix) const = 0;
  /// Volume of an element, length^3.
  [[nodiscard]] virtual double volume(const Model& model, int e) const = 0;
  /// `RESIDU`: updates the trial state of all points of an element and leaves the three columns of ELOAD.
  virtual EnergySums RESIDU(Model& model, int e) const = 0;

  /// Source of the frequency records; nullptr for a kernel that keeps none.
  [[nodiscard]] virtual const FrequencySource* frequencySource() const { return nullptr; }

  /// `CAUCHY`, `ALMANS`: move the stored stress or strain of a point into the current configuration. It stays in the
  /// axes of its record: component 0 in global axes, LOCMA of a simple material in material axes.
  virtual void CAUCHY(const Model& model, int e, PointIndex point, int component, std::span<double> stress) const = 0;
  virtual void ALMANS(const Model& model, int e, PointIndex point, int component, std::span<double> strain) const = 0;
};

}  // namespace zema
