// A checksum that tells an altered or shortened file from a whole one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zema {

/// A 64-bit checksum of bytes that come in pieces of any size; the pieces do not matter, only the bytes. Not meant to
/// withstand forgery. Four lanes of multiplications and rotations, after xxHash (Collet, 2012).
class Checksum {
 public:
  void add(const void* bytes, std::size_t count);
  void add(std::string_view text) { add(text.data(), text.size()); }
  /// Of all bytes so far.
  [[nodiscard]] std::uint64_t value() const;

 private:
  static constexpr std::size_t blockSize = 32;

  void addBlock(const unsigned char* block);

  std::array<std::uint64_t, 4> lanes_{1, 2, 3, 4};
  std::array<unsigned char, blockSize> rest_{};  // bytes that do not fill a block yet
  std::size_t restCount_ = 0;
  std::uint64_t count_ = 0;
};

}  // namespace zema
