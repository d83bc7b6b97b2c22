#pragma once

#include "adapters/musicapp/player.h"

namespace bridge::mpd {

// Waits until the descriptor is ready for one of the events of poll(). Throws when the call's time is over or it was
// given up.
void awaitDescriptor(int descriptor, short events, musicapp::Call& call);

// Lets some time pass, for what can't be waited for otherwise. Throws likewise.
void pauseFor(std::chrono::milliseconds time, musicapp::Call& call);

} // namespace bridge::mpd
