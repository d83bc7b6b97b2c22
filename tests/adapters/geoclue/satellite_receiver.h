#pragma once

#include "base/file_descriptor.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace bridge {

// A receiver for satellite navigation, as GeoClue reads them: sentences of NMEA 0183 on a socket. It tells its place to
// whoever connects, and again when it has moved.
class SatelliteReceiver {
public:
    SatelliteReceiver(const std::string& socket, double latitude, double longitude);
    SatelliteReceiver(const SatelliteReceiver&) = delete;
    SatelliteReceiver& operator=(const SatelliteReceiver&) = delete;
    ~SatelliteReceiver();

    void move(double latitude, double longitude);

private:
    void serve();

    std::mutex m_mutex;
    std::string m_sentence;
    std::vector<FileDescriptor> m_listeners;
    FileDescriptor m_socket;
    std::thread m_thread; // last, for it uses the rest
};

} // namespace bridge
