// The cards of the history curves.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// `INPCU`: looks for the card "CURV," and reads the curves after it into model.curves. For a force curve the degree of
/// freedom of the node becomes the place (from 1) in the element's vectors. Throws RunEnd when there is no such card,
/// or when the node of a force curve or the Gauss position of a point curve is not one of the element's, and InputFault
/// for any other parameter that the model does not have.
void INPCU(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
