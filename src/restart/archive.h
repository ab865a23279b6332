// Values to bytes and back by one list of fields: the same text saves and restores.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zema {

/// Where saved bytes go to or come from. A file of the platform's own form: no other machine has to read it.
class Archive {
 public:
  virtual ~Archive() = default;
  /// Writes `count` bytes, or overwrites them with those that were saved.
  virtual void bytes(void* data, std::size_t count) = 0;
  [[nodiscard]] virtual bool restores() const = 0;
  /// A mark between the parts of a state. Throws InputFault when another one was saved here.
  void section(std::string_view name);

  /// Saves or restores fields: numbers, enumerators, arrays, texts and vectors of these. A vector takes the size that
  /// was saved.
  template <class... Fields>
  void operator()(Fields&... fields) {
    (field(fields), ...);
  }

 private:
  template <class T>
  requires std::is_arithmetic_v<T> || std::is_enum_v<T>
  void field(T& value) { bytes(&value, sizeof value); }
  void field(std::string& text) { sequence(text); }
  template <class T>
  void field(std::span<T>& values) {
    items(values);
  }
  template <class T, std::size_t N>
  void field(std::array<T, N>& values) {
    items(std::span<T>(values));
  }
  template <class T>
  void field(std::vector<T>& values) {
    sequence(values);
  }

  template <class Sequence>
  void sequence(Sequence& values) {
    std::uint64_t size = values.size();
    bytes(&size, sizeof size);
    if (restores()) values.resize(size);
    items(std::span(values));
  }
  template <class T>
  void items(std::span<T> values) {
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>)
      bytes(values.data(), values.size_bytes());
    else
      for (T& value : values) field(value);
  }
};

}  // namespace zema
