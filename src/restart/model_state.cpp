// Each structure is taken apart into all its members: a new member does not compile until it is listed here.
#include "restart/model_state.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "foundation/errors.h"
#include "model/model.h"
#include "restart/archive.h"
#include "solver/equation_system.h"

namespace zema {
namespace {

void transfer(Archive& archive, LoopState& loop) {
  archive.section("loops");
  int NLOAD = 0;  // the deck says it anew
  auto& [ILOAD, INCRE, IITER, fromDeck, NINCS, NPASS, KCONV, RATIO, REMAX, bestRatio, bestIteration, lastRatio, KRESL,
         TTIME] = loop;
  archive(ILOAD, INCRE, IITER, NLOAD, NINCS, NPASS, KCONV, RATIO, REMAX, bestRatio, bestIteration, lastRatio, KRESL,
          TTIME);
}

void transfer(Archive& archive, IncrementCard& card) {
  archive.section("increment card");
  auto& [NREPE, DFACT, DTIME, TOLER, MITER, NOUTP, KALGO, KARCL, ARCLN, NODAR, IDOFA, KFRES, IPOST3D, IIFLAG, pairs] =
      card;
  archive(NREPE, DFACT, DTIME, TOLER, MITER, NOUTP, KALGO, KARCL, ARCLN, NODAR, IDOFA, KFRES, IPOST3D, IIFLAG, pairs);
}

void transfer(Archive& archive, LoadStep& step) {
  archive.section("load step");
  auto& [title, ACTIV, KLOAD, NINCR, IPLOD, IGRAV, IEDGE, IDINA, KNEWM, TEMPL, KFATI, TCYCL, NCYCL, FATIM, TEXPO] =
      step;
  archive(title, ACTIV, KLOAD, NINCR, IPLOD, IGRAV, IEDGE, IDINA, KNEWM, TEMPL, KFATI, TCYCL, NCYCL, FATIM, TEXPO);
}

void transfer(Archive& archive, DynamicData& data) {
  archive.section("dynamic data");
  auto& [KACEL, NFLEC, NSTEP, KLUMP, ALFAD, BETAD, BETAN, GAMMN, KSAVE, FLEC, keptDamping, keptViscosity] = data;
  archive(KACEL, NFLEC, NSTEP, KLUMP, ALFAD, BETAD, BETAN, GAMMN, KSAVE, FLEC, keptDamping, keptViscosity);
}

void transfer(Archive& archive, Fixities& fixities) {
  archive.section("fixities");
  auto& [NVFIX, NFREE, NOFIXM, IFFIXM, IFFIXMbefore, FIXEMM, IFLIB, TREACM, TREACT, NVFIT, NOFIXT, FIXEMT, IFFIXT,
         IFFIXTbefore, NSIDE] = fixities;
  archive(NVFIX, NFREE, NOFIXM, IFFIXM, IFFIXMbefore, FIXEMM, IFLIB, TREACM, TREACT, NVFIT, NOFIXT, FIXEMT, IFFIXT,
          IFFIXTbefore, NSIDE);
}

void transfer(Archive& archive, FieldState& state) {
  archive.section("field");
  auto& [FACTD, FACTO, NOFIX, FIXEM, IFFIX, IFFIXbefore, TDISP] = state;
  archive(FACTD, FACTO, NOFIX, FIXEM, IFFIX, IFFIXbefore, TDISP);
}

void transfer(Archive& archive, Monitors& monitors) {
  archive.section("monitors");
  auto& [SDAMD, SDAMV, SVOLD, DISIG, DANEN, DANFU, POTDEF, POTCIN, POTDIS, POTINT, ENEINT, ENEDIS] = monitors;
  archive(SDAMD, SDAMV, SVOLD, DISIG, DANEN, DANFU, POTDEF, POTCIN, POTDIS, POTINT, ENEINT, ENEDIS);
}

void transfer(Archive& archive, FrequencyState& frequencies) {
  auto& [batch, ILOAD, INCRE] = frequencies;
  archive(batch, ILOAD, INCRE);
}

void transferVolumes(Archive& archive, Mesh& mesh) {
  archive.section("volumes");
  for (ElementData& element : mesh.elements) archive(element.TVOLU);
}

void transfer(Archive& archive, ElementVectors& vectors) {
  archive.section("element vectors");
  for (std::span<double> values : vectors.all()) archive(values);
}

/// Rows of one kind of record. Of each row only the values are saved that differ from the row of the same component at
/// the point before, and a mark for each that does: tangents of elastic points and zeros take no room.
class RowTransfer {
 public:
  RowTransfer(Archive& archive, std::span<double> values, std::size_t length)
      : archive_(archive), values_(values), length_(length), marks_((length + markBits - 1) / markBits) {
    changed_.reserve(length);
  }

  /// Rows come in order; `step` rows before stands the row of the same component.
  void row(std::size_t number, std::size_t step) {
    const std::span<double> now = values_.subspan(number * length_, length_);
    const double* before = number < step ? nullptr : &values_[(number - step) * length_];
    if (!archive_.restores()) mark(now, before);
    for (std::uint64_t& marks : marks_) archive_(marks);
    const std::size_t count = countMarks();
    changed_.resize(count);
    std::span<double> changed(changed_);
    archive_(changed);
    if (archive_.restores()) fill(now, before);
  }

 private:
  static constexpr std::size_t markBits = 64;

  static bool same(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }
  [[nodiscard]] bool marked(std::size_t i) const { return (marks_[i / markBits] >> (i % markBits) & 1) != 0; }
  [[nodiscard]] std::size_t countMarks() const {
    std::size_t count = 0;
    for (const std::uint64_t marks : marks_) count += static_cast<std::size_t>(std::popcount(marks));
    return count;
  }

  void mark(std::span<const double> now, const double* before) {
    std::ranges::fill(marks_, 0);
    changed_.clear();
    for (std::size_t i = 0; i < length_; ++i) {
      if (same(now[i], before == nullptr ? 0.0 : before[i])) continue;
      marks_[i / markBits] |= std::uint64_t{1} << (i % markBits);
      changed_.push_back(now[i]);
    }
  }

  void fill(std::span<double> now, const double* before) const {
    std::size_t next = 0;
    for (std::size_t i = 0; i < length_; ++i)
      now[i] = marked(i) ? changed_[next++] : before == nullptr ? 0.0 : before[i];
  }

  Archive& archive_;
  std::span<double> values_;
  std::size_t length_;
  std::vector<std::uint64_t> marks_;
  std::vector<double> changed_;
};

void transferRows(Archive& archive, PointStore& points, StateSlot slot) {
  const auto [mechanical, internal] = points.rows(slot);
  RowTransfer mechanicalRows(archive, mechanical, points.mechanicalLength());
  RowTransfer internalRows(archive, internal, points.internalLength());
  std::size_t number = 0;
  for (int e = 0; e < points.elements(); ++e) {
    const auto records = static_cast<std::size_t>(points.recordsOf(e));
    const std::size_t last = number + records * static_cast<std::size_t>(points.pointsOf(e));
    for (; number < last; ++number) {
      mechanicalRows.row(number, records);
      internalRows.row(number, records);
    }
  }
}

/// After a commit the two states are alike, and one of them is enough.
void transfer(Archive& archive, PointStore& points) {
  archive.section("points");
  bool alike = archive.restores() || points.committedIsTrial();
  archive(alike);
  transferRows(archive, points, StateSlot::trial);
  if (!alike) {
    transferRows(archive, points, StateSlot::committed);
  } else if (archive.restores()) {
    points.commit();
  }
}

}  // namespace

void transfer(Archive& archive, Model& model) {
  auto& [text, control, NSTR1, loop, increment, loadStep, dynamics, fixities, working, mechanical, mesh, positions,
         vectors, composites, materials, points, displacements, curves, monitors, frequencies] = model;
  // text, control, NSTR1, positions, composites, materials and curves come from the deck, and so does the mesh but for
  // the volumes
  transfer(archive, loop);
  transfer(archive, increment);
  transfer(archive, loadStep);
  transfer(archive, dynamics);
  transfer(archive, fixities);
  transfer(archive, working);
  transfer(archive, mechanical);
  transferVolumes(archive, mesh);
  transfer(archive, vectors);
  transfer(archive, points);
  archive(displacements.DDISP);
  transfer(archive, monitors);
  transfer(archive, frequencies);
}

void transfer(Archive& archive, EquationSystem& equations) {
  archive.section("equations");
  auto& [NTOTV, NEQNS, IPERM, FIXED, FIXWO, ASDIS, DISPM, ELOADG, TOLER, NBAND, NBAN0, NBAN1, MBAND] = equations;
  archive(NTOTV, NEQNS, IPERM, FIXED, FIXWO, ASDIS, DISPM, ELOADG, TOLER, NBAND, NBAN0, NBAN1, MBAND);
}

}  // namespace zema
