// What differs between kernels in the results: words, walks over the points, headings, layouts.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "foundation/layout.h"
#include "model/kernel.h"

namespace zema {

/// A tensor in the mechanical record of a point.
enum class Quantity { stress, strain, plasticStrain };

/// What a quantity becomes on output when the law runs in the current configuration.
enum class CurrentMeasure { asStored, CAUCHY, ALMANS };

/// A tensor as the results show it.
struct TensorOutput {
  Quantity quantity;
  CurrentMeasure measure;
};

/// How the post files speak of the elements of one node count.
struct ElementShape {
  int NNODE;                   ///< the node count
  std::string_view typeWord;   ///< "HexaHedra"
  std::string_view gaussStem;  ///< name of the point rule without the number of points: "HEXA-G"
  /// The points of the shape's own rule in the order of their lines; an element with another number of points has its
  /// lines in the order of the point loops.
  std::span<const PointIndex> walk;
};

/// The lines of a block of results in the post files.
struct BlockForm {
  std::string_view name;  ///< first part of the result text: "STRESSES"
  int textColumns;        ///< columns of the result text
  std::string_view kind;  ///< "Matrix", "Vector", "Scalar"
  int numberColumns;      ///< columns of the number of the node or element
  Layout values;          ///< what follows the number
};

/// A block of tensors at points.
struct TensorBlock {
  TensorOutput tensor;
  BlockForm form;
  std::string_view componentNames;  ///< the line of names, as it stands
};

/// Turns a tensor of the record into material axes. angles: Euler angles, degrees.
using MaterialAxes = void (*)(std::span<double> tensor, const std::array<double, 3>& angles, Quantity quantity);

/// The post mesh and result file of a kernel.
struct PostProfile {
  int wordColumns;  ///< columns of type and rule words
  std::span<const ElementShape> shapes;
  std::span<const int> nodalTypes;  ///< NTYPE of the elements whose models have lines of displacements
  BlockForm displacements;
  std::string_view displacementNames;    ///< the line of names, as it stands
  std::span<const int> columnOrder;      ///< components of a tensor (from 0) in the order of the columns
  std::span<const TensorBlock> tensors;  ///< in the order of IPOST3D(2), (3), (4)
  MaterialAxes toMaterialAxes;           ///< for the selection 2
  BlockForm internalVariables;
  std::span<const std::string_view> INTE;  ///< names of the internal variables, by place from 0
};

/// A line of the listing for elements with from <= NTYPE < below.
struct LineByType {
  int from = 0;
  int below = 0;
  Layout text;
};

/// A table of nodal values in the listing.
struct NodalTable {
  int typesBelow;  ///< written when NTYPE is below
  Layout title;
  std::span<const LineByType> heads;
  Layout row;  ///< node and values
};

/// A table of point values in the listing.
struct PointTable {
  /// What stands in the last column: the yield function of the record, or the sum of the tensor's components.
  enum class LastColumn { yieldValue, sumOfComponents };

  TensorOutput tensor;
  Layout rule;  ///< the line that opens the table
  std::span<const LineByType> heads;
  LastColumn last;
};

/// Fills the principal columns of a tensor and returns their number, at most four.
using PrincipalColumns = int (*)(std::span<const double> tensor, Quantity quantity, std::span<double, 4> columns);

/// The results in the listing of a kernel.
struct ListingProfile {
  Layout loadFactor;  ///< heading with the load factor
  NodalTable displacements;
  NodalTable velocities;
  NodalTable reactions;
  std::span<const PointTable> pointTables;
  Layout elementLine;  ///< element number as a text
  int elementColumns;
  Layout pointRow;  ///< number of the point, 0, component, values
  PrincipalColumns principal;
};

/// The words of the curves of a kernel.
struct CurveProfile {
  int typesBelow;                     ///< curves have lines when NTYPE is below
  std::string_view noShapeOnConsole;  ///< for an element of an unknown node count
  std::string_view noShapeStop;
};

/// The energy and damage monitors of a kernel.
struct MonitorProfile {
  int typesBelow = 0;            ///< the listing shows the monitors when NTYPE is below
  bool damageForceFile = false;  ///< the increments of the frequency records leave DANFU in "Danyo.txt"
};

/// Everything that the results need to know about a kernel.
struct ResultProfile {
  PostProfile post;
  ListingProfile listing;
  CurveProfile curves;
  MonitorProfile monitors;
};

}  // namespace zema
