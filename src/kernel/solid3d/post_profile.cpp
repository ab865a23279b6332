// Words, headings and layouts of the results of three-dimensional solids.
#include "kernel/solid3d/post_profile.h"

#include <cassert>
#include <limits>

#include "tensor/rotation.h"

namespace zema::solid3d {
namespace {

constexpr int anyType = std::numeric_limits<int>::max();
constexpr int solid = 6;  // NTYPE of the elements of this kernel

constexpr std::array<PointIndex, 8> brickWalk{
    {{1, 1, 1}, {1, 2, 1}, {2, 2, 1}, {2, 1, 1}, {1, 1, 2}, {1, 2, 2}, {2, 2, 2}, {2, 1, 2}}};
constexpr std::array<PointIndex, 1> tetrahedronWalk{{{1, 1, 1}}};
constexpr std::array<ElementShape, 2> shapes{
    {{4, "TetraHedra", "TETRA-G", tetrahedronWalk}, {8, "HexaHedra", "HEXA-G", brickWalk}}};

constexpr std::array<int, 1> nodalTypes{solid};
constexpr std::array<int, 6> columnOrder{0, 1, 3, 2, 4, 5};  // xx, yy, zz, xy, xz, yz
constexpr Layout tensorValues{"6F25.15"};
constexpr std::string_view strainNames = R"(ComponentNames "Exx" "Eyy" "Ezz" "Exy" "Exz" "Eyz")";
constexpr TensorOutput stress{Quantity::stress, CurrentMeasure::CAUCHY};
constexpr TensorOutput strain{Quantity::strain, CurrentMeasure::ALMANS};
constexpr TensorOutput plasticStrain{Quantity::plasticStrain, CurrentMeasure::asStored};
constexpr std::array<TensorBlock, 3> tensorBlocks{
    {{stress, {"STRESSES", 60, "Matrix", 5, tensorValues}, R"(ComponentNames "Sxx" "Syy" "Szz" "Sxy" "Sxz" "Syz")"},
     {strain, {"STRAINS//TOTAL", 70, "Matrix", 5, tensorValues}, strainNames},
     {plasticStrain, {"STRAINS//PLASTIC", 70, "Matrix", 5, tensorValues}, strainNames}}};
constexpr std::array<std::string_view, 14> INTE{"CAPAP", "ANGFI", "ANGSI", "PREYS", "HARDS", "DEGMA", "GAMMA",
                                                "TAUMA", "EUNLD", "KAPAD", "RESIS", "RESFA", "DMACO", "TMACO"};

void toMaterialAxes(std::span<double> tensor, const std::array<double, 3>& angles, Quantity quantity) {
  const Rotation<6> rotation(angles);
  if (rotation.none()) return;
  if (quantity == Quantity::stress) {
    auto turned = Stress<6>::from(tensor, 0);
    ROTV(turned, rotation, Direction::toLocal);
    turned.copyTo(tensor, 0);
  } else {
    auto turned = Strain<6>::from(tensor, 0);
    ROTV(turned, rotation, Direction::toLocal);
    turned.copyTo(tensor, 0);
  }
}

/// `PRINSI`: the three principal values, descending.
int PRINSI(std::span<const double> tensor, Quantity quantity, std::span<double, 4> columns) {
  assert(tensor.size() == 6);
  const Matrix<3> A =
      quantity == Quantity::stress ? tensorOf(Stress<6>::from(tensor, 0)) : tensorOf(Strain<6>::from(tensor, 0));
  const Vector<3> values = principalValues(A);
  std::copy(values.begin(), values.end(), columns.begin());
  return static_cast<int>(values.size());
}

constexpr std::array<LineByType, 1> displacementHead{
    {{solid, solid + 1, Layout{R"("0" 6X "NODO" 6X "X-DESP." 7X "Y-DESP." 7X "Z-DESP.")"}}}};
constexpr std::array<LineByType, 1> velocityHead{
    {{solid, solid + 1,
      Layout{R"("0" 4X "NODO" 5X "X-VELO" 8X "Y-VELO" 8X "Z-VELO" 8X "X-ACEL" 8X "Y-ACEL" 8X "Z-ACEL")"}}}};
constexpr std::array<LineByType, 1> reactionHead{
    {{solid, solid + 1, Layout{R"("0" 6X "NODO" 5X "X-REAC." 7X "Y-REAC." 7X "Z-REAC.")"}}}};

constexpr std::array<LineByType, 1> stressHead{
    {{0, anyType,
      Layout{R"("0" 1X "G.P." 9X "XX-STRESS" 5X "YY-STRESS" 5X "XY-STRESS" 5X "ZZ-STRESS" 5X "XZ-STRESS" 5X)"
             R"("YZ-STRESS" 7X "P.S. 1" 8X "P.S. 2" 8X "P.S. 3" "E.P.S.")"}}}};
constexpr std::array<LineByType, 1> strainHead{
    {{0, anyType,
      Layout{R"("0" 1X "G.P." 9X "XX-STRAIN" 5X "YY-STRAIN" 5X "XY-STRAIN" 5X "ZZ-STRAIN" 5X "XZ-STRAIN" 5X)"
             R"("YZ-STRAIN" 7X "P.S. 1" 8X "P.S. 2" 8X "P.S. 3" 8X "DEFvol.")"}}}};
constexpr std::array<LineByType, 1> plasticHead{
    {{0, anyType,
      Layout{R"("0" 1X "G.P." 6X "XX-STRAIP" 5X "YY-STRAIP" 5X "XY-STRAIP" 5X "ZZ-STRAIP" 5X "XZ-STRAIP" 5X)"
             R"("YZ-STRAIP" 7X "P.S. 1" 8X "P.S. 2" 8X "P.S. 3" 8X "DEFvolP.")"}}}};
constexpr Layout rule{R"(80".")"};
constexpr std::array<PointTable, 3> pointTables{
    {{stress, rule, stressHead, PointTable::LastColumn::yieldValue},
     {strain, rule, strainHead, PointTable::LastColumn::sumOfComponents},
     {plasticStrain, rule, plasticHead, PointTable::LastColumn::sumOfComponents}}};

constexpr PostProfile post{
    .wordColumns = 12,
    .shapes = shapes,
    .nodalTypes = nodalTypes,
    .displacements = {R"("DISPLACEMENTS" "DISPLACEMENTS")", 33, "Vector", 5, Layout{"3(1X F25.15)"}},
    .displacementNames = R"( ComponentNames "DX" "DY ""DZ")",
    .columnOrder = columnOrder,
    .tensors = tensorBlocks,
    .toMaterialAxes = toMaterialAxes,
    .internalVariables = {"INT.VAR.", 70, "Scalar", 5, Layout{"F25.15"}},
    .INTE = INTE};

constexpr ListingProfile listing{
    .loadFactor = Layout{R"(11X "RESULTADOS EN LA SALIDA =" E10.5 / 11X 35"*" /)"},
    .displacements = {7, Layout{R"("0" 5X "DISPLACEMENTS")"}, displacementHead, Layout{"I10 3F14.6"}},
    .velocities = {anyType, Layout{R"("0" 5X "VELOCIDAD Y ACELERACION")"}, velocityHead, Layout{"I7 5X 6F14.6"}},
    .reactions = {12, Layout{R"("0" 5X "REACTIONS")"}, reactionHead, Layout{"I10 2X 3(F14.6)"}},
    .pointTables = pointTables,
    .elementLine = Layout{R"("0" 5X "------> ELEMENT NO. =" A)"},
    .elementColumns = 5,
    .pointRow = Layout{"I5 1X I2 1X I2 2X 12F14.6"},
    .principal = PRINSI};

constexpr CurveProfile curves{.typesBelow = 20,
                              .noShapeOnConsole = "ELEM TRIDIMIENSIONAL INEXISTENTE",
                              .noShapeStop = "ERROR EN BUSCUR: NNODE NO CORRESPONDE A NINGUN ELEM "};

constexpr MonitorProfile monitors{.typesBelow = 20, .damageForceFile = true};

constexpr ResultProfile profile{post, listing, curves, monitors};

}  // namespace

const ResultProfile& resultProfile() {
  return profile;
}

}  // namespace zema::solid3d
