#pragma once

#include <functional>
#include <optional>
#include <string>

namespace bridge::mpd {

// What a private MPD plays through, as the audio_output block of its configuration: the user's sound server when one
// is there, else a sound card, else nothing that could be heard, in real time all the same. MPD's own choice is of no
// use here: where there is no sound at all it takes a server that it has not looked for.
//
// `variable` is the environment; `root` stands before every path that is looked at.
std::string soundOutput(const std::function<std::optional<std::string>(const char*)>& variable,
                        const std::string& root = {});

extern const char* const silentOutput;

} // namespace bridge::mpd
