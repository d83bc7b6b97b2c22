#pragma once

#include "base/timer.h"
#include "server/bridge_router.h"

#include <list>
#include <memory>
#include <span>
#include <uv.h>

namespace bridge {

class ConnectionPool;

// One TCP connection: reads a request, has it answered, writes the answer, ends. It owns itself and goes when the loop
// has let go of its socket.
class Connection {
public:
    // Takes the connection that waits on `listener`. Answers nothing when it is gone already.
    static void accept(uv_stream_t* listener, ConnectionPool& pool);

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // How little is lost when it is given up for a newer one, the least first. A request that is being answered is not
    // given up at all.
    enum class Worth { answered, unfinished, beingSent, beingAnswered };
    Worth worth() const;
    size_t buffered() const { return m_phase == Phase::receiving ? m_reader.buffered() : 0; }
    // Says that there is no room, as far as that goes without waiting, and closes.
    void giveUp();
    // The pool is going away: closes without an answer.
    void abandon();

private:
    enum class Phase { receiving, answering, sending, lingering, closed };

    explicit Connection(ConnectionPool& pool);
    ~Connection() = default;

    void receiveWhatIsHere();
    void startReading();
    void received(ssize_t count);
    void requestGrew(std::string_view bytes);
    void ended(ssize_t code);
    Task<> answer(ParsedHTTPRequest request);
    void refuse(std::string_view logName, const WireError& error, std::string_view message);
    void send(BridgeResponse response);
    void sent();
    void linger();
    void close();

    ConnectionPool* m_pool; // null once abandoned
    std::list<Connection*>::iterator m_place;
    uv_tcp_t m_socket{};
    uv_write_t m_write{};
    Phase m_phase = Phase::receiving;
    bool m_peerMaySendMore = true;
    HTTPRequestReader m_reader;
    std::string m_outgoing; // what the socket did not take at once
    Task<> m_work;
    std::unique_ptr<Timer> m_patience;
};

// The connections of one server and what they may use together.
class ConnectionPool {
public:
    ConnectionPool(EventLoop& loop, BridgeRouter& router, const Clock& clock);
    ~ConnectionPool();
    ConnectionPool(const ConnectionPool&) = delete;
    ConnectionPool& operator=(const ConnectionPool&) = delete;

    // Closes the connection whose loss matters least, the oldest among equals. False when all are being answered.
    bool giveUpOldest();

    EventLoop& loop() { return m_loop; }
    BridgeRouter& router() { return m_router; }
    const Clock& clock() const { return m_clock; }

    // For the connections themselves.
    std::list<Connection*>::iterator enter(Connection* connection);
    void leave(std::list<Connection*>::iterator place);
    void countBuffered(ptrdiff_t change);
    // At most 65,536 bytes are read at once, one connection after the other, so they share the memory.
    std::span<char> readBuffer() { return m_readBuffer; }

private:
    static constexpr size_t readSize = 65'536;
    // Unfinished requests together; enough for a thousand of moderate size, and for a hundred of the largest.
    static constexpr size_t maximumBuffered = 128 * HTTPRequestReader::maximumRequestBytes;

    EventLoop& m_loop;
    BridgeRouter& m_router;
    const Clock& m_clock;
    std::list<Connection*> m_connections; // oldest first
    size_t m_maximumConnections;
    size_t m_buffered = 0;
    std::vector<char> m_readBuffer;
};

} // namespace bridge
