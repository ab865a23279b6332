// The head of the deck: kind of problem, sizes and switches.
#pragma once

#include <string_view>

namespace zema {

class Channel;
struct ControlRecord;
struct Job;
struct TextRecord;

/// `INPU1`: reads the head of the deck into job.CTEXT and job.KCONT, echoes it on the listing and checks it.
/// Throws PlainStop for an unknown problem word, RunEnd for a size that is out of bounds, InputFault for bad cards.
void INPU1(Job& job);

/// `CHKCON` of a kernel: the checks of the sizes once more, for a restart of a problem that has none; throws RunEnd.
void refuseRestart(Channel& listing, const ControlRecord& KCONT);

}  // namespace zema
