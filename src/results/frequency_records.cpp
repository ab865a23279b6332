// Writes unformatted sequential records.
#include "results/frequency_records.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <span>
#include <tuple>

#include "model/frequency_source.h"

namespace zema {

namespace {

constexpr const char* elasticFile = "Co.txt";
constexpr const char* secantFile = "Csec.txt";
constexpr const char* stressFile = "Strsg.txt";

/// A record in the making.
class Record {
 public:
  Record& operator<<(int value) {
    const auto stored = static_cast<std::int32_t>(value);
    return append(&stored, sizeof stored);
  }
  Record& operator<<(double value) { return append(&value, sizeof value); }
  Record& operator<<(std::span<const double> values) { return append(values.data(), values.size_bytes()); }

  void writeTo(Channel& file) const {
    const auto bytes = static_cast<std::uint32_t>(bytes_.size());
    std::string mark(sizeof bytes, '\0');
    std::memcpy(mark.data(), &bytes, sizeof bytes);
    file.buffer() += mark + bytes_ + mark;
    file.commitBuffer();
  }

 private:
  Record& append(const void* data, std::size_t size) {
    bytes_.append(static_cast<const char*>(data), size);
    return *this;
  }

  std::string bytes_;
};

/// Batch, load step and increment of the last secant record of an earlier run.
FrequencyState lastState() {
  constexpr std::streamoff recordBytes = 5 * 4 + 36 * 8;
  struct {
    std::uint32_t bytes;
    std::int32_t batch, element, place, ILOAD, INCRE;
  } head{};
  std::ifstream file(secantFile, std::ios::binary);
  file.seekg(-(recordBytes + 8), std::ios::end);
  file.read(reinterpret_cast<char*>(&head), sizeof head);  // NOLINT: bytes of a file
  if (!file || head.bytes != recordBytes || head.batch < 1)
    throw InputFault(std::string(secantFile) +
                     ": the last record of the run before is missing or damaged; a restart takes up its batch number");
  return {head.batch, head.ILOAD, head.INCRE};
}

/// The batch number counts the increments that have left records.
int batchOf(const Job& job, Model& model) {
  FrequencyState& state = model.frequencies;
  const LoopState& loop = model.loop;
  if (state.batch == 0) {
    const bool goesOn = job.CTEXT.CSTART == "START2" && std::ifstream(secantFile).good();
    state = goesOn ? lastState() : FrequencyState{1, loop.ILOAD, loop.INCRE};
  }
  if (std::tie(loop.ILOAD, loop.INCRE) > std::tie(state.ILOAD, state.INCRE))
    state = {state.batch + 1, loop.ILOAD, loop.INCRE};
  return state.batch;
}

Channel& opened(std::optional<Channel>& file, const char* name) {
  if (!file) file = Channel::open(name, OpenMode::append);
  return *file;
}

/// 100 i + 10 j + k of a place in the NGAUS cube of an element.
int placeCode(int point, int NGAUS) {
  const int i = point / (NGAUS * NGAUS) + 1;
  const int j = point / NGAUS % NGAUS + 1;
  return 100 * i + 10 * j + point % NGAUS + 1;
}

}  // namespace

void writeElasticRecords(Job& job, const Model& model, const Kernel& kernel) {
  static constexpr Layout text("I2 1X 36E15.3 1X E8.3");
  const FrequencySource* const source = kernel.frequencySource();
  if (source == nullptr) return;
  Channel file = Channel::open(elasticFile, OpenMode::append);
  Channel& channel = job.channels[channel::elasticRecords];
  for (int c = 1; c <= static_cast<int>(model.composites.all.size()); ++c) {
    if (model.composites(c).ELECOM.empty()) continue;
    const FrequencySource::Stiffness stiffness = source->elasticStiffness(c);
    const std::span<const double> values(stiffness);
    (Record() << c << values << source->density(c)).writeTo(file);
    channel.write(text, c, values, source->density(c));
  }
  file.close();
}

void writeSecantRecords(Job& job, Model& model, const Kernel& kernel) {
  const FrequencySource* const source = kernel.frequencySource();
  if (source == nullptr) return;
  const LoopState& loop = model.loop;
  const PointStore& points = model.points;
  std::optional<Channel> secants, stresses;
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    for (int point = 0; point < points.pointsOf(e); ++point) {
      if (points.internal(StateSlot::trial, e, point, 0)[internal::damage] == 0.0) continue;
      const int place = placeCode(point, model.mesh.element(e).NGAUS);
      const FrequencySource::Stiffness secant = source->secantStiffness(model, e, point);
      (Record() << batchOf(job, model) << e + 1 << place << loop.ILOAD << loop.INCRE << std::span<const double>(secant))
          .writeTo(opened(secants, secantFile));
      if (model.control.LARGE == 1) {
        const auto record = points.mechanical(StateSlot::trial, e, point, 0);
        const std::span<const double> stress =
            record.subspan(static_cast<std::size_t>(points.places().STRSG()), static_cast<std::size_t>(model.NSTR1));
        (Record() << e + 1 << place << loop.ILOAD << loop.INCRE << stress).writeTo(opened(stresses, stressFile));
      }
    }
  }
  for (std::optional<Channel>* file : {&secants, &stresses})
    if (*file) (*file)->close();
}

}  // namespace zema
