// Files of records without a name: positioned writing and reading, each checked.
#include "foundation/work_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "foundation/errors.h"

namespace zema {
namespace {

[[noreturn]] void failed(const char* action, const std::string& path, const char* reason) {
  throw FileFault(std::string("cannot ") + action + " the work file " + path + ": " + reason);
}

// A new file whose name begins with `path` and is given back at once.
int openWithoutName(const std::string& path) {
  std::string name = path + ".XXXXXX";
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) failed("open", path, std::strerror(errno));
  ::unlink(name.c_str());
  return descriptor;
}

// Moves all bytes of a part by pwrite or pread.
template <class Byte, class Move>
void moveAll(std::span<Byte> part, off_t at, const char* action, const std::string& path, Move move) {
  while (!part.empty()) {
    const ssize_t moved = move(part.data(), part.size(), at);
    if (moved < 0 && errno == EINTR) continue;
    if (moved <= 0) failed(action, path, moved < 0 ? std::strerror(errno) : "it ends too early");
    part = part.subspan(static_cast<std::size_t>(moved));
    at += moved;
  }
}

}  // namespace

WorkFile::WorkFile(std::string path, std::size_t recordBytes)
    : path_(std::move(path)), recordBytes_(recordBytes), descriptor_(openWithoutName(path_)) {}

WorkFile::~WorkFile() {
  ::close(descriptor_);
}

void WorkFile::write(int record, std::initializer_list<std::span<const std::byte>> parts) {
  auto at = static_cast<off_t>(recordBytes_) * record;
  for (const std::span<const std::byte> part : parts) {
    moveAll(part, at, "write", path_, [this](const std::byte* data, std::size_t size, off_t from) {
      return ::pwrite(descriptor_, data, size, from);
    });
    at += static_cast<off_t>(part.size());
  }
}

void WorkFile::read(int record, std::initializer_list<std::span<std::byte>> parts) const {
  auto at = static_cast<off_t>(recordBytes_) * record;
  for (const std::span<std::byte> part : parts) {
    moveAll(part, at, "read", path_,
            [this](std::byte* data, std::size_t size, off_t from) { return ::pread(descriptor_, data, size, from); });
    at += static_cast<off_t>(part.size());
  }
}

}  // namespace zema
