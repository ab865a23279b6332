// Head of the deck, its checks, the reports of stops and the file names, against lines written by hand.
#include "job/head.h"

#include <gtest/gtest.h>

#include "foundation/ends.h"
#include "job/file_set.h"
#include "job/job.h"
#include "job/run_end.h"
#include "job/time_lines.h"
#include "jobs/job_runner.h"

namespace zema::test {
namespace {

/// A job whose files lie in a folder of their own.
struct HeadTest : testing::Test {
  HeadTest() {
    for (const int number : {channel::listing, channel::log, channel::pairs, channel::thermalLog}) {
      job.channels.assign(number, folder.path() / std::to_string(number), OpenMode::fromStart);
    }
  }
  void readHead(const std::string& text) {
    job.deck.emplace(CardReader::fromText("deck", text + std::string(4000, '\n')));
    INPU1(job);
  }
  std::string written(int number) {
    job.channels[number].flush();
    return folder.read(std::to_string(number));
  }

  JobFolder folder;
  Job job;
};

TEST_F(HeadTest, SolidHeadFillsTheRecordsAndIsEchoed) {
  readHead("MEC3D\n1 0 3 2 5\nSTART1\n\"a title, long\"\n8 4 2 3 6 1 10 7 3 0 1 2 9 1\n20 50 1.D-8 0\n");

  const ControlRecord& c = job.KCONT;
  EXPECT_EQ((std::array{c.KPATH, c.LARGE, c.KTANP, c.KPUSH, c.ISIME}), (std::array{1, 0, 3, 2, 5}));
  EXPECT_EQ((std::array{c.NPOIN, c.NELEM, c.NMATC, c.NLAYM, c.NMATS, c.NFASE, c.NINCM}),
            (std::array{8, 4, 2, 3, 6, 1, 10}));
  EXPECT_EQ((std::array{c.KMASS, c.NSOLV, c.KRENU, c.KSMOO, c.KACOP, c.unread27, c.KFREC, c.NNODM}),
            (std::array{7, 3, 0, 1, 2, 9, 1, 8}));
  EXPECT_EQ(written(channel::listing), dataFile("job/head.txt"));
  EXPECT_EQ(written(channel::pairs), "-----------------\nPROBLEMA ACOPLADO\n-----------------\n");
}

TEST_F(HeadTest, BeamAndPlaneFrameHeadsHaveTheirOwnFields) {
  readHead("VIGAS3D\n2 1 0\nSTART1\nt\n8 4 2 6 10 7 4 0 1\n");
  EXPECT_EQ((std::array{job.KCONT.NMATS, job.KCONT.NINCM, job.KCONT.NSOLV, job.KCONT.KSMOO, job.KCONT.KTANP}),
            (std::array{6, 10, 4, 1, 1}));

  readHead("VIGAS2D\n2 1 0\nSTART1\nt\n8 4 2 6 10 7 4 0 1 1 5\n");
  EXPECT_EQ(job.KCONT.NLAYM, 5);
}

TEST_F(HeadTest, SizesOutOfBoundsStopInTheirOrder) {
  using Case = std::array<std::string, 3>;  // sizes, message, numbers of the stop
  for (const auto& [sizes, message, numbers] :
       {Case{"0 0 0 1 0 0 0", "NUMERO DE PUNTOS MENOR O IGUAL 0", "0.0 0.0"},
        Case{"8 0 0 1 0 0 0", "NUMERO DE INCREMENTOS DE CARGA < 1", "0.0 0.0"},
        Case{"8 -2 0 1 0 0 1", "MINIMO NUMERO DE ELEMENTOS SUPERADO", "-2.0 1.0"},
        Case{"8 1 0 1 0 0 1", "MINIMO NUMERO DE MAT.COMP.NO SUPERADO", "0.0 1.0"},
        Case{"8 1 1 1 0 0 1", "MINIMO NUMERO DE MATERIALES < 1", "0.0 1.0"},
        Case{"8 1 2 1 1 0 1", "NUMERO DE MAT. COMP.< 0 O > NELEM", "0.0 0.0"},
        Case{"8 1 1 1 1 0 1", "NUMERO DE FASES < 0  O  > NELEM", "0.0 0.0"},
        Case{"8 1 1 1 1 2 1", "NUMERO DE FASES < 0  O  > NELEM", "0.0 0.0"}}) {
    const std::string head = "MEC3D\n1 0 0 1 0\nSTART1\nt\n" + sizes + " 0 4 0 0 1 0 0\n";
    EXPECT_EQ(endOf([&] { readHead(head); }), "run end   >>>> DETENIDO EN LA RUTINA CHKCON  " + numbers);
    EXPECT_NE(written(channel::listing).find("\n -->      *** DIAGNOSTICO DE CHKCON, " + message), std::string::npos);
  }
  EXPECT_THROW(readHead("MEC3D\n1 0 0 1 0\nSTART1\nt\n2000000000 1 1 1 1 1 1 0 4 0 0 1 0 0\n"), InputFault);
}

template <class Stop>
ExitStatus stopWith(Job& job, RunStage stage, const Stop& stop) {
  return reportStop(job, stage, std::make_exception_ptr(stop));
}

TEST_F(HeadTest, AStopBeforeTheKernelIsShortAndOneInItHasTheSummary) {
  for (const RunStage stage : {RunStage::beforeKernel, RunStage::inKernel})
    EXPECT_EQ(stopWith(job, stage, RunEnd("  >>>> DETENIDO EN LA RUTINA CHKCON ", 7.0, -0.5)), ExitStatus::normal);

  EXPECT_EQ(folder.read("2"), dataFile("job/stops.txt"));
  const std::string log = folder.read("8");
  EXPECT_TRUE(log.starts_with(dataFile("job/summary.txt"))) << log;
  EXPECT_NE(log.find("\n               COMPUTING MATRICES         :  0.00E+00 (****** % )\n"
                     "                    INITIAL COMPUTATIONS       :  0.00E+00 (****** % )\n"),
            std::string::npos)
      << log;
  EXPECT_TRUE(log.ends_with("\n" + folder.read("31") + " ZEMA: * * * END OF ANALYSIS * * *\n")) << log;
}

TEST_F(HeadTest, AStopInAConstitutiveRoutineLeavesItsOwnFileAlone) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const ExitStatus status =
      stopWith(job, RunStage::inKernel, ConstitutiveStop("  >>>>  >>>>  DETENIDO EN -ECUAD- ", 3.0, 8.0, "element 3"));
  std::filesystem::current_path(before);

  EXPECT_EQ(status, ExitStatus::stopped);
  EXPECT_EQ(folder.read("ErrMsg.dat"), dataFile("job/law_stop.txt"));
  EXPECT_FALSE(folder.has("2"));
}

TEST_F(HeadTest, TimeLinesHaveTheirFields) {
  MAKINA(job, ClockTask::timeLine);

  EXPECT_EQ(written(channel::log), " -->>> TIEMPO       0.0000000                    HORA:   0: 0: 0\n");
}

TEST(FileNames, SplitAtTheLastDotForTheFilesAndAtTheFirstForTheCurves) {
  const JobFolder folder;
  folder.write("a.b.dts", "");
  Job job;
  INICIA(job, folder.path() / "a.b.dts");

  const std::string stem = folder.path() / "a.b";
  EXPECT_EQ(job.CFILE[2], stem + ".mec.sal");
  EXPECT_EQ(job.CFILE[11], stem + ".post.res");
  EXPECT_TRUE(folder.has("a.b.arc") && folder.has("a.b.post.msh") && folder.has("a.b.mec.log"));
  EXPECT_EQ(curveFileName(job, 1), std::string(folder.path() / "a.AA"));
  EXPECT_EQ(curveFileName(job, 26), std::string(folder.path() / "a.BA"));
}

}  // namespace
}  // namespace zema::test
