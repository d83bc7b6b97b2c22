#pragma once

#include "adapters/mpd/mpd_server.h"
#include "adapters/musicapp/player.h"

#include <memory>
#include <mpd/client.h>

namespace bridge::mpd {

using musicapp::Call;

// What MPD refuses, in its words. `index` is the place in a list of commands.
class MpdRefusal : public ScriptError {
public:
    MpdRefusal(enum mpd_server_error code, unsigned index, const std::string& message);

    enum mpd_server_error code() const { return m_code; }
    unsigned index() const { return m_index; }

private:
    enum mpd_server_error m_code;
    unsigned m_index;
};

// The program does something wrong, or nothing at all.
[[noreturn]] void fail(const std::string& message);

// A control character would end our process inside libmpdclient, so no text goes there before it was here. Throws with
// `what` it was.
const std::string& sendable(const std::string& text, const std::string& what);

// One conversation with MPD. Every wait ends with the call's time, or when the call is given up; the conversation is
// then of no more use, as it is after everything but a refusal.
class MpdConnection {
public:
    MpdConnection(const MpdServer& server, Call& call);

    mpd_connection* get() const { return m_connection.get(); }
    // Between two requests: whether it can take another.
    bool isUsable() const;

    // Sends a request by one of the mpd_send_ functions, and returns when an answer begins.
    template <typename Request> void send(Call& call, Request request) {
        begin(call);
        check(request(get()), call);
        awaitAnswer(call);
    }
    // The end of an answer. Throws what went wrong with it.
    void finish(Call& call);
    template <typename Request> void run(Call& call, Request request) {
        send(call, request);
        finish(call);
    }
    // Sends several requests that MPD begins only when it has all of them; it stops at the first that fails.
    template <typename Request> void runList(Call& call, Request request) {
        begin(call);
        check(mpd_command_list_begin(get(), false), call);
        request(get());
        send(call, mpd_command_list_end);
        finish(call);
    }

private:
    struct Free {
        void operator()(mpd_connection* connection) const { mpd_connection_free(connection); }
    };

    void begin(Call& call);
    void check(bool isGood, Call& call);
    void awaitAnswer(Call& call);

    std::unique_ptr<mpd_connection, Free> m_connection;
};

} // namespace bridge::mpd
