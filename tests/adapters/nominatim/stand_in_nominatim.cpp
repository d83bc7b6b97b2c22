#include "tests/adapters/nominatim/stand_in_nominatim.h"

#include "base/json_writer.h"
#include "base/name_words.h"
#include "tools/agent_server/http_text.h"
#include "tools/agent_server/tcp_socket.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>

namespace bridge {

namespace {

constexpr std::string_view path = "/osm/search?";

std::string unescaped(const std::string& text) {
    std::string result;
    for (size_t index = 0; index < text.size(); ++index)
        if (text[index] == '%' && index + 2 < text.size()) {
            result += static_cast<char>(std::stoi(text.substr(index + 1, 2), nullptr, 16));
            index += 2;
        } else {
            result += text[index];
        }
    return result;
}

std::map<std::string, std::string> parametersOf(const std::string& query) {
    std::map<std::string, std::string> parameters;
    std::istringstream stream(query);
    for (std::string pair; std::getline(stream, pair, '&');)
        parameters[pair.substr(0, pair.find('='))] = unescaped(pair.substr(pair.find('=') + 1));
    return parameters;
}

bool isIn(const std::string& viewbox, MapCoordinate place) {
    std::array<double, 4> edges{};
    std::istringstream stream(viewbox);
    char comma = 0;
    if (!(stream >> edges[0] >> comma >> edges[1] >> comma >> edges[2] >> comma >> edges[3])) return false;
    return place.longitude >= edges[0] && place.latitude >= edges[1] && place.longitude <= edges[2] &&
           place.latitude <= edges[3];
}

std::string displayName(const WorldPlace& place) {
    return fmt::format("{}, {}, {}", place.name, place.region, place.country);
}

bool isMeant(const WorldPlace& place, const std::vector<std::string>& sought) {
    std::string all = displayName(place);
    for (const auto& name : place.otherNames)
        all += " " + name;
    const auto words = nameWords(all);
    return !sought.empty() && std::ranges::all_of(sought, [&](const std::string& word) {
        return std::ranges::find(words, word) != words.end();
    });
}

} // namespace

StandInNominatim::StandInNominatim(std::vector<WorldPlace> world)
    : m_world(std::move(world)), m_listener(listenOnLoopback(0)), m_thread([this] { serve(); }) {}

StandInNominatim::~StandInNominatim() {
    m_isOver = true;
    // Wakes the thread.
    shutdown(m_listener.get(), SHUT_RDWR);
    m_thread.join();
}

std::string StandInNominatim::url() const {
    return fmt::format("http://127.0.0.1:{}/osm/", portOf(m_listener));
}

void StandInNominatim::answerWith(std::string bytes) {
    const std::lock_guard lock(m_mutex);
    m_scripted = std::move(bytes);
}

std::vector<StandInAgentServer::Received> StandInNominatim::received() const {
    const std::lock_guard lock(m_mutex);
    return m_received;
}

void StandInNominatim::serve() {
    while (!m_isOver) {
        pollfd waiting{m_listener.get(), POLLIN, 0};
        poll(&waiting, 1, -1);
        if (m_isOver) return;
        if (const auto connection = acceptConnection(m_listener)) serveOne(connection);
    }
}

void StandInNominatim::serveOne(const FileDescriptor& connection) {
    std::string input;
    while (!m_isOver) {
        if (const auto request = parseRequest(input)) {
            const auto answer = answerTo(*request);
            {
                const std::lock_guard lock(m_mutex);
                m_received.push_back(*request);
            }
            size_t sent = 0;
            while (sent < answer.size()) {
                pollfd waiting{connection.get(), POLLOUT, 0};
                poll(&waiting, 1, -1);
                const auto count = send(connection.get(), answer.data() + sent, answer.size() - sent, MSG_NOSIGNAL);
                if (count <= 0) return;
                sent += static_cast<size_t>(count);
            }
            return;
        }
        pollfd waiting{connection.get(), POLLIN, 0};
        poll(&waiting, 1, -1);
        std::array<char, 65536> buffer{};
        const auto count = recv(connection.get(), buffer.data(), buffer.size(), 0);
        if (count <= 0) return;
        input.append(buffer.data(), static_cast<size_t>(count));
    }
}

std::string StandInNominatim::answerTo(const StandInAgentServer::Received& request) const {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_scripted.empty()) return m_scripted;
    }
    if (request.method != "GET" || !request.path.starts_with(path)) return jsonAnswer(404, "{}");
    auto parameters = parametersOf(request.path.substr(path.size()));
    if (parameters["format"] != "jsonv2") return answerText(200, "text/html", "<html></html>");
    const auto sought = nameWords(parameters["q"]);
    std::vector<WorldPlace> found;
    std::ranges::copy_if(m_world, std::back_inserter(found),
                         [&](const WorldPlace& place) { return isMeant(place, sought); });
    const auto& viewbox = parameters["viewbox"];
    std::ranges::stable_sort(found, [&](const WorldPlace& left, const WorldPlace& right) {
        const bool isLeft = isIn(viewbox, left.coordinate);
        return isLeft != isIn(viewbox, right.coordinate) ? isLeft : left.population > right.population;
    });
    found.resize(std::min(found.size(), static_cast<size_t>(std::stoul("0" + parameters["limit"]))));
    JSONWriter writer;
    writer.beginArray();
    for (const auto& place : found) {
        writer.beginObject();
        writer.name("display_name");
        writer.string(displayName(place));
        writer.name("lat");
        writer.string(fmt::format("{}", place.coordinate.latitude));
        writer.name("lon");
        writer.string(fmt::format("{}", place.coordinate.longitude));
        writer.name("name");
        writer.string(place.name);
        writer.endObject();
    }
    writer.endArray();
    return jsonAnswer(200, writer.take());
}

} // namespace bridge
