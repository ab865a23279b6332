// The update of one material at one point.
#include "constitutive/material_point.h"

#include "constitutive/law_driver.h"

namespace zema {
namespace {

/// `DECOMP`: strains in material axes and the committed state of a component.
template <int N>
CommittedPoint<N> DECOMP(const ComponentStrain<N>& strain, const Rotation<N>& axes, const ComponentRecords& records) {
  constexpr MechanicalPlaces places{N};
  CommittedPoint<N> start;
  PointStrains<N>& strains = start.strains;
  strains.total = strain.STRAT;
  strains.increment = strain.STRAN;
  strains.rate = strain.VSTRAT;
  ROTV(strains.total, axes, Direction::toLocal);
  ROTV(strains.increment, axes, Direction::toLocal);
  if (!strains.rate.isZero()) ROTV(strains.rate, axes, Direction::toLocal);
  strains.plastic = Strain<N>::from(records.committed, places.STRAP());
  strains.lastTotal = Strain<N>::from(records.committed, places.STRAT());
  strains.lastRate = Strain<N>::from(records.committed, places.VSTRAT());
  if (strain.initialStrain != nullptr) strains.initial = *strain.initialStrain;

  start.STRSG = Stress<N>::from(records.committed, places.STRSG());
  std::copy_n(records.committedInternal.data(), internal::count, start.state.INTVAR.data());
  start.state.lastYield = records.committed[places.lastYield()];
  start.state.lawScalar = records.committed[places.lawScalar()];
  std::copy_n(records.committed.data() + places.fatigue(), start.state.fatigue.size(), start.state.fatigue.data());
  return start;
}

/// `RECOMP`: writes the trial records of a component.
template <int N>
void RECOMP(const CommittedPoint<N>& start, const UpdatedPoint<N>& result, const Matrix<N>& tangent,
            const ComponentRecords& records) {
  constexpr MechanicalPlaces places{N};
  const std::span<double> trial = records.trial;
  result.STRSG.copyTo(trial, places.STRSG());
  start.strains.total.copyTo(trial, places.STRAT());
  result.STRAP.copyTo(trial, places.STRAP());
  trial[places.lastYield()] = result.state.lastYield;
  trial[places.lawScalar()] = result.state.lawScalar;
  const int free = places.lawScalar() + 1;
  std::copy_n(records.committed.data() + free, 2, trial.data() + free);
  start.strains.rate.copyTo(trial, places.VSTRAT());
  start.STRSG.copyTo(trial, places.STRSGT());
  start.strains.lastTotal.copyTo(trial, places.STRATT());
  start.strains.lastRate.copyTo(trial, places.VSTRATT());
  std::copy(result.state.fatigue.begin(), result.state.fatigue.end(), trial.data() + places.fatigue());
  std::copy_n(records.committed.data() + places.STRFAS(), 2 * N, trial.data() + places.STRFAS());
  std::copy(result.state.INTVAR.begin(), result.state.INTVAR.end(), records.trialInternal.data());
  std::copy(tangent.values.begin(), tangent.values.end(), records.trialInternal.data() + internal::count);
}

}  // namespace

template <int N>
ComponentResult<N> MODUCO(const PassContext& pass, const PointGeometry& geometry, const PointPlace& place,
                          const ComponentMaterial<N>& component, const ComponentStrain<N>& strain,
                          const ComponentRecords& records) {
  const ElasticMaterial<N>& elastic = component.elastic;
  const bool pushed = pass.pushes(geometry.NTYPE);
  const Matrix<3> F = pushed ? gradientToLocal(strain.F, elastic.axes) : Matrix<3>::identity();
  const MaterialPoint<N> at{pass, geometry, place, component.material, elastic, F};
  const CommittedPoint<N> start = DECOMP(strain, elastic.axes, records);
  UpdatedPoint<N> updated;
  MODULP(at, component.law, start, updated);
  if (component.material.NMATX == TangentChoice::perturbed && pass.wantsTangent() && !updated.elastic()) {
    updated.tangent = CTANG(at, component.law, start, updated.STRSG);
    updated.elasticMatrix = false;
  }
  RECOMP(start, updated, updated.elasticMatrix ? elastic.record.VDMANX : updated.tangent, records);
  ComponentResult<N> result{updated.STRSG, updated.elastic(), updated.elasticMatrix, updated.sums};
  ROTV(result.stress, elastic.axes, Direction::toGlobal);
  return result;
}

template <int N>
Matrix<N> OBCTAN(std::span<const double> internalRecord, const Rotation<N>& axes) {
  Matrix<N> tangent;
  std::copy_n(internalRecord.data() + internal::count, N * N, tangent.values.data());
  ROTM(tangent, axes, Direction::toGlobal);
  return tangent;
}

template ComponentResult<4> MODUCO(const PassContext&, const PointGeometry&, const PointPlace&,
                                   const ComponentMaterial<4>&, const ComponentStrain<4>&, const ComponentRecords&);
template ComponentResult<6> MODUCO(const PassContext&, const PointGeometry&, const PointPlace&,
                                   const ComponentMaterial<6>&, const ComponentStrain<6>&, const ComponentRecords&);
template Matrix<4> OBCTAN(std::span<const double>, const Rotation<4>&);
template Matrix<6> OBCTAN(std::span<const double>, const Rotation<6>&);

}  // namespace zema
