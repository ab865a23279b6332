// Labels and blocks of the echo of a simple material.
#include "input/material_echo.h"

#include <array>
#include <span>
#include <string_view>

#include "foundation/channel.h"
#include "foundation/dotted_label.h"
#include "model/materials.h"

namespace zema {

namespace {

constexpr std::array<std::string_view, 8> YIELDC{"TRESCA",         "VON MISES",      "MOHR-COULOMB",
                                                 "DRUCKER-PRAGER", "LUBLINER-OLLER", "DAMAGE P. STRESS",
                                                 "DAMAGE SIMO JU", "DAMAGE CORTANTE"};
constexpr std::array<std::string_view, 20> INTEC{"ELASTIC",        "EULER",          "HINTON Y OWEN",
                                                 "LUBLINER",       "SIMPLE DAMAGE",  "GENER. DAMAGE",
                                                 "VISCOELASTIC",   "VISCOELASTIC",   "BACK. EURLER",
                                                 "BACK. EURLER",   "NUMERIC BACK.",  "VISCO-DAMAGE",
                                                 "DAMAGE-PLASTIC", "DAMAGE-PLASTIC", "",
                                                 "USER DEFINED",   "DAMAG-FRICTION", "",
                                                 "DMDM-MCM",       "DMDMD"};
constexpr std::array<std::string_view, 2> FLUGC{"CONSTANT", "VARIABLE"};
constexpr std::array<std::string_view, 3> HARDC{"WORK", "STRAIN (E.C.)", "STRAIN"};
constexpr std::array<std::string_view, 3> MATXC{"CONTINUOS", "ALGORITHMIC", "NUM. PERTURB"};
constexpr std::array<std::string_view, 4> CURVC{"EXPONENTIAL", "EXP. W/MAX.", "POLINOMIC", "STRAIGHT"};

/// The label of a code, the first label standing for the code `first`; blank when there is none.
std::string_view label(std::span<const std::string_view> table, int code, int first) {
  const bool inside = code >= first && code - first < static_cast<int>(table.size());
  return inside ? table[static_cast<std::size_t>(code - first)] : std::string_view();
}

/// The code that a property slot holds; one that is no small integer has no label anyway.
int codeOf(double value) {
  return value >= 0.0 && value < 100.0 ? static_cast<int>(value) : -1;
}

/// Writes the lines of a material.
class MaterialEcho {
 public:
  MaterialEcho(Channel& listing, const Material& material) : listing_(listing), material_(material) {}

  void text(std::string_view name, std::string_view value) {
    static constexpr Layout line("6X A 2X A");
    listing_.write(line, dottedLabel(name), value);
  }
  void value(std::string_view name, int place, std::string_view symbol = "") {
    static constexpr Layout line("6X A 2X E12.5 1X A");
    if (symbol.empty()) {
      listing_.write(line, dottedLabel(name), material_(place));
    } else {
      listing_.write(line, dottedLabel(name), material_(place), symbol);
    }
  }
  void heading(std::string_view name) {
    static constexpr Layout line("/ 6X A /");
    listing_.write(line, name);
  }
  /// The slope of a hardening curve: given, or found by the program.
  void slope(int place, int flagPlace) {
    if (material_(flagPlace) == 1.0) {
      value("SLOPE STRAIGHT CURVE", place);
    } else if (material_(flagPlace) == 0.0) {
      text("SLOPE CURVE STRAIGHT CURVE (AUTOMATIC)", "");
    }
  }

 private:
  Channel& listing_;
  const Material& material_;
};

void echoSelection(Channel& listing, MaterialEcho& echo, const Material& material, int number) {
  static constexpr Layout head(R"(/ 6X "MATERIAL NUMBER:" I5 / 6X 21("-"))");
  listing.write(head, number);
  echo.text("YIELD FUNCTION", label(YIELDC, static_cast<int>(material.NCRIT), 1));
  echo.text("POTENTIAL FUNCTION", label(YIELDC, static_cast<int>(material.NCRIP), 1));
  echo.text("INTEGRATION ALGORITHM", label(INTEC, static_cast<int>(material.NTINT), 0));
  echo.text("FLOW TYPE", label(FLUGC, static_cast<int>(material.NFLUG), 1));
  echo.text("INTERNAL VARIABLE", label(HARDC, static_cast<int>(material.NHARD), 1));
  echo.text("CONSTITUTIVE MATRIX", label(MATXC, static_cast<int>(material.NMATX), 1));
  echo.value("YOUNG MODULUS FOR OTHOTROPY", slot::youngX, "(ExxO)");
  echo.value("POISSON COEFICIENT FOR ORTHOTROPY", slot::poissonXY, "(NUxyO)");
  echo.value("THICKNESS PLAIN STRESS", slot::thickness);
  echo.value("DENSITY", slot::density);
  echo.value("DILATANCY ANGLE", slot::dilatancyAngle);
  echo.value("INTERNAL FRICTION", slot::frictionAngle);
  echo.value("YIELD STRESS (COMPRESION)", slot::yieldStress);
}

/// A hardening curve; its six slots follow each other from the code of the curve.
void echoHardening(MaterialEcho& echo, const Material& material, std::string_view heading, int curvePlace) {
  enum : int { peakDissipation = 1, peakStress, slope, slopeFlag, fractureEnergy };
  const int curve = codeOf(material(curvePlace));
  const HardeningVariable variable = material.NHARD;
  echo.heading(heading);
  echo.text("CURVE TYPE", variable == HardeningVariable::work ? label(CURVC, curve, 1) : "STRAIGHT");
  if (curve == 2 || curve == 3) {
    echo.value("NORMALIZED PLASTIC DISIPATION", curvePlace + peakDissipation);
    echo.value("YIELD STRESS (PEAK VALUE)", curvePlace + peakStress);
  }
  if (curve == 4) {
    echo.slope(curvePlace + slope, curvePlace + slopeFlag);
  }
  if (curve == 1 && variable == HardeningVariable::equivalentStrain) {
    echo.value("Q EXPONENT", curvePlace + peakStress);
  }
  if (variable == HardeningVariable::equivalentStrain || variable == HardeningVariable::strain) {
    echo.slope(curvePlace + slope, curvePlace + slopeFlag);
  }
  echo.value("FRACTURE ENERGY", curvePlace + fractureEnergy);
}

void echoRelations(MaterialEcho& echo, const Material& material) {
  echo.value("RELATION BETWEEN TENSION-COMPRESION", slot::yieldRatio);
  echo.text("INTERNAL FRICTION", label(FLUGC, codeOf(material(slot::frictionLaw)), 0));
  echo.text("INTERNAL DILATANCE", label(FLUGC, codeOf(material(slot::dilatancyLaw)), 0));
  if (material.NCRIP == Criterion::lublinerOller) {
    echo.heading("DATA FOR LUBLINER-OLLER YIELD CRITERIA");
    echo.value("ALPHA T PARAMETER", slot::yieldAlpha);
    echo.value("GAMMA T PARAMETER", slot::yieldGamma);
    echo.value("DELTA PARAMETER", slot::yieldDelta);
    echo.heading("DATA FOR LUBLINER-OLLER POTENTIAL CRITERIA");
    echo.value("RELATION BETWEEN TENSION-COMPRESION", slot::potentialRatio);
    echo.value("ALPHA T PARAMETER", slot::potentialAlpha);
    echo.value("GAMMA T PARAMETER", slot::potentialGamma);
    echo.value("DELTA PARAMETER", slot::potentialDelta);
  }
  if (material.NTINT == Law::simpleDamage || material.NTINT == Law::generalDamage) {
    echo.heading("DAMAGE MODEL");
    echo.value("DAMAGE STRESS", slot::damageStress);
    echo.value("RELATION BETWEEN TENSION-COMPRESION", slot::damageRatio);
  }
}

void echoAnisotropy(MaterialEcho& echo, const Material& material) {
  constexpr std::string_view angle = "ANGLE BETWEEN LOCAL AND GLOBAL X AXES";
  echo.heading("ANISOTROPY DATA");
  echo.value("POISON COEFICIENT IN (y-x) PLANE", slot::poissonYX, "(NUyx)");
  echo.value("YOUNG MODULUS yy DIRECTION", slot::youngY, "(Eyy)");
  echo.value("POISON COEFICIENT IN (x-z) PLANE", slot::poissonXZ, "(NUxz)");
  echo.value("POISON COEFICIENT IN (z-x) PLANE", slot::poissonZX, "(NUzx)");
  echo.value("YOUNG MODULUS zz DIRECTION", slot::youngZ, "(Ezz)");
  echo.value("POISON COEFICIENT IN (y-z) PLANE", slot::poissonYZ, "(NUyz)");
  echo.value("POISON COEFICIENT IN (z-y) PLANE", slot::poissonZY, "(NUzy)");
  echo.value("G MODULUS xy DIRECTION", slot::shearXY, "(Gxy)");
  echo.value(angle, slot::angleAboutZ, "(ROTATION ABOUT Z)");
  echo.value(angle, slot::angleAboutY, "(ROTATION ABOUT Y)");
  echo.value(angle, slot::angleAboutX, "(ROTATION ABOUT X)");
  echo.heading("COMPRESION RELATION BETWEEN ISOTROPYC AND REAL SPACE");
  echo.value("XX DIRECTION", slot::mapXX);
  echo.value("YY DIRECTION", slot::mapYY);
  echo.value("XY DIRECTION", slot::mapXY);
  echo.value("ZZ DIRECTION", slot::mapZZ);
  echo.value("XZ DIRECTION", slot::mapXZ);
  echo.value("YZ DIRECTION", slot::mapYZ);
  if (material.NTINT == Law::viscoelastic) {
    echo.heading("VISCOELASTIC MODEL");
    echo.value("YOUNG MODULUS OF PARALEL SPRING", slot::parallelSpring);
    echo.value("TIME", slot::relaxationTime);
  }
}

}  // namespace

void writeMaterialHeading(Channel& listing) {
  static constexpr Layout heading(
      R"(/ / 6X ' MATERIAL PROPERTIES DEFINITION :' / 6X '-------------------------------' / /)");
  listing.write(heading);
}

void echoMaterial(Channel& listing, const Material& material, int number) {
  MaterialEcho echo(listing, material);
  echoSelection(listing, echo, material, number);
  echoHardening(echo, material, "HARDENING TENSION", slot::tensionCurve);
  echoHardening(echo, material, "HARDENING COMPRESION", slot::compressionCurve);
  echoRelations(echo, material);
  echoAnisotropy(echo, material);
}

}  // namespace zema
