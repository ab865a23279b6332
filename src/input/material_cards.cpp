// Reads the simple materials record by record and derives what follows from their values.
#include "input/material_cards.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "input/deck_echo.h"
#include "input/element_sizes.h"
#include "input/material_echo.h"
#include "job/job.h"

namespace zema {

namespace {

/// Property slots that follow each other on a record.
struct SlotRange {
  int first;
  int last;
};

// The records of a material that hold nothing but property slots, in the order of the deck.
constexpr SlotRange base[] = {{1, 29}};
constexpr SlotRange damage[] = {{30, 31}, {51, 54}, {93, 100}};
constexpr SlotRange orthotropy[] = {{32, 34}, {36, 43}, {68, 69}};
constexpr SlotRange maps[] = {{44, 44}, {72, 73}, {74, 79}, {45, 48}, {70, 71}};
constexpr SlotRange viscosity[] = {{49, 50}};
constexpr SlotRange thermal[] = {{55, 64}};

void readSlots(CardReader& cards, std::string_view card, std::span<const SlotRange> ranges, Material& material) {
  cards.begin(card);
  for (const SlotRange& range : ranges) {
    for (int place = range.first; place <= range.last; ++place) {
      material(place) = cards.real("slot " + std::to_string(place));
    }
  }
}

/// Laws that flow: they need a criterion, a potential, a flow type, a hardening variable and a tangent choice.
bool isPlastic(Law law) {
  switch (law) {
    case Law::eulerCorrector:
    case Law::subincrementing:
    case Law::kinematicHardening:
    case Law::backwardEuler:
    case Law::backwardEulerCorrector:
    case Law::backwardEulerNumeric:
    case Law::damagePlastic:
    case Law::generalDamagePlastic:
      return true;
    default:
      return false;
  }
}

/// Laws that compare the stress with nothing, so that they need no criterion either.
bool isUnlimited(Law law) {
  return law == Law::elastic || law == Law::viscoelastic || law == Law::viscoelasticDynamic;
}

/// Reads the six codes. A code that the law does not look at may be 0.
void readSelection(CardReader& cards, Material& material) {
  constexpr int criteria = 8;
  cards.begin("material selection");
  const int NCRIT = cards.integer("NCRIT", 0, criteria);
  const int NCRIP = cards.integer("NCRIP", 0, criteria);
  material.NTINT = static_cast<Law>(cards.integer("NTINT", 0, 19));
  const int least = isPlastic(material.NTINT) ? 1 : 0;
  material.NFLUG = static_cast<Flow>(cards.integer("NFLUG", least, 2));
  material.NHARD = static_cast<HardeningVariable>(cards.integer("NHARD", least, 4));
  material.NMATX = static_cast<TangentChoice>(cards.integer("NMATX", least, 3));
  if (NCRIT == 0 && !isUnlimited(material.NTINT)) {
    cards.fault("NCRIT", NCRIT, "a yield function from 1 to 8 for this NTINT");
  }
  if (NCRIP == 0 && isPlastic(material.NTINT)) {
    cards.fault("NCRIP", NCRIP, "a potential from 1 to 8 for this NTINT");
  }
  material.NCRIT = static_cast<Criterion>(NCRIT);
  material.NCRIP = static_cast<Criterion>(NCRIP);
}

/// The integer part of a slot that counts records.
int countOf(const CardReader& cards, std::string_view field, double value) {
  if (value < 0.0 || value > std::numeric_limits<int>::max()) {
    cards.fault(field, value, "a count of points");
  }
  return static_cast<int>(value);
}

void readPoint(CardReader& cards, std::string_view card, TemperatureCurve& curve) {
  cards.begin(card);
  curve.X.push_back(cards.real("abscissa"));
  curve.Y.push_back(cards.real("value"));
}

/// A count on a card of its own, of which the integer part holds, then as many cards of points, temperatures ascending.
TemperatureCurve readTemperatureCurve(CardReader& cards, std::string_view card, int place, Material& material) {
  const std::string field = "slot " + std::to_string(place);
  cards.begin(card);
  const int count = countOf(cards, field, cards.real(field));
  material(place) = count;
  TemperatureCurve curve;
  for (int i = 0; i < count; ++i) {
    readPoint(cards, card, curve);
    const double T = curve.X.back();
    if (i > 0 && T <= curve.X[curve.X.size() - 2]) {
      cards.fault("abscissa", T, "a temperature above that of the card before");
    }
  }
  return curve;
}

void readStressStrainCurve(CardReader& cards, Material& material) {
  constexpr double pointTable = 5.0;
  if (material.NHARD == HardeningVariable::strain && material(slot::tensionCurve) == pointTable) {
    const int count = countOf(cards, "slot 9", material(slot::tensionPeakDissipation));
    for (int i = 0; i < count; ++i) {
      readPoint(cards, "stress-strain curve", material.stressStrain);
      const double strain = material.stressStrain.X.back();
      if (i > 0 && strain <= material.stressStrain.X[material.stressStrain.X.size() - 2])
        cards.fault("abscissa", strain, "a strain above that of the card before");
    }
  }
}

Material readMaterial(CardReader& cards, int NMATS, int& number) {
  Material material;
  material.given = true;
  cards.begin("material title");
  material.title = cards.word("title");
  cards.begin("material number");
  number = cards.integer("material number", 1, NMATS);
  readSelection(cards, material);
  readSlots(cards, "material slots 1 to 29", base, material);
  readSlots(cards, "damage slots", damage, material);
  readSlots(cards, "orthotropy slots", orthotropy, material);
  readSlots(cards, "angle and map slots", maps, material);
  readSlots(cards, "viscosity slots", viscosity, material);
  readSlots(cards, "thermal slots", thermal, material);
  material.young = readTemperatureCurve(cards, "Young-temperature curve", slot::youngCurvePoints, material);
  material.poisson = readTemperatureCurve(cards, "Poisson-temperature curve", slot::poissonCurvePoints, material);
  material.yield = readTemperatureCurve(cards, "yield-temperature curve", slot::yieldCurvePoints, material);
  readStressStrainCurve(cards, material);
  return material;
}

/// Ratio of the yield stresses in compression and tension of a cone with the given angle (radians), by the compressive
/// meridian: |(sin + 3) / (3 sin - 3)|. Literature: Chen & Han (1988).
double coneRatio(double angle) {
  const double sine = std::sin(angle);
  return std::abs((sine + 3.0) / (3.0 * sine - 3.0));
}

/// Turns the tangent slope of a hardening branch into the slope over plastic strain.
void makePlastic(double& slope, double E) {
  if (slope != E) {
    slope /= 1.0 - slope / E;
  }
}

/// What follows from the values of a material, in the order that the values depend on each other.
void derive(Material& material, int number, int NTYPE) {
  if (NTYPE >= 1 && NTYPE <= 4) {
    material(slot::thickness) = 0.0;
  }
  const double E = std::max(material(slot::youngX), material(slot::youngY));
  material(slot::dilatancyAngle) *= std::numbers::pi / 180.0;
  material(slot::frictionAngle) *= std::numbers::pi / 180.0;
  if (material.NCRIT == Criterion::druckerPrager) {
    material(slot::yieldRatio) = coneRatio(material(slot::frictionAngle));
  }
  if (material.NCRIP == Criterion::druckerPrager) {
    material(slot::potentialRatio) = coneRatio(material(slot::dilatancyAngle));
  }
  if (material.NCRIP == Criterion::damagePlaneStress) {
    material(slot::poissonXY) = material(slot::poissonXZ) = material(slot::poissonYZ) = 0.0;
  }
  if (material(slot::yieldRatio) != 0.0 && material.NHARD == HardeningVariable::work) {
    material(slot::tensionPeakStress) *= material(slot::yieldRatio);
    material(slot::tensionSlope) *= material(slot::yieldRatio);
  }
  if (material(slot::youngX) <= 0.0 || material(slot::youngY) <= 0.0) {
    throw RunEnd("** MATERIAL CON MODULO ELASTICO NULO O NEGATIVO  **", number, 0.0);
  }
  makePlastic(material(slot::tensionSlope), E);
  makePlastic(material(slot::compressionSlope), E);
  if (material.NCRIT == Criterion::damageSimoJu && material.NTINT == Law::simpleDamage) {
    material(slot::damageStress) /= std::sqrt(material(slot::youngX));
  }
}

}  // namespace

void CONSTITUTIVAS(Job& job, Model& model) {
  constexpr int recordWidth = 80;
  CardReader& cards = job.cards();
  const int NMATS = model.control.NMATS;
  const int NTYPE = lastElement(model.mesh).NTYPE;
  model.materials.all.assign(static_cast<std::size_t>(NMATS), {});
  for (int read = 0; read < NMATS; ++read) {
    int number = 0;
    Material material = readMaterial(cards, NMATS, number);
    derive(material, number, NTYPE);
    if (echoesModelCards(model)) {
      if (read == 0) {
        writeMaterialHeading(job.listing());
      }
      echoMaterial(job.listing(), material, number);
    }
    model.materials(number) = std::move(material);
  }
  static_cast<void>(cards.line("end of materials", recordWidth));
}

}  // namespace zema
