// Writing post files: the writers against the C library forming the same stress lines.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "job/job.h"
#include "kernel/solid3d/solid3d.h"
#include "results/post_files.h"

namespace {

constexpr int bricks = 20'000;
constexpr int points = 8;

/// A row of bricks along x with stresses, strains and displacements of changing size.
zema::Model rowOfBricks() {
  zema::Model model;
  model.NSTR1 = 6;
  model.loop.INCRE = 1;
  model.loadStep.ACTIV = {1};
  zema::Mesh& mesh = model.mesh;
  const int nodes = 4 * (bricks + 1);
  mesh.dimensions = mesh.MDOFN = 3;
  mesh.NNODM = points;
  mesh.NTOTV = 3 * nodes;
  mesh.numbering = zema::NodeNumbering(nodes);
  for (int node = 0; node < nodes; ++node) {
    const int corner = node % 4;
    const int section = node / 4;
    mesh.COORD.insert(mesh.COORD.end(),
                      {0.1 * section, corner == 1 || corner == 2 ? 1.0 : 0.0, corner >= 2 ? 1.0 : 0.0});
    mesh.NDOFP.push_back(3);
    mesh.lastDof.push_back(3 * node + 3);
  }
  for (int e = 0; e < bricks; ++e) {
    zema::ElementData element;
    element.MATNO[0] = element.IFASE = 1;
    element.NTYPE = 6;
    element.NNODE = points;
    element.NGAUS = 2;
    element.NINTE = 1;
    mesh.elements.push_back(element);
    for (int k = 1; k <= points; ++k) mesh.LNODS.push_back(4 * e + k);
  }
  const std::vector<int> cubes(bricks, points);
  const std::vector<int> records(bricks, 2);
  model.points = zema::PointStore(model.NSTR1, cubes, records);
  double angle = 0.0;
  for (int e = 0; e < bricks; ++e)
    for (int p = 0; p < points; ++p)
      for (double& value : model.points.mechanical(zema::StateSlot::committed, e, p, 0).first(18))
        value = 1000.0 * std::sin(angle += 1.0);
  for (int i = 0; i < 3 * mesh.NTOTV; ++i) model.working.TDISP.push_back(0.01 * std::sin(angle += 1.0));
  return model;
}

/// The file that takes what is timed; the memory of the machine rather than its disk.
class PostFile {
 public:
  PostFile() : path_(std::filesystem::exists("/dev/shm") ? "/dev/shm/zema_post_bench" : "zema_post_bench") {}
  ~PostFile() { std::filesystem::remove(path_); }
  PostFile(const PostFile&) = delete;
  PostFile& operator=(const PostFile&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::int64_t size() const { return static_cast<std::int64_t>(std::filesystem::file_size(path_)); }

 private:
  std::string path_;
};

/// Times one call of a writer into a file that is begun anew each time.
template <class Write>
void timeWriter(benchmark::State& state, int channelNumber, Write write) {
  const PostFile file;
  std::int64_t bytes = 0;
  zema::Job job;
  job.channels.assign(zema::channel::postMesh, "/dev/null", zema::OpenMode::append);
  job.channels.assign(zema::channel::postResults, "/dev/null", zema::OpenMode::append);
  for (auto _ : state) {
    job.channels.assign(channelNumber, file.path(), zema::OpenMode::fromStart);
    write(job);
    bytes += file.size();
  }
  state.SetBytesProcessed(bytes);
}

void postBlocks(benchmark::State& state, std::array<int, 4> IPOST3D) {
  zema::Model model = rowOfBricks();
  model.increment.IPOST3D = IPOST3D;
  const std::unique_ptr<zema::Kernel> kernel = zema::makeSolid3D();
  timeWriter(state, zema::channel::postResults, [&](zema::Job& job) { POSPRO(job, model, *kernel); });
}

void postStresses(benchmark::State& state) {
  postBlocks(state, {0, 1, 0, 0});
}
BENCHMARK(postStresses)->Unit(benchmark::kMillisecond);

void postDisplacements(benchmark::State& state) {
  postBlocks(state, {1, 0, 0, 0});
}
BENCHMARK(postDisplacements)->Unit(benchmark::kMillisecond);

void postMesh(benchmark::State& state) {
  const zema::Model model = rowOfBricks();
  const std::unique_ptr<zema::Kernel> kernel = zema::makeSolid3D();
  timeWriter(state, zema::channel::postMesh, [&](zema::Job& job) { GEOPOST(job, model, *kernel); });
}
BENCHMARK(postMesh)->Unit(benchmark::kMillisecond);

/// The value lines of the stress block, by the C library.
void postStressesByPrintf(benchmark::State& state) {
  const zema::Model model = rowOfBricks();
  const PostFile file;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::fopen(file.path().c_str(), "w"), std::fclose);
    for (int e = 0; e < bricks; ++e)
      for (int p = 0; p < points; ++p) {
        const double* s = model.points.mechanical(zema::StateSlot::committed, e, p, 0).data();
        std::fprintf(out.get(), "%5s%25.15f%25.15f%25.15f%25.15f%25.15f%25.15f\n",
                     p == 0 ? std::to_string(e + 1).c_str() : "", s[0], s[1], s[3], s[2], s[4], s[5]);
      }
    std::fflush(out.get());
    bytes += file.size();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(postStressesByPrintf)->Unit(benchmark::kMillisecond);

}  // namespace
