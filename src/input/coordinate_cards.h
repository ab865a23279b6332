// The coordinate cards.
#pragma once

namespace zema {

struct Job;
struct Model;

/// Reads NPOIN coordinate cards into mesh.COORD and echoes the table; a node read twice keeps its last values, one
/// never read lies at the origin. Throws InputFault for a node number out of its range.
void readCoordinates(Job& job, Model& model);

}  // namespace zema
