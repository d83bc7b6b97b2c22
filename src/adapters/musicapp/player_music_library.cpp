#include "adapters/musicapp/player_music_library.h"

#include "base/offload.h"

namespace bridge::musicapp {

namespace {

// As long as a script may take that asks for the same.
constexpr std::chrono::seconds patience{30};

// Whoever drops the task doesn't want its answer any more.
struct GiveUp {
    explicit GiveUp(std::shared_ptr<Call> dropped) : call(std::move(dropped)) {}
    GiveUp(const GiveUp&) = delete;
    GiveUp& operator=(const GiveUp&) = delete;
    ~GiveUp() { call->cancel(); }

    std::shared_ptr<Call> call;
};

} // namespace

PlayerMusicLibrary::PlayerMusicLibrary(EventLoop& loop, std::shared_ptr<Player> player)
    : m_loop(loop), m_player(std::move(player)), m_worker(std::make_unique<Worker>()) {}

PlayerMusicLibrary::~PlayerMusicLibrary() {
    for (const auto& running : m_running)
        if (const auto call = running.lock()) call->cancel();
    m_worker.reset();
}

Task<ContentsPointer> PlayerMusicLibrary::contents() {
    const auto call = std::make_shared<Call>(patience);
    const GiveUp whenDropped(call);
    std::erase_if(m_running, [](const auto& running) { return running.expired(); });
    m_running.push_back(call);
    auto reading = offload(m_loop, *m_worker, [player = m_player, call] { return player->contents(*call); });
    auto contents = co_await reading;
    co_return contents;
}

} // namespace bridge::musicapp
