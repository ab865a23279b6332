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

// The lists turned round: for each entry the lists that hold it, ascending.
IntegerLists transposed(const IntegerLists& lists, int entries) {
  IntegerLists turned;
  turned.first.assign(index(entries) + 1, 0);
  for (const int entry : lists.entries) ++turned.first[index(entry) + 1];
  for (std::size_t i = 1; i < turned.first.size(); ++i) turned.first[i] += turned.first[i - 1];
  turned.entries.resize(lists.entries.size());
  std::vector<int> next(turned.first.begin(), turned.first.end() - 1);
  for (int list = 0; list < lists.size(); ++list)
    for (const int entry : lists[list]) turned.entries[index(next[index(entry)]++)] = list;
  return turned;
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
