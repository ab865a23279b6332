// What ends a run early: each way of stopping is one exception type, and only main catches them.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace zema {

/// A stop by a check of the program itself: reported by `RUNEND` on the listing, exit status 0.
/// Before a kernel is chosen the report is short; afterwards it carries the summary of times.
class RunEnd : public std::runtime_error {
 public:
  /// CPARA: the "stopped in" line, cut to 64 characters; A, B: two numbers shown for the reader of the listing;
  /// explanation: what the console says beyond that, may be empty.
  RunEnd(const std::string& CPARA, double A, double B, std::string explanation = {})
      : std::runtime_error(CPARA.substr(0, 64)), A_(A), B_(B), explanation_(std::move(explanation)) {}

  [[nodiscard]] double A() const { return A_; }
  [[nodiscard]] double B() const { return B_; }
  [[nodiscard]] const std::string& explanation() const { return explanation_; }

 private:
  double A_;
  double B_;
  std::string explanation_;
};

/// A stop from inside the constitutive block: reported by `ENDSERROR` in the file "ErrMsg.dat" alone, exit status 1.
class ConstitutiveStop : public std::runtime_error {
 public:
  /// CMESS: the message; A, B: two numbers shown with it; explanation: what the console says beyond that.
  ConstitutiveStop(const std::string& CMESS, double A, double B, std::string explanation)
      : std::runtime_error(CMESS), A_(A), B_(B), explanation_(std::move(explanation)) {}

  [[nodiscard]] double A() const { return A_; }
  [[nodiscard]] double B() const { return B_; }
  [[nodiscard]] const std::string& explanation() const { return explanation_; }

 private:
  double A_;
  double B_;
  std::string explanation_;
};

/// A stop on the spot, without summary: lines for the console and lines for the listing, exit status 1.
class PlainStop : public std::runtime_error {
 public:
  /// console, listing: whole texts with their line ends, either may be empty.
  PlainStop(std::string console, std::string listing)
      : std::runtime_error(console.empty() ? listing : console),
        console_(std::move(console)),
        listing_(std::move(listing)) {}

  [[nodiscard]] const std::string& console() const { return console_; }
  [[nodiscard]] const std::string& listing() const { return listing_; }

 private:
  std::string console_;
  std::string listing_;
};

/// A fault of the deck or of another input file: shown on console and listing, exit status 2.
class InputFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A file that cannot be opened, read or written (missing, no permission, disk full): exit status 3.
class FileFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace zema
