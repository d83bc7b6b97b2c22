#pragma once

#include "adapters/libreoffice/patience.h"
#include "base/file_descriptor.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace bridge::office {

// The other side is gone, or sends what is no message.
class ChannelClosed : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Messages over a stream socket, each after its length. Both calls throw ChannelClosed or PatienceOver; after either of
// them the channel is of no use any more, because half a message may be on its way.
class MessageChannel {
public:
    static constexpr size_t largestMessage = size_t{256} << 20;

    explicit MessageChannel(FileDescriptor socket) : m_socket(std::move(socket)) {}

    void send(std::string_view message, const Patience& patience = {});
    std::string receive(const Patience& patience = {});

    // Whether nothing has been sent that is not received yet, the other side's farewell included.
    bool isSilent() const;
    // Whether the other side is still there.
    bool isConnected() const;
    int descriptor() const { return m_socket.get(); }

private:
    void receive(char* bytes, size_t size, const Patience& patience);

    FileDescriptor m_socket;
};

} // namespace bridge::office
