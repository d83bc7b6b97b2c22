#include "app/instance_lock.h"
#include "app/instance_socket.h"
#include "benchmarks/http_load.h"
#include "benchmarks/measure.h"
#include "benchmarks/server_process.h"
#include "tests/shell/bridge_program.h"
#include "tests/shell/screen.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <thread>
#include <xcb/xcb.h>

namespace {

using namespace bridge;
using namespace bridge::bench;
using namespace std::chrono_literals;

constexpr int port = 32123;

long numberIn(const std::filesystem::path& status, const std::string& name) {
    std::ifstream file(status);
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(name + ":")) return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
    return 0;
}

double residentMegabytes(pid_t pid) {
    return static_cast<double>(numberIn(fmt::format("/proc/{}/status", pid), "VmRSS")) / 1024;
}

// How often each of its threads has waited for something. A thread that ends takes its number along.
std::map<std::string, long> waits(pid_t pid) {
    std::map<std::string, long> numbers;
    for (const auto& thread : std::filesystem::directory_iterator(fmt::format("/proc/{}/task", pid)))
        numbers[thread.path().filename()] = numberIn(thread.path() / "status", "voluntary_ctxt_switches");
    return numbers;
}

long wakeupsWithin(std::chrono::seconds span, pid_t pid) {
    const auto before = waits(pid);
    std::this_thread::sleep_for(span);
    long sum = 0;
    for (const auto& [thread, number] : waits(pid)) {
        const auto earlier = before.find(thread);
        sum += number - (earlier == before.end() ? 0 : earlier->second);
    }
    return sum;
}

// What the user sees in the middle of the screen, where the dashboard opens.
class MiddleOfTheScreen {
public:
    explicit MiddleOfTheScreen(const std::string& display) : m_server(xcb_connect(display.c_str(), nullptr)) {}
    ~MiddleOfTheScreen() { xcb_disconnect(m_server); }
    MiddleOfTheScreen(const MiddleOfTheScreen&) = delete;
    MiddleOfTheScreen& operator=(const MiddleOfTheScreen&) = delete;

    uint32_t colour() const {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_server)).data;
        const auto question = xcb_get_image(m_server, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root,
                                            static_cast<int16_t>(screen->width_in_pixels / 2),
                                            static_cast<int16_t>(screen->height_in_pixels / 2), 1, 1, ~0u);
        auto* const image = xcb_get_image_reply(m_server, question, nullptr);
        uint32_t colour = 0;
        if (image) std::memcpy(&colour, xcb_get_image_data(image), sizeof colour);
        std::free(image);
        return colour;
    }

private:
    xcb_connection_t* m_server;
};

void waitUntil(const std::function<bool()>& isReached) {
    for (const auto end = std::chrono::steady_clock::now() + 30s; !isReached();)
        if (std::chrono::steady_clock::now() > end) throw std::runtime_error("the program does not do as it is told");
}

// From the wish to its colours on the screen.
double millisecondsToOpen(const std::string& instances, const MiddleOfTheScreen& middle) {
    const auto empty = middle.colour();
    return 1e3 * secondsFor([&] {
               if (!tellRunningInstance(instances, {InstanceWish::showDashboard, {}}, 10s))
                   throw std::runtime_error("the program does not answer");
               waitUntil([&] { return middle.colour() != empty; });
           });
}

void close(Screen& screen, const MiddleOfTheScreen& middle, uint32_t empty) {
    waitUntil([&] {
        screen.press("Escape");
        return middle.colour() == empty;
    });
}

double secondsForRequests(const TemporaryFolder& home, const BridgeProgram::Variables& variables) {
    BridgeProgram program(home, variables, {"--background"});
    if (!program.isListening()) std::exit(1);
    const std::string request = "GET /health HTTP/1.1\r\nHost: 127.0.0.1:32123\r\n\r\n";
    const auto size = fetch(port, request).size();
    constexpr int count = 10'000;
    constexpr int inFlight = 16;
    return secondsFor([&] { load(port, request, size, count, inFlight); });
}

void measureDashboard(const TemporaryFolder& home, Screen& screen, const BridgeProgram::Variables& variables) {
    BridgeProgram program(home, variables, {"--background"});
    if (!program.isListening()) std::exit(1);
    waitUntil([&] { return screen.icon().has_value(); });
    std::this_thread::sleep_for(2s); // until what it began with is over
    fmt::print("{:<52} {:.1f} MB   goal 45 MB\n", "resident memory before the dashboard was opened",
               residentMegabytes(program.pid()));
    // Among them one of Qt's, which clears its cache of pictures once, half a minute after it has drawn the icon.
    constexpr auto span = 30s;
    fmt::print("{:<52} {} in {} s   goal none\n", "wake-ups when idle", wakeupsWithin(span, program.pid()),
               span.count());

    const auto instances = home.file("run/brindlefox-apple-bridge");
    const MiddleOfTheScreen middle(screen.display());
    const auto empty = middle.colour();
    fmt::print("{:<52} {:.0f} ms   goal 100 ms\n", "first opening of the dashboard",
               millisecondsToOpen(instances, middle));
    std::vector<double> later;
    for (int round = 0; round < 9; ++round) {
        close(screen, middle, empty);
        later.push_back(millisecondsToOpen(instances, middle));
    }
    fmt::print("{:<52} {:.0f} ms   goal 20 ms\n", "a later opening, median of 9", median(later));
    close(screen, middle, empty);
    std::this_thread::sleep_for(2s);
    fmt::print("{:<52} {:.1f} MB\n", "resident memory after it was", residentMegabytes(program.pid()));
    fmt::print("{:<52} {} in {} s   goal none\n", "wake-ups when idle, the dashboard closed",
               wakeupsWithin(span, program.pid()), span.count());
}

} // namespace

// What the icon and the dashboard cost, on an X server in memory.
int main() {
    if (const auto hindrance = Screen::hindrance(); !hindrance.empty()) {
        fmt::print("not measured: {}\n", hindrance);
        return 0;
    }
    const TemporaryFolder home;
    Screen screen(home);
    screen.startWindowManager();
    screen.startPanel();
    const BridgeProgram::Variables shown{{"DISPLAY", screen.display()}};
    measureDashboard(home, screen, shown);
    const auto requests = compare(
        5, [&] { return secondsForRequests(home, {}); }, [&] { return secondsForRequests(home, shown); });
    report("10,000 requests, with the icon against without a display", requests, "s", "goal 1.25");
}
