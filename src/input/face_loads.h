// Loaded faces of a load step.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// Reads loaded faces, each an element, the nodes of the face and one value (force / area, global directions) a node
/// and direction, and adds their loads to RLOAD(:, 1). Throws InputFault for an element out of its range or a node that
/// is not one of the element's, PlainStop for meshes of jointed bars.
void readFaceLoads(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
