#include "adapters/mpd/playback.h"

#include "adapters/applescript/errors.h"
#include "adapters/mpd/waiting.h"

namespace bridge::mpd {

namespace {

constexpr std::chrono::milliseconds betweenLooks{10};

// The conversation goes on after it.
class PlaybackFailure : public ScriptError {
public:
    using ScriptError::ScriptError;
};

void takeFromQueue(MpdConnection& mpd, unsigned number, Call& call) {
    try {
        mpd.run(call, [&](auto* connection) { return mpd_send_delete_id(connection, number); });
    } catch (const MpdRefusal&) {
        // The user was quicker.
    }
}

unsigned queue(MpdConnection& mpd, const std::string& uri, Call& call) {
    mpd.send(call, [&](auto* connection) { return mpd_send_add_id(connection, uri.c_str()); });
    const int number = mpd_recv_song_id(mpd.get());
    mpd.finish(call);
    return static_cast<unsigned>(number);
}

} // namespace

Status statusOf(MpdConnection& mpd, Call& call) {
    mpd.send(call, mpd_send_status);
    const std::unique_ptr<mpd_status, decltype(&mpd_status_free)> told(mpd_recv_status(mpd.get()), &mpd_status_free);
    mpd.finish(call);
    Status status;
    if (!told) return status;
    status.isUpdating = mpd_status_get_update_id(told.get()) != 0;
    status.isPlaying = mpd_status_get_state(told.get()) == MPD_STATE_PLAY;
    status.isHeard = status.isPlaying && mpd_status_get_audio_format(told.get());
    if (const char* error = mpd_status_get_error(told.get())) status.error = error;
    return status;
}

namespace {

void awaitSound(MpdConnection& mpd, Call& call) {
    auto status = statusOf(mpd, call);
    while (status.isPlaying && !status.isHeard && status.error.empty()) {
        pauseFor(betweenLooks, call);
        status = statusOf(mpd, call);
    }
    if (!status.error.empty()) throw PlaybackFailure(applescript::eventFailed, "MPD can’t play it: " + status.error);
}

} // namespace

unsigned playSong(MpdConnection& mpd, const std::string& uri, std::optional<unsigned> former, Call& call) {
    mpd.run(call, mpd_send_clearerror);
    const auto number = queue(mpd, uri, call);
    try {
        mpd.run(call, [&](auto* connection) { return mpd_send_play_id(connection, number); });
        awaitSound(mpd, call);
    } catch (const PlaybackFailure&) {
        takeFromQueue(mpd, number, call);
        throw;
    } catch (const MpdRefusal&) {
        takeFromQueue(mpd, number, call);
        throw;
    }
    if (former) takeFromQueue(mpd, *former, call);
    return number;
}

} // namespace bridge::mpd
