// Reads a record of dynamic data, then the load table or the accelerogram, and makes the factors of the steps.
#include "input/dynamic_cards.h"

#include <algorithm>
#include <array>

#include "input/count_field.h"
#include "job/job.h"
#include "model/model.h"

namespace zema {

namespace {

constexpr std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

CardReader& openDynamicData(Job& job, const Model& model) {
  constexpr int dynamicEntry = 5;
  if (!job.dynamicData) {
    try {
      job.dynamicData.emplace(job.CFILE[dynamicEntry]);
    } catch (const FileFault& fault) {
      throw FileFault(fault.what() + std::string(" (it holds the data of load step ") +
                      std::to_string(model.loop.ILOAD) + ", which is dynamic)");
    }
  }
  return *job.dynamicData;
}

int readRows(CardReader& cards, std::string_view field) {
  return cards.integer(field, 0, mostTimeSteps);
}

bool readSwitch(CardReader& cards, std::string_view field) {
  return cards.integer(field, 0, 1) == 1;
}

void readIntegration(CardReader& cards, Model& model) {
  DynamicData& data = model.dynamics;
  cards.read("KLUMP", data.KLUMP);
  cards.read("ALFAD", data.ALFAD);
  cards.read("BETAD", data.BETAD);
  cards.read("BETAN", data.BETAN);
  if (model.loadStep.secondOrder() && !(data.BETAN > 0.0)) {
    cards.fault("BETAN", data.BETAN, "a Newmark beta above 0");
  }
  cards.read("GAMMN", data.GAMMN);
}

void readFatigue(CardReader& cards, LoadStep& step) {
  cards.read("KFATI", step.KFATI);
  cards.read("TCYCL", step.TCYCL);
  if (step.TCYCL < 0.0) {
    cards.fault("TCYCL", step.TCYCL, "a time of 0 or more");
  }
  step.NCYCL += cards.real("DCYCL");
  cards.read("FATIM", step.FATIM);
  cards.read("TEXPO", step.TEXPO);
}

void readRecord(CardReader& cards, Model& model) {
  DynamicData& data = model.dynamics;
  double& DTIME = model.increment.DTIME;
  cards.begin("dynamic data");
  data.KACEL = readSwitch(cards, "KACEL") ? 1 : 0;
  cards.read("DTIME", DTIME);
  if (DTIME < 0.0) {
    cards.fault("DTIME", DTIME, "a time step above 0");
  }
  requireTimeStep(DTIME);
  data.NFLEC = readRows(cards, "NFLEC");
  data.NSTEP = readRows(cards, "NSTEP");
  readIntegration(cards, model);
  readFatigue(cards, model.loadStep);
  data.KSAVE = cards.integer("KSAVE");
  if (data.KSAVE < 0) {
    cards.fault("KSAVE", data.KSAVE, "0 or an interval of time steps");
  }
}

void readLoadTable(CardReader& cards, DynamicData& data) {
  static constexpr std::array<std::string_view, 3> fields{"mechanical factor", "thermal factor", "result selection"};
  const std::size_t columns = data.KSAVE > 0 ? 2 : 3;
  cards.begin("load table");
  for (int row = 0; row < data.NFLEC; ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      data.FLEC[column][at(row)] = cards.real(fields[column]);
    }
  }
}

/// Rows of the accelerogram as its points stand in the file.
std::vector<double> raw(std::span<const double> values, int rows) {
  std::vector<double> column(values.begin(), values.end());
  column.resize(at(rows), 0.0);
  return column;
}

/// `ACELER`: number of points, scale factor and interpolation flag; a title; time and two accelerations a point.
void ACELER(CardReader& cards, DynamicData& data, double DTIME) {
  constexpr int titleColumns = 80;
  cards.begin("accelerogram");
  const int points = cards.integer("number of points", 1, mostTimeSteps);
  const double scale = cards.real("scale factor");
  const bool interpolated = readSwitch(cards, "interpolation flag");
  static_cast<void>(cards.line("accelerogram title", titleColumns));
  cards.begin("accelerogram point");
  std::vector<double> times;
  std::array<std::vector<double>, 2> accelerations;
  for (int point = 0; point < points; ++point) {
    const double time = cards.real("time");
    if (interpolated && point > 0 && !(time > times.back())) {
      cards.fault("time", time, "a time after that of the point before");
    }
    times.push_back(time);
    accelerations[0].push_back(scale * cards.real("acceleration along x"));
    accelerations[1].push_back(scale * cards.real("acceleration along y"));
  }
  for (std::size_t i = 0; i < accelerations.size(); ++i) {
    data.FLEC[i] =
        interpolated ? INTERP(times, accelerations[i], DTIME, data.NFLEC) : raw(accelerations[i], data.NFLEC);
  }
}

void selectEvery(DynamicData& data) {
  std::vector<double>& selection = data.FLEC[2];
  selection.assign(at(data.NSTEP), 0.0);
  for (std::size_t i = 0; i < selection.size(); ++i) {
    const bool selected = i == 0 || (i + 1) % at(data.KSAVE) == 0;
    selection[i] = selected ? 1.0 : 0.0;
  }
}

/// FACTDM: the load of a table comes in increments of its total factor; an accelerogram makes its own loads.
std::vector<double> stepFactors(const DynamicData& data) {
  std::vector<double> FACTDM(at(std::max(data.NSTEP, data.NFLEC)), 0.0);
  for (std::size_t i = 0; i < at(data.NFLEC); ++i) {
    const std::vector<double>& total = data.FLEC[0];
    FACTDM[i] = data.KACEL == 1 ? 1.0 : total[i] - (i == 0 ? 0.0 : total[i - 1]);
  }
  return FACTDM;
}

}  // namespace

void requireTimeStep(double DTIME) {
  if (DTIME == 0.0) {
    throw RunEnd(" >>>> REVISAR INCREMENTO DE TIEMPO DTIME=0.0 ", 0.0, 0.0);
  }
}

std::vector<double> INTERP(std::span<const double> times, std::span<const double> values, double DTIME, int rows) {
  constexpr double rounding = 1e-9;  // share of a time step by which sums of time steps may miss a time of the table
  std::vector<double> column(at(rows), 0.0);
  std::size_t last = 0;  // last point that is not behind the time in hand
  for (int row = 0; row < rows; ++row) {
    const double time = times.front() + row * DTIME;
    while (last + 1 < times.size() && times[last + 1] <= time) {
      ++last;
    }
    if (last + 1 < times.size()) {
      const double share = (time - times[last]) / (times[last + 1] - times[last]);
      column[at(row)] = values[last] + share * (values[last + 1] - values[last]);
    } else if (time <= times.back() + rounding * DTIME) {
      column[at(row)] = values.back();
    }
  }
  return column;
}

void readDynamicData(Job& job, Model& model) {
  CardReader& cards = openDynamicData(job, model);
  DynamicData& data = model.dynamics;
  readRecord(cards, model);
  for (std::vector<double>& column : data.FLEC) {
    column.assign(at(std::max(data.NSTEP, data.NFLEC)), 0.0);
  }
  if (data.KACEL == 1) {
    ACELER(cards, data, model.increment.DTIME);
  } else {
    readLoadTable(cards, data);
  }
  if (data.KSAVE > 0) {
    selectEvery(data);
  }
  model.mechanical.FACTD = stepFactors(data);
  model.loop.NINCS = data.NSTEP;
}

}  // namespace zema
