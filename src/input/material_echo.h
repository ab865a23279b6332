// The echo of a simple material on the listing.
#pragma once

namespace zema {

class Channel;
struct Material;

/// The head of the material section, once before the first material.
void writeMaterialHeading(Channel& listing);

/// Writes what the cards of a material gave and what was derived from it. A code without a label is left blank.
void echoMaterial(Channel& listing, const Material& material, int number);

}  // namespace zema
