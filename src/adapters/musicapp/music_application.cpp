#include "adapters/musicapp/music_application.h"

#include "adapters/musicapp/arguments.h"
#include "adapters/musicapp/library_playlist.h"
#include "adapters/musicapp/track.h"
#include "base/log.h"

#include <algorithm>

namespace bridge::musicapp {

namespace {

constexpr int cantCreate = -2710;
// A script that is over has no time left of its own.
constexpr std::chrono::seconds timeToTidyUp{5};

Dictionary terms() {
    return {
        .classes =
            {{"application", "applications", {"name"}, {"playlist", "library playlist", "user playlist", "track"}},
             {"playlist", "playlists", {"name", "persistent id", "description"}, {"track"}},
             {"library playlist", "library playlists", {}, {}, "playlist"},
             {"user playlist", "user playlists", {}, {}, "playlist"},
             {"track", "tracks", {"name", "persistent id", "artist", "album", "duration"}, {}}},
        .commands = {{"play", {}}, {"pause", {}}, {"search", {"for", "only"}}},
        .constants = {"songs", "all"},
    };
}

template <typename Kind> std::shared_ptr<Kind> objectOf(const Value& value) {
    const auto* object = value.as<ObjectPointer>();
    return object ? std::dynamic_pointer_cast<Kind>(*object) : nullptr;
}

std::string whoOf(const Value& value, const Object& otherwise) {
    const auto* object = value.as<ObjectPointer>();
    return object && *object ? (*object)->description() : otherwise.description();
}

std::vector<Value> listed(const Value& value) {
    const auto* list = value.as<List>();
    return list ? **list : std::vector{value};
}

} // namespace

MusicApplication::MusicApplication(Player& player) : m_player(player), m_dictionary(terms()) {}

Value MusicApplication::property(const std::string& name, ScriptCall&) {
    if (name == "name") return this->name();
    throw cantGet(name + " of " + description());
}

void MusicApplication::setProperty(const std::string& name, const Value&, ScriptCall&) {
    cantSet(name, *this);
}

std::vector<ObjectPointer> MusicApplication::elements(const std::string& className, ScriptCall& call) {
    const auto library = [&] { return std::make_shared<LibraryPlaylist>(index(call)); };
    if (className == "library playlist") return {library()};
    if (className == "user playlist") return playlists(call);
    if (className == "track") return library()->elements(className, call);
    if (className != "playlist") throw cantGet("every " + className + " of " + description());
    auto all = playlists(call);
    all.insert(all.begin(), library());
    return all;
}

std::optional<std::vector<ObjectPointer>> MusicApplication::elementsWhere(const std::string& className,
                                                                          const std::string& property,
                                                                          const Value& value, ScriptCall& call) {
    if (className != "track") return std::nullopt;
    return LibraryPlaylist(index(call)).elementsWhere(className, property, value, call);
}

Value MusicApplication::perform(const Command& command, ScriptCall& call) {
    if (command.name == "search") {
        const auto library = objectOf<LibraryPlaylist>(command.direct.value_or(MissingValue{}));
        if (library) return library->search(command);
    }
    if (command.name == "make") return make(command, call);
    if (command.name == "duplicate") return duplicate(command, call);
    if (command.name == "delete") return remove(command, call);
    if (command.name == "play") return play(command, call);
    if (command.name == "pause") {
        m_player.pause(call);
        return MissingValue{};
    }
    // Without windows there is nothing to be brought to the front, and nobody who would see a difference.
    if (command.name == "activate") return MissingValue{};
    doesNotUnderstand(whoOf(command.direct.value_or(MissingValue{}), *this), command);
}

void MusicApplication::scriptEnded() {
    try {
        Call call(timeToTidyUp);
        flush(call);
    } catch (const std::exception& error) {
        log::note(std::string("What a script changed in Music last was lost: ") + error.what());
    }
    m_changed.clear();
}

Value MusicApplication::make(const Command& command, ScriptCall& call) {
    const auto& type = required(command, "new");
    const auto* kind = type.as<ClassName>();
    if (!kind || (kind->name != "user playlist" && kind->name != "playlist"))
        throw ScriptError(cantCreate, "Music makes nothing but user playlists.");
    std::string name = "untitled playlist", description;
    if (const auto* properties = command.parameter("with properties"); properties && properties->as<Record>())
        for (const auto& [key, value] : **properties->as<Record>()) {
            if (key != "name" && key != "description")
                throw ScriptError(cantCreate, "A new playlist has a name and a description, but no " + key + ".");
            (key == "name" ? name : description) = textArgument(value);
        }
    flush(call); // one of them may have the name
    m_player.checkNewName(name, call);
    return m_changed.emplace_back(std::make_shared<UserPlaylist>(m_player, name, description));
}

Value MusicApplication::duplicate(const Command& command, ScriptCall&) {
    const auto& to = required(command, "to");
    const auto* place = to.as<InsertionPoint>();
    const auto playlist = objectOf<UserPlaylist>(place ? Value(place->container) : to);
    if (!playlist) doesNotUnderstand(whoOf(to, *this), command);
    const auto direct = command.direct.value_or(MissingValue{});
    for (const auto& each : listed(direct))
        if (!objectOf<Track>(each)) doesNotUnderstand(whoOf(each, *this), command);
    if (std::ranges::find(m_changed, playlist) == m_changed.end()) m_changed.push_back(playlist);
    for (const auto& each : listed(direct))
        playlist->add(objectOf<Track>(each)->id());
    return direct;
}

Value MusicApplication::remove(const Command& command, ScriptCall& call) {
    const auto direct = command.direct.value_or(MissingValue{});
    for (const auto& each : listed(direct)) {
        const auto playlist = objectOf<UserPlaylist>(each);
        if (!playlist) doesNotUnderstand(whoOf(each, *this), command);
        std::erase(m_changed, playlist);
        playlist->remove(call);
    }
    return MissingValue{};
}

Value MusicApplication::play(const Command& command, ScriptCall& call) {
    const auto direct = command.direct.value_or(MissingValue{});
    const auto track = objectOf<Track>(direct);
    if (!track) doesNotUnderstand(whoOf(direct, *this), command);
    m_player.play(track->id(), call);
    return MissingValue{};
}

std::shared_ptr<LibraryIndex> MusicApplication::index(ScriptCall& call) {
    auto contents = m_player.contents(call);
    if (!m_index || m_index->contents() != contents) m_index = std::make_shared<LibraryIndex>(std::move(contents));
    return m_index;
}

std::vector<ObjectPointer> MusicApplication::playlists(ScriptCall& call) {
    flush(call);
    std::vector<ObjectPointer> all;
    for (const auto& playlist : m_player.contents(call)->playlists)
        all.push_back(std::make_shared<UserPlaylist>(m_player, playlist));
    return all;
}

void MusicApplication::flush(ScriptCall& call) {
    for (const auto& playlist : std::exchange(m_changed, {}))
        if (playlist->isKeptBack()) playlist->flush(call);
}

} // namespace bridge::musicapp
