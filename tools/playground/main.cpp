#include "adapters/curl/curl_http_client.h"
#include "app/process.h"
#include "base/file_descriptor.h"
#include "base/log.h"
#include "base/termination_signals.h"
#include "options.h"
#include "profile.h"
#include "sample_maps.h"
#include "tour.h"

#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace bridge::playground {

namespace {

std::string readyLine(const std::string& credential, const std::filesystem::path& folder, const BridgeModel& model) {
    JSONWriter line;
    line.beginObject();
    line.name("address");
    line.string(fmt::format("{}:{}", BridgeHTTPServer::address, BridgeHTTPServer::port));
    line.name("credential");
    line.string(credential);
    line.name("profile");
    line.string(folder.string());
    line.name("roots");
    encode(line, model.files.roots.get());
    line.endObject();
    return line.take();
}

std::string curlLine(const std::string& credential, const std::string& rootID) {
    return fmt::format(R"(curl -s --noproxy '*' -H 'Authorization: Bearer {}' http://{}:{}/v1/execute -d )"
                       R"('{{"operation":"files.list","payload":{{"rootID":"{}","path":""}}}}')",
                       credential, BridgeHTTPServer::address, BridgeHTTPServer::port, rootID);
}

int serve(EventLoop& loop, const std::string& line) {
    fmt::print("{}\n", line);
    std::fflush(stdout);
    loop.run();
    return 0;
}

int showAround(EventLoop& loop, BridgeModel& model, const std::string& credential, Date now, const Missing& missing) {
    if (model.files.roots.get().empty()) throw std::runtime_error("This profile has no authorized folder to show.");
    const auto rootID = model.files.roots.get().front().id;
    CurlHTTPClient client(loop);
    const bool asExpected = loop.runUntilDone(tour(client, credential, rootID, now, missing));
    fmt::print("\n{}\n", curlLine(credential, rootID));
    // Somebody at a terminal gets the time to use that line; a script goes on.
    if (isatty(STDIN_FILENO) && isatty(STDOUT_FILENO)) {
        fmt::print("Serving until Ctrl-C.\n");
        loop.run();
    }
    return asExpected ? 0 : 1;
}

int run(const Options& options) {
    prepareProcess();
    const Profile profile(options.profile);
    const FileDescriptor logFile(
        open((profile.folder() / "bridge.log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    if (logFile) log::writeTo(logFile.get());
    EventLoop loop;
    log::gatherOn(loop);
    writeSampleServices(profile.folder());
    auto platform = openEmbeddedPlatform(loop, profile.folder());
    const SampleMaps maps(loop, platform, profile.folder());
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel model(loop, platform, policy);
    const TerminationSignals signals(loop, [&loop] { loop.stop(); });
    const auto credential = prepare(loop, model, platform, options, profile.folder());
    if (!options.serve) maps.prepare(loop);
    const int status = options.serve ? serve(loop, readyLine(credential, profile.folder(), model))
                                     : showAround(loop, model, credential, platform.clock->now(), maps.missing());
    log::writeTo(STDERR_FILENO);
    return status;
}

} // namespace

} // namespace bridge::playground

int main(int count, char** words) {
    using namespace bridge::playground;
    try {
        const auto options = readOptions({words + 1, words + count});
        if (options.help) {
            std::fputs(usage, stdout);
            return 0;
        }
        return run(options);
    } catch (const UsageError& error) {
        std::fprintf(stderr, "%s\n\n%s", error.what(), usage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The bridge could not be tried: %s\n", error.what());
        return 1;
    }
}
