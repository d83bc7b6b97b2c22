#include "adapters/mpd/mpd_server.h"

#include <gmock/gmock.h>

namespace bridge::mpd {
namespace {

TEST(MpdServerName, IsReadAsMpdsOwnClientsReadIt) {
    EXPECT_EQ(parseServer("/run/mpd/socket", ""), MpdServer{"/run/mpd/socket"});
    EXPECT_EQ(parseServer("music", "6601"), (MpdServer{"music", "6601"}));
    EXPECT_EQ(parseServer("secret@music", ""), (MpdServer{"music", "6600", "secret"}));
    EXPECT_EQ(parseServer("secret@/socket", ""), (MpdServer{"/socket", "6600", "secret"}));
    for (const auto* nothing : {"", "@abstract", "secret@", "secret@@abstract"})
        EXPECT_EQ(parseServer(nothing, ""), std::nullopt) << nothing;
}

} // namespace
} // namespace bridge::mpd
