// Working numbers of the nodes.
#pragma once

namespace zema {

struct Job;
struct Model;

/// `RENUMN`: gives the nodes the working numbers that KRENU asks for: 0 and codes without a method keep the deck's
/// order, 1 looks for the narrowest band (`SETCON`). Then the degree-of-freedom positions of nodes and elements follow
/// the new numbers. A new job gets the table of the numbers on the listing; a restart finds the same numbers again.
/// Throws RunEnd when a node has more than 50 neighbours.
void RENUMN(Job& job, Model& model);

}  // namespace zema
