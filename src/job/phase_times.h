// Seconds that the run spent in each of its phases, for the summary of times.
#pragma once

namespace zema {

/// The measured phases of a run, seconds of wall time; a phase that a stop cuts short is not counted.
struct PhaseTimes {
  double initial = 0.0;        ///< preparing the kernel and the elastic tensors
  double stiffness = 0.0;      ///< forming element matrices
  double assembly = 0.0;       ///< adding them into the global system
  double decomposition = 0.0;  ///< factorising
  double lower = 0.0;          ///< forward substitution
  double upper = 0.0;          ///< backward substitution
  double updating = 0.0;       ///< updating displacements
  double residual = 0.0;       ///< internal forces
  double convergence = 0.0;    ///< reactions and the convergence test
  double input = 0.0;          ///< reading the deck
  double output = 0.0;         ///< listing, curves and post files
  double restart = 0.0;        ///< restart data
  double renumbering = 0.0;    ///< node renumbering

  [[nodiscard]] double matrices() const { return initial + stiffness + assembly; }
  [[nodiscard]] double solving() const { return decomposition + lower + upper; }
  [[nodiscard]] double transfers() const { return input + output + restart; }
  [[nodiscard]] double counted() const {
    return matrices() + solving() + updating + residual + convergence + transfers() + renumbering;
  }
};

}  // namespace zema
