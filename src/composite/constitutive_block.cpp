// The constitutive block: tables made once, tables of a temperature, and what a point writes into the point store.
#include "composite/constitutive_block.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <set>
#include <utility>

#include "composite/composite_elasticity.h"
#include "composite/secant_stiffness.h"
#include "composite/serial_parallel_layer.h"
#include "composite/short_fibre_layer.h"
#include "constitutive/elastic_moduli.h"
#include "constitutive/elastic_tangent.h"
#include "constitutive/initial_state.h"
#include "constitutive/temperature_curve.h"
#include "foundation/errors.h"

namespace zema {
namespace {

/// `CONSTITUTIVEMAIN`: the manager of a layer's kind.
template <int N>
MixedPoint<N> CONSTITUTIVEMAIN(const LayerPlan<N>& layer, const LayerInput<N>& input) {
  switch (layer.kind) {
    case LayerKind::none:  // no components: such a layer adds nothing
    case LayerKind::parallel:
      break;
    case LayerKind::serialParallel:
      return SP_MNGER(layer, input);
    case LayerKind::shortFibre:
      return NT_MNGER(layer, input);
  }
  return P_MNGER(layer, input);
}

template <int N>
ComponentStrain<N> turned(ComponentStrain<N> strain, const Rotation<N>& axes, bool withGradient) {
  if (axes.none()) return strain;
  ROTV(strain.STRAT, axes, Direction::toLocal);
  ROTV(strain.STRAN, axes, Direction::toLocal);
  ROTV(strain.VSTRAT, axes, Direction::toLocal);
  if (withGradient) strain.F = gradientToLocal(strain.F, axes);
  return strain;
}

template <int N>
void writeTangent(std::span<double> internalRecord, const Matrix<N>& tangent) {
  std::copy(tangent.values.begin(), tangent.values.end(), internalRecord.data() + internal::count);
}

/// Writes the records of the composite as a whole: vectors in global axes, tangent in element axes.
template <int N>
void writeComposite(PointStore& points, const PointUpdate<N>& update, const MixedPoint<N>& mixed,
                    const Matrix<N>& tangent) {
  constexpr MechanicalPlaces places{N};
  const PointStore& stored = points;
  const std::span<const double> committed = stored.mechanical(StateSlot::committed, update.e, update.point, 0);
  const std::span<double> trial = points.mechanical(StateSlot::trial, update.e, update.point, 0);
  mixed.stress.copyTo(trial, places.STRSG());
  update.STRAT.copyTo(trial, places.STRAT());
  mixed.STRAP.copyTo(trial, places.STRAP());
  trial[places.lastYield()] = mixed.lastYield;
  trial[places.lawScalar()] = mixed.lawScalar;
  std::copy_n(committed.data() + places.lawScalar() + 1, 2, trial.data() + places.lawScalar() + 1);
  update.VSTRAT.copyTo(trial, places.VSTRAT());
  std::copy_n(committed.data() + places.STRSG(), N, trial.data() + places.STRSGT());
  std::copy_n(committed.data() + places.STRAT(), N, trial.data() + places.STRATT());
  std::copy_n(committed.data() + places.VSTRAT(), N, trial.data() + places.VSTRATT());
  std::copy(mixed.fatigue.begin(), mixed.fatigue.end(), trial.data() + places.fatigue());
  std::copy_n(committed.data() + places.STRFAS(), 2 * N, trial.data() + places.STRFAS());

  const std::span<double> internalRecord = points.internal(StateSlot::trial, update.e, update.point, 0);
  std::copy(mixed.INTVAR.begin(), mixed.INTVAR.end(), internalRecord.data());
  internalRecord[internal::elasticFlag] = mixed.elastic ? 1.0 : 0.0;
  writeTangent(internalRecord, tangent);
}

}  // namespace

template <int N>
ConstitutiveBlock<N>::ConstitutiveBlock(const Model& model)
    : plans_(model.composites.all.size()),
      elastic_(model.materials.all.size()),
      materials_(model.materials.all),
      composite_(plans_.size()),
      DENSV_(plans_.size()) {
  placeElements(model);
  planWhatIsUsed(model);
  formTables(model, std::nullopt);
}

template <int N>
void ConstitutiveBlock<N>::placeElements(const Model& model) {
  std::map<std::pair<int, std::array<double, 3>>, int> places;
  for (const ElementData& element : model.mesh.elements) {
    const int c = element.MATNO[0] - 1;
    if (c < 0 || c >= static_cast<int>(plans_.size()))
      throw InputFault("an element asks for composite " + std::to_string(c + 1) + ", which has no card");
    const auto [place, isNew] = places.try_emplace({c, element.EAEULER}, static_cast<int>(global_.size()));
    ofElement_.push_back(place->second);
    if (isNew) global_.push_back({c, Rotation<N>(element.EAEULER), {}, {}});
  }
}

template <int N>
void ConstitutiveBlock<N>::planWhatIsUsed(const Model& model) {
  std::set<std::size_t> composites, materials;
  for (const GlobalMatrices& matrices : global_) composites.insert(static_cast<std::size_t>(matrices.composite));
  for (const std::size_t c : composites) {
    plans_[c] = planOf<N>(model, static_cast<int>(c) + 1);
    for (const LayerPlan<N>& layer : plans_[c].layers)
      for (const ComponentPlan<N>& component : layer.components)
        materials.insert(static_cast<std::size_t>(component.material - 1));
  }
  usedComposites_.assign(composites.begin(), composites.end());
  usedMaterials_.assign(materials.begin(), materials.end());
}

template <int N>
bool ConstitutiveBlock<N>::isOnePart(const CompositePlan<N>& plan) const {
  if (plan.layers.size() != 1) return false;
  const LayerPlan<N>& layer = plan.layers[0];
  if (layer.kind != LayerKind::parallel || layer.components.size() != 1) return false;
  const ComponentPlan<N>& component = layer.components[0];
  return layer.VOLFLAY == 1.0 && component.VOLFMAT == 1.0 && layer.LAYAEULER.none() &&
         elastic_[static_cast<std::size_t>(component.material - 1)].axes.none();
}

template <int N>
void ConstitutiveBlock<N>::formTables(const Model& model, std::optional<double> temperature) {
  for (const std::size_t m : usedMaterials_)
    elastic_[m] = MODPS<N>(model.materials.all[m], static_cast<int>(m) + 1, temperature);
  for (const std::size_t c : usedComposites_) {
    const ElasticMean<N> mean = elasticMeanOf<N>(plans_[c], elastic_, model.materials.all);
    composite_[c].VDMANX = mean.VDMANX;
    composite_[c].VCVISC = mean.VCVISC;
    DENSV_[c] = mean.DENSV;
    if (!INVMTX(mean.VDMANX, composite_[c].VDMANXI))
      throw InputFault("composite " + std::to_string(c + 1) + ": its elastic matrix has no inverse; check its shares");
  }
  for (GlobalMatrices& matrices : global_) {
    const auto composite = static_cast<std::size_t>(matrices.composite);
    const ElasticRecord<N>& record = composite_[composite];
    matrices.isPlain = matrices.axes.none() && isOnePart(plans_[composite]);
    matrices.elastic = record.VDMANX;
    ROTM(matrices.elastic, matrices.axes, Direction::toGlobal);
    matrices.viscous = record.VCVISC;
    ROTM(matrices.viscous, matrices.axes, Direction::toGlobal);
    matrices.isViscous = std::ranges::any_of(record.VCVISC.values, [](double value) { return value != 0.0; });
  }
}

template <int N>
void ConstitutiveBlock<N>::CALCIN(const Model& model, double temperature) {
  formTables(model, temperature);
}

template <int N>
void ConstitutiveBlock<N>::IMPORTINFON1(const Model& model) {
  const ControlRecord& control = model.control;
  pass_ = {.LARGE = control.LARGE,
           .KTANP = control.KTANP,
           .KPUSH = control.KPUSH,
           .KALGO = model.increment.KALGO,
           .TOLER = model.increment.TOLER,
           .DTIME = model.increment.DTIME,
           .dynamic = model.loadStep.dynamic(),
           .ILOAD = model.loop.ILOAD,
           .INCRE = model.loop.INCRE,
           .IITER = model.loop.IITER,
           .TCYCL = model.loadStep.TCYCL,
           .NCYCL = model.loadStep.NCYCL,
           .KFATI = model.loadStep.KFATI,
           .FATIM = model.loadStep.FATIM};
  for (std::size_t m = 0; m < materials_.size(); ++m) {
    materials_[m].PROPS = model.materials.all[m].PROPS;  // always from the values as read: scaling must not compound
    scaleYieldValues(materials_[m], model.loadStep.TEMPL);
  }
}

template <int N>
void ConstitutiveBlock<N>::ZERO(Model& model) const {
  PointStore& points = model.points;
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    for (int point = 0; point < points.pointsOf(e); ++point) {
      for (const StateSlot slot : {StateSlot::committed, StateSlot::trial}) {
        points.internal(slot, e, point, 0)[internal::elasticFlag] = 1.0;
        for (const LayerPlan<N>& layer : planFor(e).layers) {
          for (const ComponentPlan<N>& component : layer.components) {
            const auto INTVAR = initialInternalVariables(model.materials(component.material));
            std::ranges::copy(INTVAR, points.internal(slot, e, point, component.record).data());
          }
        }
        refreshElasticTangents(points, slot, e, point);
      }
    }
  }
}

template <int N>
void ConstitutiveBlock<N>::refreshElasticTangents(PointStore& points, StateSlot slot, int e, int point) const {
  const auto refresh = [&](int component, const Matrix<N>& elastic) {
    const std::span<double> record = points.internal(slot, e, point, component);
    if (record[internal::elasticFlag] != 0.0) writeTangent(record, elastic);
  };
  refresh(0, composite_[static_cast<std::size_t>(inGlobal(e).composite)].VDMANX);
  for (const LayerPlan<N>& layer : planFor(e).layers) {
    for (const ComponentPlan<N>& component : layer.components)
      refresh(component.record, materialRecord(component.material).VDMANX);
  }
}

template <int N>
void ConstitutiveBlock<N>::carryOver(PointStore& points, int e, int point) const {
  const PointStore& stored = points;
  for (int component = 0; component < points.recordsOf(e); ++component) {
    std::ranges::copy(stored.mechanical(StateSlot::committed, e, point, component),
                      points.mechanical(StateSlot::trial, e, point, component).data());
    std::ranges::copy(stored.internal(StateSlot::committed, e, point, component),
                      points.internal(StateSlot::trial, e, point, component).data());
  }
  refreshElasticTangents(points, StateSlot::trial, e, point);
}

template <int N>
void ConstitutiveBlock<N>::carryInactive(Model& model, int e, int point, const Strain<N>& STRFAS,
                                         const Strain<N>& VSTRFAS) const {
  constexpr MechanicalPlaces places{N};
  carryOver(model.points, e, point);
  for (int component = 0; component < model.points.recordsOf(e); ++component) {
    const std::span<double> trial = model.points.mechanical(StateSlot::trial, e, point, component);
    Stress<N>{}.copyTo(trial, places.STRSG());
    Strain<N>{}.copyTo(trial, places.STRAT());
    Strain<N>{}.copyTo(trial, places.VSTRAT());
  }
  const std::span<double> composite = model.points.mechanical(StateSlot::trial, e, point, 0);
  STRFAS.copyTo(composite, places.STRFAS());
  VSTRFAS.copyTo(composite, places.VSTRFAS());
}

template <int N>
PointResult<N> ConstitutiveBlock<N>::RESI2D(Model& model, const PointUpdate<N>& update) const {
  PointStore& points = model.points;
  if (update.STRAT.isZero() && update.STRAN.isZero()) {
    carryOver(points, update.e, update.point);
    const std::span<const double> record = points.mechanical(StateSlot::trial, update.e, update.point, 0);
    return {Stress<N>::from(record, points.places().STRSG()), {}};
  }
  const ElementData& element = model.mesh.element(update.e);
  const PointGeometry geometry{update.DETF, update.dV, element.TVOLU, element.FRACL, element.NTYPE};
  MixedPoint<N> mixed = mixLayers(model, update, geometry);
  const GlobalMatrices& matrices = inGlobal(update.e);
  const Matrix<N>& tangent =
      mixed.elasticMatrix ? composite_[static_cast<std::size_t>(matrices.composite)].VDMANX : mixed.tangent;
  if (matrices.isPlain && points.recordsOf(update.e) == 1) return {mixed.stress, mixed.sums};  // written as component
  ROTV(mixed.stress, matrices.axes, Direction::toGlobal);
  if (!mixed.STRAP.isZero()) ROTV(mixed.STRAP, matrices.axes, Direction::toGlobal);
  writeComposite(points, update, mixed, tangent);
  return {mixed.stress, mixed.sums};
}

template <int N>
MixedPoint<N> ConstitutiveBlock<N>::mixLayers(Model& model, const PointUpdate<N>& update,
                                              const PointGeometry& geometry) const {
  const bool withGradient = pass_.pushes(geometry.NTYPE);
  ComponentStrain<N> global{update.STRAT, update.STRAN, update.VSTRAT};
  if (withGradient) global.F = update.F;
  const ComponentStrain<N> strain = turned(global, inGlobal(update.e).axes, withGradient);
  MixedPoint<N> mixed;
  int number = 0;
  for (const LayerPlan<N>& layer : planFor(update.e).layers) {
    const LayerInput<N> input{pass_,      geometry,     model.points,
                              update.e,   update.point, number++,
                              materials_, elastic_,     turned(strain, layer.LAYAEULER, withGradient)};
    MixedPoint<N> part = CONSTITUTIVEMAIN(layer, input);
    if (!part.elasticMatrix) ROTM(part.tangent, layer.LAYAEULER, Direction::toGlobal);
    mixed.addTangent(layer.VOLFLAY, part.elasticMatrix ? layer.elastic : part.tangent);
    mixed.addLayer(layer.VOLFLAY, part, layer.LAYAEULER);
  }
  return mixed;
}

template <int N>
Stress<N> ConstitutiveBlock<N>::MODULI(const Model& model, int e, const Strain<N>& STRAT, const Matrix<3>& F) const {
  const ControlRecord& control = model.control;
  const PassContext pass{.LARGE = control.LARGE, .KTANP = control.KTANP, .KPUSH = control.KPUSH};
  return zema::MODULI(elasticMatrix(e), STRAT, F, pass.pushes(model.mesh.element(e).NTYPE), control.KTANP);
}

template <int N>
Matrix<N> ConstitutiveBlock<N>::CALCSEC(const Model& model, int e, int point) const {
  return zema::CALCSEC<N>(planFor(e), elastic_, [&](int component) {
    return model.points.internal(StateSlot::trial, e, point, component)[internal::damage];
  });
}

template <int N>
Matrix<3> ConstitutiveBlock<N>::gradientInRecordAxes(int e, int component, const Matrix<3>& F) const {
  if (component == 0) return F;
  const Matrix<3> inElement = gradientToLocal(F, inGlobal(e).axes);
  for (const LayerPlan<N>& layer : planFor(e).layers) {
    for (const ComponentPlan<N>& part : layer.components) {
      if (part.record != component) continue;
      const Rotation<N>& material = elastic_[static_cast<std::size_t>(part.material - 1)].axes;
      return gradientToLocal(gradientToLocal(inElement, layer.LAYAEULER), material);
    }
  }
  assert(false && "the composite has no such component");
  return F;
}

template <int N>
Matrix<N> ConstitutiveBlock<N>::CGLOBSO(const Model& model, int e, int point) const {
  const LoopState& loop = model.loop;
  const bool movedOn = loop.ILOAD > 1 || loop.INCRE > 1 || loop.IITER > 1;
  const bool formedAnew = loop.KRESL < 2;
  const std::span<const double> record = model.points.internal(StateSlot::trial, e, point, 0);
  const bool inelastic = record[internal::elasticFlag] == 0.0 || model.control.LARGE != 0;
  constexpr int firstThermalType = 20;
  if (!movedOn || !formedAnew || !inelastic || model.mesh.element(e).NTYPE >= firstThermalType) return elasticMatrix(e);
  return OBCTAN(record, inGlobal(e).axes);
}

template class ConstitutiveBlock<4>;
template class ConstitutiveBlock<6>;

}  // namespace zema
