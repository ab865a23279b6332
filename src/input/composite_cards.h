// The cards of the composite materials.
#pragma once

namespace zema {

struct Composites;
struct Job;
struct KernelProfile;
struct Model;

/// Reads the NMATC composite blocks into the layers of model.composites, which must have NMATC places.
/// Throws InputFault for a composite, material or count out of its range and for a share of 0 that a rule divides by.
/// A composite that is never given stays without layers.
void readComposites(Job& job, Model& model, const KernelProfile& profile);

/// `OTABR02`: numbers the components of every composite through its layers (LOCMA, from 1) and sets NUMAT.
void OTABR02(Composites& composites);

}  // namespace zema
