// The cards of the simple materials.
#pragma once

namespace zema {

struct Job;
struct Model;

/// `CONSTITUTIVAS`: reads the NMATS materials into model.materials, derives what follows from their values (angles to
/// radians, strength ratios, plastic slopes) and echoes them on the listing (not with the start word "START2"). The
/// thickness is dropped for the element types 1 to 4. Throws InputFault for a code or number out of its range and for
/// a material that is never given, RunEnd for a Young modulus that is not positive.
void CONSTITUTIVAS(Job& job, Model& model);

}  // namespace zema
