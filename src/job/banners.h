// The two banners of a run: on the console and on listing and log.
#pragma once

namespace zema {

class Channel;
class Console;

/// `CARTEL`: the banner on the standard output.
void CARTEL(const Console& console);

/// `PRESENT`: the banner of a job on one of its text files.
void PRESENT(Channel& channel);

}  // namespace zema
