#include "bridges/music/music_scripts.h"

#include "bridges/scripting/script_literal.h"

namespace bridge {

namespace {

// Sets resolvedTracks, or ends the script.
std::string resolving(const std::vector<MusicLibrarySongReference>& songs) {
    std::string script = "tell application \"Music\"\n"
                         "    set resolvedTracks to {}\n"
                         "    ";
    bool isFirst = true;
    for (const auto& song : songs) {
        if (!isFirst) script += "\n";
        isFirst = false;
        script += "set matchingTracks to search library playlist 1 for ";
        appendScriptLiteral(script, song.title);
        script += " only songs\n"
                  "set selectedTrack to missing value\n"
                  "repeat with candidateTrack in matchingTracks\n"
                  "    if (persistent ID of candidateTrack as text) is ";
        appendScriptLiteral(script, song.id);
        script += " then\n"
                  "        set selectedTrack to candidateTrack\n"
                  "        exit repeat\n"
                  "    end if\n"
                  "end repeat\n"
                  "if selectedTrack is missing value then error \"Library song not found\" number -1728\n"
                  "set end of resolvedTracks to selectedTrack";
    }
    return script.append("\n    set targetPlaylist to ");
}

constexpr auto playlistEnding =
    "\n    repeat with selectedTrack in resolvedTracks"
    "\n        duplicate selectedTrack to targetPlaylist"
    "\n    end repeat"
    "\n    return {(persistent ID of targetPlaylist as text), (name of targetPlaylist as text), "
    "(description of targetPlaylist as text), (count of tracks of targetPlaylist)}"
    "\nend tell";

} // namespace

std::string createPlaylistScript(const std::string& name, const std::string& description,
                                 const std::vector<MusicLibrarySongReference>& songs) {
    auto script = resolving(songs);
    script += "make new user playlist with properties {name:";
    appendScriptLiteral(script, name);
    script += ", description:";
    appendScriptLiteral(script, description);
    return script.append("}").append(playlistEnding);
}

std::string addSongsScript(const std::string& playlistID, const std::vector<MusicLibrarySongReference>& songs) {
    auto script = resolving(songs);
    script += "first user playlist whose persistent ID is ";
    appendScriptLiteral(script, playlistID);
    return script.append(playlistEnding);
}

std::string deletePlaylistScript(const std::string& identifier) {
    return "tell application \"Music\"\n"
           "    set matchingPlaylists to (every user playlist whose persistent ID is " +
           scriptLiteral(identifier) +
           ")\n"
           "    if (count of matchingPlaylists) is not 1 then error \"User playlist not found\" number -1728\n"
           "    delete item 1 of matchingPlaylists\n"
           "end tell";
}

std::string playSongScript(const std::string& identifier) {
    return "tell application \"Music\"\n"
           "    set matchingTracks to (every track of library playlist 1 whose persistent ID is " +
           scriptLiteral(identifier) +
           ")\n"
           "    if (count of matchingTracks) is not 1 then error \"Library song not found\" number -1728\n"
           "    set selectedTrack to item 1 of matchingTracks\n"
           "    play selectedTrack\n"
           "    return {(persistent ID of selectedTrack as text), (name of selectedTrack as text), "
           "(artist of selectedTrack as text), (album of selectedTrack as text), "
           "(duration of selectedTrack as real)}\n"
           "end tell";
}

std::string pauseScript() {
    return "tell application \"Music\" to pause";
}

} // namespace bridge
