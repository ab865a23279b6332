// Blocks of 32 bytes are mixed into four lanes of 8.
#include "foundation/checksum.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace zema {
namespace {

constexpr std::uint64_t primeA = 0x9E3779B185EBCA87;
constexpr std::uint64_t primeB = 0xC2B2AE3D27D4EB4F;

std::uint64_t mixed(std::uint64_t lane, std::uint64_t word) {
  return std::rotl(lane + word * primeB, 31) * primeA;
}

}  // namespace

void Checksum::addBlock(const unsigned char* block) {
  std::array<std::uint64_t, 4> words{};
  std::memcpy(words.data(), block, blockSize);
  for (std::size_t i = 0; i < words.size(); ++i) lanes_[i] = mixed(lanes_[i], words[i]);
}

void Checksum::add(const void* bytes, std::size_t count) {
  const auto* from = static_cast<const unsigned char*>(bytes);
  count_ += count;
  if (restCount_ > 0) {
    const std::size_t taken = std::min(count, blockSize - restCount_);
    std::copy_n(from, taken, rest_.begin() + static_cast<std::ptrdiff_t>(restCount_));
    restCount_ += taken;
    from += taken;
    count -= taken;
    if (restCount_ < blockSize) return;
    addBlock(rest_.data());
    restCount_ = 0;
  }
  for (; count >= blockSize; count -= blockSize, from += blockSize) addBlock(from);
  std::copy_n(from, count, rest_.begin());
  restCount_ = count;
}

std::uint64_t Checksum::value() const {
  std::uint64_t all = count_;
  for (const std::uint64_t lane : lanes_) all = mixed(all, lane);
  for (std::size_t i = 0; i < restCount_; ++i) all = mixed(all, rest_[i]);
  all = (all ^ (all >> 33)) * primeB;
  return all ^ (all >> 29);
}

}  // namespace zema
