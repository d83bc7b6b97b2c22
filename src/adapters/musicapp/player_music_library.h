#pragma once

#include "adapters/musicapp/player.h"
#include "base/event_loop.h"
#include "base/worker.h"

namespace bridge::musicapp {

// The music of a player, read on a thread of its own.
class PlayerMusicLibrary : public MusicLibrary {
public:
    PlayerMusicLibrary(EventLoop& loop, std::shared_ptr<Player> player);
    // Gives up what is running. The tasks that wait for it never hear of it.
    ~PlayerMusicLibrary() override;

    Task<ContentsPointer> contents() override;

private:
    EventLoop& m_loop;
    std::shared_ptr<Player> m_player;
    std::vector<std::weak_ptr<Call>> m_running;
    std::unique_ptr<Worker> m_worker;
};

} // namespace bridge::musicapp
