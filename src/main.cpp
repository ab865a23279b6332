// The entry: job name, files, head of the deck, dispatch to a kernel, end of the run.
#include <exception>
#include <memory>
#include <string>

#include "analysis/driver.h"
#include "foundation/floating_point.h"
#include "foundation/process.h"
#include "job/file_set.h"
#include "job/head.h"
#include "job/job.h"
#include "job/problem_word.h"
#include "job/run_end.h"
#include "kernel/solid3d/solid3d.h"
#include "solver/blas_kernels.h"

namespace zema {

namespace {

/// The frequency records of a new job begin with its name.
void openFrequencyRecords(Job& job, const std::string& CPROB1) {
  if (job.CTEXT.CSTART.starts_with("START1") && job.KCONT.KFREC == 1) {
    job.channels.assign(channel::frequencies, "frecuencias.dts", OpenMode::append);
    job.channels[channel::frequencies].line(" " + CPROB1.substr(0, CPROB1.rfind('.') + 1));
  }
}

std::unique_ptr<Kernel> makeKernel(const Job& job) {
  const ProblemWord word = findProblemWord(job.CTEXT.CPROB).value();
  if (word.kernel != KernelKind::solid) {
    throw InputFault(job.CFILE[1] + ": the kernel of problem word '" + job.CTEXT.CPROB +
                     "' is not in this build yet; it knows 'MEC3D' and 'ACOP3D'");
  }
  return makeSolid3D();
}

ExitStatus runJob() {
  Job job;
  RunStage stage = RunStage::beforeKernel;
  try {
    const std::string CPROB1 = FILEDEF(job);
    INICIA(job, CPROB1);
    ++job.IRUN.NPASS;
    INPU1(job);
    openFrequencyRecords(job, CPROB1);
    const std::unique_ptr<Kernel> kernel = makeKernel(job);
    stage = RunStage::inKernel;
    VER(job, *kernel);
    job.progress.finish();
    job.channels.closeAll();
    return ExitStatus::normal;
  } catch (...) {
    return reportStop(job, stage, std::current_exception());
  }
}

}  // namespace

}  // namespace zema

int main(int /*count*/, char** arguments) {
  zema::takeWidestKernels(arguments);
  zema::flushSubnormals();
  zema::reportFailedWritesAsErrors();
  zema::secureStandardStreams();
  try {
    return static_cast<int>(zema::runJob());
  } catch (const std::exception& reason) {
    zema::Console().warn(reason.what());
    return static_cast<int>(zema::ExitStatus::programFault);
  }
}
