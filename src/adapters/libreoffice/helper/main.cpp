#include "adapters/libreoffice/helper/service.h"
#include "adapters/libreoffice/message_channel.h"

#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace bridge;
using namespace bridge::office;

struct Options {
    std::string home;
    std::chrono::seconds idle{0};
    int64_t residentLimit = 0;
    int64_t documentLimit = 0;
};

// Without the bridge there is nothing to be done, even in the middle of a call that doesn't return.
void leaveWithTheBridge(int socket) {
    std::thread([socket] {
        pollfd watched{socket, 0, 0};
        while (poll(&watched, 1, -1) <= 0) {
        }
        _exit(EXIT_SUCCESS);
    }).detach();
}

bool isWorn(const SOffice& office, const Documents& documents, const Options& options) {
    return documents.isEmpty() &&
           (documents.everOpened() >= options.documentLimit || office.residentBytes() > options.residentLimit);
}

enum class Event { request, none };

// Waits for the next request, or for a reason not to have one: too long a time without documents, LibreOffice's end.
Event nextEvent(const MessageChannel& channel, const SOffice& office, const Documents& documents,
                const Options& options) {
    const auto patience = documents.isEmpty() ? static_cast<int>(options.idle.count() * 1000) : -1;
    std::array<pollfd, 2> watched{{{channel.descriptor(), POLLIN, 0}, {office.endDescriptor(), POLLIN, 0}}};
    const int ready = poll(watched.data(), watched.size(), patience);
    return ready > 0 && watched[1].revents == 0 ? Event::request : Event::none;
}

void serve(MessageChannel& channel, const Options& options) {
    const SOffice office(options.home);
    channel.send(encodeJSON(Greeting{true, std::nullopt, std::nullopt}));
    Service service(office);
    while (nextEvent(channel, office, service.documents(), options) == Event::request) {
        const auto answered = service.answer(channel.receive());
        channel.send(answered.reply);
        if (answered.then == Answered::Then::leave || isWorn(office, service.documents(), options)) break;
    }
    channel.send(encodeJSON(Greeting{std::nullopt, std::nullopt, true}));
}

} // namespace

// brindlefox-office HOME IDLE-SECONDS RESIDENT-BYTES DOCUMENTS: started by the bridge, which is at the other end of
// the socket. Everything that it starts ends with it, because it is the first process of a namespace.
int main(int count, char** words) {
    if (count != 5) return EXIT_FAILURE;
    MessageChannel channel{FileDescriptor(helperSocket)};
    leaveWithTheBridge(helperSocket);
    try {
        serve(channel,
              {words[1], std::chrono::seconds(std::atoll(words[2])), std::atoll(words[3]), std::atoll(words[4])});
    } catch (const ScriptError& error) {
        channel.send(encodeJSON(Greeting{std::nullopt, Failure{error.number().value_or(failed), error.what()}, {}}));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (const css::uno::Exception& error) {
        std::fprintf(stderr, "%s\n", fromUno(error.Message).c_str());
    }
    // Whatever LibreOffice's libraries would do now needs LibreOffice.
    _exit(EXIT_SUCCESS);
}
