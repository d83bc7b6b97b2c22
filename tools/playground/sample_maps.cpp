#include "sample_maps.h"

#include "adapters/curl/curl_http_client.h"
#include "app/helper_program.h"
#include "app/maps.h"

#include <fstream>

namespace bridge::playground {

void writeSampleServices(const std::filesystem::path& folder) {
    const auto path = folder / profile::services;
    if (std::filesystem::exists(path)) return;
    std::ofstream file(path);
    file << R"({"location": {"latitude": 47.141, "longitude": 9.5215}})" << '\n';
    if (!file.flush()) throw std::runtime_error("The sample services could not be written.");
}

SampleMaps::SampleMaps(EventLoop& loop, Platform& platform, const std::filesystem::path& folder) {
    auto settings = readServiceSettings(folder / profile::services);
    if (!settings.placesServer && !std::filesystem::exists(dataFile("places.db")))
        m_missing.emplace(Needs::places,
                          "There is no file of places; tools/fetch-npm build fetches what it is made of.");
    if (settings.directionsServer || !settings.faultOf("directionsServer").empty()) return;
    if (auto reason = ValhallaServer::hindrance(); !reason.empty()) {
        m_missing.emplace(Needs::directions, std::move(reason));
        return;
    }
    m_valhalla.emplace(folder / "Valhalla", Timetables::ofABus);
    settings.directionsServer = m_valhalla->url();
    openMaps(loop, platform, settings);
}

void SampleMaps::prepare(EventLoop& loop) const {
    if (!m_valhalla) return;
    CurlHTTPClient client(loop);
    // It prepares itself for any question, also for one that it then refuses.
    const HTTPRequest question{"POST", m_valhalla->url() + "/route", {}, "{}", std::chrono::minutes(10)};
    auto asking = client.send(question);
    static_cast<void>(loop.runUntilDone(std::move(asking)));
}

} // namespace bridge::playground
