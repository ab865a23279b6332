// How a call ends, in words.
#pragma once

#include <string>

#include "foundation/errors.h"
#include "foundation/layout.h"

namespace zema {

/// "goes on", or the kind of the stop with its message and its two numbers: "run end", "law stop", "fault" or "stop".
template <class Call>
std::string endOf(const Call& call) {
  try {
    static_cast<void>(call());
  } catch (const RunEnd& end) {
    return "run end " + (end.what() + FreeLine(end.A(), end.B()).text()) + end.explanation();
  } catch (const ConstitutiveStop& end) {
    return "law stop " + (end.what() + FreeLine(end.A(), end.B()).text()) + end.explanation();
  } catch (const InputFault& fault) {
    return std::string("fault ") + fault.what();
  } catch (const PlainStop& stop) {
    return "stop " + stop.console() + stop.listing();
  }
  return "goes on";
}

}  // namespace zema
