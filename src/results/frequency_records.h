// Records for a later frequency study of the damaged structure.
#pragma once

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// `EXCO`: number, elastic matrix and density of every composite in use: records of "Co.txt", and text on channel 38.
/// Nothing happens with a kernel that keeps no frequency records. These and the following are unformatted sequential
/// files: each record stands between two 4-byte counts of its bytes, integers have 4 bytes, reals 8. Throws FileFault.
void writeElasticRecords(Job& job, const Model& model, const Kernel& kernel);

/// `EXCSEC`, `EXGRANDEF`: secant matrix of every point with damage to "Csec.txt", with LARGE 1 its stress to
/// "Strsg.txt"; the batch number rises with load step and increment. A restarted job takes up the number of the last
/// record of the file. Throws FileFault, or InputFault when that file has no such record.
void writeSecantRecords(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
