#include "adapters/mpd/sound_output.h"

#include <filesystem>

namespace bridge::mpd {

const char* const silentOutput = "audio_output {\n  type \"null\"\n  name \"Silence\"\n  sync \"yes\"\n}\n";

namespace {

std::string output(const std::string& type) {
    return "audio_output {\n  type \"" + type + "\"\n  name \"Sound\"\n}\n";
}

bool hasSoundCard(const std::filesystem::path& devices) {
    std::error_code problem;
    for (const auto& device : std::filesystem::directory_iterator(devices, problem)) {
        const auto name = device.path().filename().string();
        if (name.starts_with("pcm") && name.ends_with('p')) return true; // one that plays
    }
    return false;
}

} // namespace

std::string soundOutput(const std::function<std::optional<std::string>(const char*)>& variable,
                        const std::string& root) {
    std::error_code problem;
    const auto runtime = variable("XDG_RUNTIME_DIR");
    const auto isThere = [&](const char* socket) {
        return runtime && std::filesystem::exists(root + *runtime + socket, problem);
    };
    if (variable("PULSE_SERVER") || isThere("/pulse/native")) return output("pulse");
    if (isThere("/pipewire-0")) return output("pipewire");
    if (hasSoundCard(root + "/dev/snd")) return output("alsa");
    return silentOutput;
}

} // namespace bridge::mpd
