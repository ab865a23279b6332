// What differs between kernels in the result files: words, walks over the points, headings, layouts. Data only.
#pragma once

#include <span>
#include <string_view>

#include "foundation/layout.h"
#include "model/kernel.h"

namespace zema {

/// A block of stress components in the mechanical record of a point.
enum class Quantity { stress, strain, plasticStrain };

/// What a quantity becomes on output when the law runs in the current configuration.
enum class CurrentMeasure { asStored, CAUCHY, ALMANS };

/// The last column of a table of point values.
enum class LastColumn { yieldValue, sumOfComponents };

/// How the post files speak of the elements of one node count.
struct ElementShape {
  int NNODE;
  std::string_view typeWord;   ///< type word with its blanks: "HexaHedra   "
  std::string_view gaussStem;  ///< name of the point rule; the number of points follows: "HEXA-G"
  /// The points of the shape's own rule in the order of their lines; an element with another number of points has its
  /// lines in the order of the point loops.
  std::span<const PointIndex> walk;
};

/// A block of tensors at points in the result file.
struct TensorBlock {
  Quantity quantity;
  CurrentMeasure measure;
  std::string_view name;            ///< "STRESSES"
  int textWidth;                    ///< columns of the result text
  std::string_view componentNames;  ///< the line of names, as it stands
};

/// The post mesh and result file of a kernel.
struct PostProfile {
  int typeColumns;  ///< columns of type and rule words
  std::span<const ElementShape> shapes;
  std::span<const int> nodalTypes;            ///< NTYPE of the elements that have lines of displacements
  std::string_view displacementText;          ///< result text of the displacements
  std::string_view displacementNames;         ///< the line of names, as it stands
  std::span<const int> columnOrder;           ///< places (from 0) of a tensor's components in the order of the columns
  std::span<const TensorBlock> tensorBlocks;  ///< in the order of IPOST3D(2), (3), (4)
  std::span<const std::string_view> INTE;     ///< names of the internal variables, by place from 0
};

/// A text that stands for elements with from <= NTYPE < below.
struct LineByType {
  int from;
  int below;
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
  Quantity quantity;
  CurrentMeasure measure;
  Layout rule;  ///< the line that opens the table
  std::span<const LineByType> heads;
  LastColumn last;
};

/// Principal columns of a tensor, at most four of them; a strain has engineering shears. Returns their number.
using PrincipalColumns = int (*)(std::span<const double> tensor, bool isStrain, std::span<double, 4> columns);

/// The results in the listing of a kernel.
struct ListingProfile {
  Layout loadFactor;  ///< heading with the load factor
  std::span<const std::string_view> linesBeforeNodes;
  std::span<const std::string_view> linesBeforePoints;
  NodalTable displacements;
  NodalTable velocities;
  NodalTable reactions;
  std::span<const PointTable> pointTables;
  Layout elementLine;
  Layout pointRow;  ///< number of the point, 0, component, values
  PrincipalColumns principal;
};

/// The words of the curves of a kernel.
struct CurveProfile {
  int typesBelow;                     ///< curves are written when NTYPE is below
  std::string_view noShapeOnConsole;  ///< for an element of an unknown node count
  std::string_view noShapeStop;
};

/// The energy and damage monitors of a kernel.
struct MonitorProfile {
  int typesBelow;        ///< the listing shows the monitors when NTYPE is below
  bool damageForceFile;  ///< the increments of the frequency records leave DANFU in "Danyo.txt"
};

/// Everything that the results of a kernel need to know about it.
struct ResultProfile {
  PostProfile post;
  ListingProfile listing;
  CurveProfile curves;
  MonitorProfile monitors;
};

}  // namespace zema
