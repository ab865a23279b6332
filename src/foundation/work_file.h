// A file of records for the program's own use, which nobody has to clear away.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>

namespace zema {

/// A file of records of one length, written and read by their number. It lies in the folder of its path, but its name
/// is taken out of the folder as soon as it is open: however the program ends, the system gives the space free.
class WorkFile {
 public:
  /// path: folder and first part of the name; recordBytes: length of a record. Throws FileFault.
  WorkFile(std::string path, std::size_t recordBytes);
  ~WorkFile();
  WorkFile(const WorkFile&) = delete;
  WorkFile& operator=(const WorkFile&) = delete;

  /// Writes record number `record` (from 0): the parts one behind the other. Throws FileFault.
  void write(int record, std::initializer_list<std::span<const std::byte>> parts);

  /// Reads record number `record`, which has been written, into the parts. Throws FileFault.
  void read(int record, std::initializer_list<std::span<std::byte>> parts) const;

  [[nodiscard]] std::size_t recordBytes() const { return recordBytes_; }

 private:
  std::string path_;
  std::size_t recordBytes_;
  int descriptor_;
};

}  // namespace zema
