// The constitutive block of a kernel: elastic tables of materials and composites, and the update of a point.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "composite/composite_plan.h"
#include "composite/layer_mixer.h"
#include "model/model.h"

namespace zema {

/// What the residual of an element knows about a point. Global axes; finite strain: Green-Lagrange measure.
template <int N>
struct PointUpdate {
  int e = 0;                            ///< element, from 0
  int point = 0;                        ///< point of the point store, from 0
  Strain<N> STRAT;                      ///< total strain
  Strain<N> STRAN;                      ///< its increment since the committed state
  Strain<N> VSTRAT;                     ///< rate of strain; 0 in a static run
  Matrix<3> F = Matrix<3>::identity();  ///< deformation gradient; not read at small strains
  double DETF = 1.0;                    ///< its determinant; 1 at small strains
  double dV = 0.0;                      ///< volume of the point, length^3
};

template <int N>
struct PointResult {
  Stress<N> STRSG;  ///< stress in global axes, second Piola-Kirchhoff in finite strain
  EnergySums sums;  ///< what the point adds to the sums of the pass
};

/// The constitutive block for N stress components (6 or 4). Everything is laid out when it is made; the update of a
/// point allocates nothing and may run for different elements at once.
template <int N>
class ConstitutiveBlock {
 public:
  /// Plans the composites that elements use, with the elastic tables of the reference temperatures. Throws InputFault
  /// for laws and layer kinds in them that are not in this build, and for elastic data that make no sense.
  explicit ConstitutiveBlock(const Model& model);

  /// `CALCIN`: rebuilds the elastic tables of all materials and composites in use for a temperature.
  void CALCIN(const Model& model, double temperature);
  /// `IMPORTINFON1`: takes over what the laws need to know of the increment, and scales the yield values to the
  /// temperature of the load step. Once per residual pass.
  void IMPORTINFON1(const Model& model);
  /// `ZERO`: the state of a new job, in both slots of every point: internal variables by material, elastic tangents.
  /// All else must be 0, as in a new point store: what is not written takes no memory yet.
  void ZERO(Model& model) const;

  /// `RESI2D`: stress of a point of an active element. Reads slot 1 and writes the whole of slot 2, of all components.
  /// A point whose total strain and increment are exactly 0 carries slot 1 over.
  [[nodiscard]] PointResult<N> RESI2D(Model& model, const PointUpdate<N>& update) const;
  /// A point of an inactive construction step: slot 1 is carried over with stress and strain 0 and the strain offsets
  /// STRFAS, VSTRFAS of the step (global axes).
  void carryInactive(Model& model, int e, int point, const Strain<N>& STRFAS, const Strain<N>& VSTRFAS) const;

  /// `MODULI`: elastic prediction of the stress of a point (global axes, reference measure).
  [[nodiscard]] Stress<N> MODULI(const Model& model, int e, const Strain<N>& STRAT, const Matrix<3>& F) const;
  /// `CGLOBSO`: tangent of a point in global axes: the elastic matrix of its composite, or the tangent of the last
  /// iteration when the analysis has moved on, the matrix is to be formed anew (KRESL below 2), and the point was not
  /// elastic or strains are finite.
  [[nodiscard]] Matrix<N> CGLOBSO(const Model& model, int e, int point) const;
  /// `CALCSEC`: secant matrix of a point in element axes, from the damage of its components in slot 2.
  [[nodiscard]] Matrix<N> CALCSEC(const Model& model, int e, int point) const;
  /// A deformation gradient (global axes) in the axes of a record of element e: those of the material for the component
  /// LOCMA of a simple material, global ones for component 0.
  [[nodiscard]] Matrix<3> gradientInRecordAxes(int e, int component, const Matrix<3>& F) const;
  /// Elastic matrix of an element's composite in global axes.
  [[nodiscard]] const Matrix<N>& elasticMatrix(int e) const { return inGlobal(e).elastic; }
  /// Viscous matrix of an element's composite in global axes; nullptr when no material of it is viscous.
  [[nodiscard]] const Matrix<N>* viscousMatrix(int e) const {
    const GlobalMatrices& matrices = inGlobal(e);
    return matrices.isViscous ? &matrices.viscous : nullptr;
  }

  /// Whether the composite of element e is one component that shares its axes: the component's records are those of the
  /// composite as well.
  [[nodiscard]] bool isPlain(int e) const { return inGlobal(e).isPlain; }

  /// Density of composite c (number from 1), mass / length^3.
  [[nodiscard]] double DENSV(int c) const { return DENSV_[static_cast<std::size_t>(c - 1)]; }
  /// Material m (number from 1) with the yield values of the temperature in force.
  [[nodiscard]] const Material& materialInForce(int m) const { return materials_[static_cast<std::size_t>(m - 1)]; }
  /// Rows of store 4, by number from 1; all 0 for what no element uses.
  [[nodiscard]] const ElasticRecord<N>& materialRecord(int m) const {
    return elastic_[static_cast<std::size_t>(m - 1)].record;
  }
  [[nodiscard]] const ElasticRecord<N>& compositeRecord(int c) const {
    return composite_[static_cast<std::size_t>(c - 1)];
  }

 private:
  /// Matrices of a composite for one set of element angles.
  struct GlobalMatrices {
    int composite = 0;  ///< from 0
    Rotation<N> axes;   ///< element axes
    Matrix<N> elastic;
    Matrix<N> viscous;
    bool isViscous = false;
    bool isPlain = false;  ///< one component in the axes of the element, with nothing to mix or turn
  };

  void placeElements(const Model& model);
  void planWhatIsUsed(const Model& model);
  void formTables(const Model& model, std::optional<double> temperature);
  /// Whether a composite is one whole component in layer and material axes of no angle.
  [[nodiscard]] bool isOnePart(const CompositePlan<N>& plan) const;
  [[nodiscard]] const GlobalMatrices& inGlobal(int e) const {
    return global_[static_cast<std::size_t>(ofElement_[static_cast<std::size_t>(e)])];
  }
  [[nodiscard]] const CompositePlan<N>& planFor(int e) const {
    return plans_[static_cast<std::size_t>(inGlobal(e).composite)];
  }
  /// Adds the layers' stresses and states, in element axes.
  [[nodiscard]] MixedPoint<N> mixLayers(Model& model, const PointUpdate<N>& update,
                                        const PointGeometry& geometry) const;
  /// Copies slot 1 of all components of a point to slot 2, with the elastic tangent of the temperature in force.
  void carryOver(PointStore& points, int e, int point) const;
  /// Puts the elastic tangents into the records of a point that are flagged elastic.
  void refreshElasticTangents(PointStore& points, StateSlot slot, int e, int point) const;

  std::vector<CompositePlan<N>> plans_;      // by composite from 0
  std::vector<ElasticMaterial<N>> elastic_;  // by material from 0
  std::vector<Material> materials_;          // by material from 0, yield values scaled
  std::vector<ElasticRecord<N>> composite_;  // by composite from 0
  std::vector<double> DENSV_;                // by composite from 0
  std::vector<GlobalMatrices> global_;       // one for each pair of composite and element angles
  std::vector<int> ofElement_;               // place in global_ by element
  std::vector<std::size_t> usedComposites_;  // from 0, ascending: those of an element
  std::vector<std::size_t> usedMaterials_;   // from 0, ascending: those of a composite in use
  PassContext pass_;
};

}  // namespace zema
