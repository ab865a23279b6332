// Reads, echoes and checks the head of the deck.
#include "job/head.h"

#include <array>
#include <string>

#include "foundation/dotted_label.h"
#include "job/job.h"
#include "job/problem_word.h"
#include "job/run_end.h"

namespace zema {

namespace {

constexpr std::size_t longestText = 64;

std::string cut(std::string text) {
  if (text.size() > longestText) {
    text.resize(longestText);
  }
  return text;
}

void readProblemWord(Job& job) {
  static constexpr Layout echo(R"(// 5X "PROBLEM TYPE TO SOLVE : " A10 / 5X 21("-") /)");
  std::string word = job.cards().line("problem word", 10);
  word.erase(word.find_last_not_of(" \t") + 1);
  job.CTEXT.CPROB = word;
  word.resize(10, ' ');
  job.listing().write(echo, word);
}

void readSwitches(Job& job, HeadForm form) {
  CardReader& deck = job.cards();
  ControlRecord& control = job.KCONT;
  deck.begin("solution switches");
  deck.read("KPATH", control.KPATH);
  deck.read("LARGE", control.LARGE);
  if (form == HeadForm::continuum) {
    deck.read("KTANP", control.KTANP);
    deck.read("KPUSH", control.KPUSH);
    deck.read("ISIME", control.ISIME);
    return;
  }
  deck.read("ISIME", control.ISIME);
  control.KTANP = 1;
  control.KPUSH = 1;
  control.KACOP = 1;
  control.NFASE = 0;
}

void readTexts(Job& job) {
  static constexpr Layout echo(R"(5X "PROBLEM TITLE : " A64)");
  CardReader& deck = job.cards();
  deck.begin("start word");
  job.CTEXT.CSTART = cut(deck.word("CSTART"));
  job.changeable.push_back(deck.lastItem());
  job.CTEXT.CSTART.erase(job.CTEXT.CSTART.find_last_not_of(' ') + 1);
  deck.begin("title");
  job.CTEXT.CTITLE = cut(deck.word("CTITLE"));
  std::string title = job.CTEXT.CTITLE;
  title.resize(longestText, ' ');
  job.listing().write(echo, title);
}

[[noreturn]] void stopAtUnknownWord() {
  throw PlainStop("--> UNKNOWN PROBLEM TYPE..........S:INPU1\n\n", "");
}

void readSizes(Job& job, HeadForm form) {
  CardReader& deck = job.cards();
  ControlRecord& control = job.KCONT;
  deck.begin("size");
  deck.read("NPOIN", control.NPOIN);
  deck.read("NELEM", control.NELEM);
  deck.read("NMATC", control.NMATC);
  if (form == HeadForm::continuum) {
    deck.read("NLAYM", control.NLAYM);
    deck.read("NMATS", control.NMATS);
    deck.read("NFASE", control.NFASE);
  } else {
    deck.read("NMATS", control.NMATS);
  }
  deck.read("NINCM", control.NINCM);
  job.changeable.push_back(deck.lastItem());
  deck.read("KMASS", control.KMASS);
  deck.read("NSOLV", control.NSOLV);
  deck.read("KRENU", control.KRENU);
  if (form == HeadForm::beam) {
    deck.read("KSMOO", control.KSMOO);
    return;
  }
  deck.read("KSMOO", control.KSMOO);
  deck.read("KACOP", control.KACOP);
  if (form == HeadForm::planeFrame) {
    deck.read("NLAYM", control.NLAYM);
    return;
  }
  deck.read("the 13th value", control.unread27);
  deck.read("KFREC", control.KFREC);
}

/// A deck cannot hold more cards than half its bytes; sizes beyond that would only ask for memory in vain.
void checkSizesAgainstDeck(const CardReader& deck, const ControlRecord& control) {
  const auto most = static_cast<long long>(deck.size() / 2);
  const auto check = [&](std::string_view field, int size) {
    if (size > most) {
      throw InputFault(deck.fileName() + ", size card, field " + std::string(field) + ": found " +
                       std::to_string(size) + ", expected at most as many cards as a deck of " +
                       std::to_string(deck.size()) + " bytes can hold");
    }
  };
  check("NPOIN", control.NPOIN);
  check("NELEM", control.NELEM);
  check("NMATC", control.NMATC);
  check("NMATS", control.NMATS);
}

void writeCoupledHeading(Job& job) {
  static constexpr Layout heading(R"(17("-") / "PROBLEMA ACOPLADO" / 17("-"))");
  job.channels[channel::pairs].write(heading);
}

void readGmresCard(Job& job) {
  static constexpr Layout heading(R"(6X "GMRES SOLVER PARAMETERS")");
  static constexpr Layout integerLine("6X A 6X I5 A");
  static constexpr Layout realLine("6X A 6X E10.5 A");
  CardReader& deck = job.cards();
  ControlRecord& control = job.KCONT;
  deck.begin("GMRES");
  deck.read("NKRYLO", control.NKRYLO);
  if (control.NKRYLO < 1) {
    deck.fault("NKRYLO", control.NKRYLO, "a dimension from 1");
  }
  deck.read("NITER", control.NITER);
  deck.read("GMTOL", control.GMTOL);
  deck.read("NGPRI", control.NGPRI);
  Channel& listing = job.listing();
  listing.write(heading);
  listing.write(integerLine, dottedLabel("KRYLOVS SUBSPACE"), control.NKRYLO, "(NKRYLO)");
  listing.write(integerLine, dottedLabel("MAXIMUM NUMBER OF ITERATIONS"), control.NITER, "(NITER)");
  listing.write(realLine, dottedLabel("TOLERANCE"), control.GMTOL, "(GMTOL)");
}

void echoSwitches(Channel& listing, const ControlRecord& control) {
  listing.line(control.KPATH == 1 ? " 1.- PATH INDEPENDENT SOLUTION" : " 1.- PATH DEPENDENT SOLUTION");
  listing.line(control.LARGE == 0 ? " 2.- INFINTESIMAL STRAIN" : " 2.- FINITE STRAIN");
  listing.line(control.ISIME == 0 ? " 3.- SYMETRIC SOLVER" : " 3.- SKEW-SYMETRIC SOLVER");
}

void echoSizes(Channel& listing, const ControlRecord& control) {
  static constexpr Layout sizeLine("6X A 2X I7 A");
  listing.write(sizeLine, dottedLabel("NUMBER OF NODAL POINTS"), control.NPOIN, "(NPOIN)");
  listing.write(sizeLine, dottedLabel("NUMBER OF ELEMENTS"), control.NELEM, "(NELEM)");
  listing.write(sizeLine, dottedLabel("NUMBER OF COMPOSITES MATERIALS"), control.NMATC, "(NMATC)");
  listing.write(sizeLine, dottedLabel("NUMBER OF MATERIALS"), control.NMATS, "(NMATS)");
  listing.write(sizeLine, dottedLabel("NUMBER OF CONSTRUCTION STEPS"), control.NFASE, "(NFASE)");
  listing.write(sizeLine, dottedLabel("NUMBER OF LOAD INCREMENTS"), control.NINCM, "(NINCM)");
}

/// The tests that the entry and the kernels share, in their order; the first that fails stops the run.
void checkSizes(Channel& listing, const ControlRecord& control) {
  struct Test {
    bool fails;
    std::string_view message;
    double A;
    double B;
  };
  const std::array<Test, 6> tests = {{
      {control.NPOIN < 1, "*** DIAGNOSTICO DE CHKCON, NUMERO DE PUNTOS MENOR O IGUAL 0", 0.0, 0.0},
      {control.NINCM < 1, "*** DIAGNOSTICO DE CHKCON, NUMERO DE INCREMENTOS DE CARGA < 1", 0.0, 0.0},
      {control.NELEM < 1, "*** DIAGNOSTICO DE CHKCON, MINIMO NUMERO DE ELEMENTOS SUPERADO",
       static_cast<double>(control.NELEM), 1.0},
      {control.NMATC < 1, "*** DIAGNOSTICO DE CHKCON, MINIMO NUMERO DE MAT.COMP.NO SUPERADO",
       static_cast<double>(control.NMATC), 1.0},
      {control.NMATS < 1, "*** DIAGNOSTICO DE CHKCON, MINIMO NUMERO DE MATERIALES < 1",
       static_cast<double>(control.NMATS), 1.0},
      {control.NMATC > control.NELEM, "*** DIAGNOSTICO DE CHKCON, NUMERO DE MAT. COMP.< 0 O > NELEM", 0.0, 0.0},
  }};
  for (const Test& test : tests) {
    if (test.fails) {
      CHECK4(listing, test.message, "  >>>> DETENIDO EN LA RUTINA CHKCON ", test.A, test.B);
    }
  }
}

void CHKCON(Channel& listing, const ControlRecord& control, const ProblemWord& word) {
  checkSizes(listing, control);
  if (word.constructionSteps && (control.NFASE < 1 || control.NFASE > control.NELEM)) {
    CHECK4(listing, "*** DIAGNOSTICO DE CHKCON, NUMERO DE FASES < 0  O  > NELEM",
           "  >>>> DETENIDO EN LA RUTINA CHKCON ");
  }
}

}  // namespace

void INPU1(Job& job) {
  constexpr int coupled = 2;
  constexpr int gmres = 3;
  readProblemWord(job);
  const auto word = findProblemWord(job.CTEXT.CPROB);
  if (!word) {
    readTexts(job);
    stopAtUnknownWord();
  }
  readSwitches(job, word->head);
  readTexts(job);
  readSizes(job, word->head);
  if (job.KCONT.KACOP == coupled) {
    writeCoupledHeading(job);
  }
  if (job.KCONT.NSOLV == gmres) {
    readGmresCard(job);
  }
  job.KCONT.NNODM = word->NNODM;
  echoSwitches(job.listing(), job.KCONT);
  echoSizes(job.listing(), job.KCONT);
  CHKCON(job.listing(), job.KCONT, *word);
  checkSizesAgainstDeck(job.cards(), job.KCONT);
}

void refuseRestart(Channel& listing, const ControlRecord& KCONT) {
  checkSizes(listing, KCONT);
  CHECK4(listing, "*** DIAGNOSTICO DE VER2D, START2 NO APLICA", "  >>>> DETENIDO EN LA RUTINA VER2D ");
}

}  // namespace zema
