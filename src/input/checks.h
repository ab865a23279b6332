// The checks of the data that has been read, each with the words of its stop.
#pragma once

#include <string_view>

namespace zema {

struct ElementData;
struct Job;
struct KernelProfile;
struct Model;

/// `CHECK1`: the limits of an element just read, in their order; element is its number in the deck. Throws RunEnd.
void CHECK1(Job& job, const Model& model, const KernelProfile& profile, int element);

/// `CHECK2`: composite numbers, node lists, with the frontal solver also the nodes' appearance and the front width, and
/// the rules of triangles. Throws RunEnd, after the rest of the deck has been shown for an error in the table.
void CHECK2(Job& job, const Model& model);

/// `CHECK3`: the fixed nodes of a load step. Throws RunEnd after showing the rest of the deck.
void CHECK3(Job& job, const Model& model, const KernelProfile& profile);

/// `CHECKT`: the nodes with a prescribed temperature. Throws RunEnd after showing the rest of the deck.
void CHECKT(Job& job, const Model& model, const KernelProfile& profile);

/// `ECHO`: shows the lines of the deck that have not been read, at most 1000, on the listing.
void ECHO(Job& job);

}  // namespace zema
