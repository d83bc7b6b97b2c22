#include "adapters/mpd/sound_output.h"

#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge::mpd {
namespace {

using testing::HasSubstr;

class SoundOutput : public testing::Test {
protected:
    std::string chosen() const {
        return soundOutput(
            [](const char* name) {
                return std::string_view(name) == "XDG_RUNTIME_DIR" ? std::optional<std::string>("/run/user/1")
                                                                   : std::nullopt;
            },
            root.path());
    }
    void make(const char* path) const {
        const auto file = root / path;
        std::filesystem::create_directories(file.parent_path());
        putFile(file, "");
    }

    TemporaryFolder root;
};

TEST_F(SoundOutput, IsSilenceWhereThereIsNoSound) {
    EXPECT_EQ(chosen(), silentOutput);
    make("dev/snd/controlC0");
    make("dev/snd/pcmC0D0c"); // a microphone
    EXPECT_EQ(chosen(), silentOutput);
}

TEST_F(SoundOutput, IsTheNearestToTheUser) {
    make("dev/snd/pcmC0D0p");
    EXPECT_THAT(chosen(), HasSubstr("\"alsa\""));
    make("run/user/1/pipewire-0");
    EXPECT_THAT(chosen(), HasSubstr("\"pipewire\""));
    make("run/user/1/pulse/native");
    EXPECT_THAT(chosen(), HasSubstr("\"pulse\""));
}

} // namespace
} // namespace bridge::mpd
