// Arc-length control: the load factor of an increment follows from a constraint on its displacements.
#pragma once

namespace zema {

struct Analysis;

/// `ARCLE`: solves for the reference load, corrects the load factor so that the constraint of KARCL holds, and scales
/// loads, prescribed motion and the iteration's correction ASDIS with it. Runs between the solve of an iteration and
/// `UPDAT`. Throws RunEnd where the spherical constraint has no real root, or only roots
/// that turn back along the path. Updated normal plane: Ramm (1981); spherical: Crisfield (1981); single displacement:
/// Batoz and Dhatt (1979); relative displacement: de Borst (1987).
void ARCLE(Analysis& analysis);

}  // namespace zema
