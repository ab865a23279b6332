// Groups of equations by refinement: every element splits the classes that it holds in part.
#include "solver/equation_groups.h"

#include <algorithm>

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// Calls f for the equation, from 0, of every free position of an element.
template <class F>
void forFreeEquations(const ElementSource& source, const EquationSystem& system, int e, F&& f) {
  for (const int p : source.positions(e))
    if (const int equation = system.IPERM[index(p)]; equation > 0) f(equation - 1);
}

// A number for each equation; equal numbers for equations of the same elements.
std::vector<int> classes(const ElementSource& source, const EquationSystem& system) {
  std::vector<int> of(index(system.NEQNS), 0);
  std::vector<int> splitBy{-1}, splitOff{0};  // by class: the last element that split it, and the class it made
  for (int e = 0; e < source.elements(); ++e)
    forFreeEquations(source, system, e, [&](int equation) {
      int& now = of[index(equation)];
      if (splitBy[index(now)] != e) {
        splitBy[index(now)] = e;
        splitOff[index(now)] = static_cast<int>(splitBy.size());
        splitBy.push_back(e);  // an equation that stands twice in the element stays in its new class
        splitOff.push_back(static_cast<int>(splitBy.size()) - 1);
      }
      now = splitOff[index(now)];
    });
  return of;
}

}  // namespace

EquationGroups::EquationGroups(const ElementSource& source, const EquationSystem& system) {
  const std::vector<int> sameElements = classes(source, system);
  for (int equation = 0; equation < system.NEQNS; ++equation) {
    const bool opens = equation == 0 || sameElements[index(equation)] != sameElements[index(equation) - 1];
    if (opens) first.push_back(equation);
    of.push_back(static_cast<int>(first.size()) - 1);
  }
  const int groups = static_cast<int>(first.size());
  first.push_back(system.NEQNS);
  std::vector<int> seenIn(index(groups), -1);
  for (int e = 0; e < source.elements(); ++e) {
    forFreeEquations(source, system, e, [&](int equation) {
      const int group = of[index(equation)];
      if (seenIn[index(group)] != e) ofElement.entries.push_back(group);
      seenIn[index(group)] = e;
    });
    ofElement.close();
  }
  ofElements = transposed(ofElement, groups);
}

IntegerLists PARD_NEIGHBORNODES(const EquationGroups& groups) {
  IntegerLists NEIG_NODES;
  std::vector<int> seenFrom(index(groups.size()), -1);
  for (int group = 0; group < groups.size(); ++group) {
    seenFrom[index(group)] = group;  // itself, also where no element holds it
    NEIG_NODES.entries.push_back(group);
    for (const int e : groups.ofElements[group])
      for (const int other : groups.ofElement[e]) {
        if (seenFrom[index(other)] != group) NEIG_NODES.entries.push_back(other);
        seenFrom[index(other)] = group;
      }
    std::sort(NEIG_NODES.entries.begin() + NEIG_NODES.first.back(), NEIG_NODES.entries.end());
    NEIG_NODES.close();
  }
  return NEIG_NODES;
}

}  // namespace zema
