#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <httplib.h>

#include "tools/system/ChunkFraming.h"
#include "tools/system/ConnectionThreads.h"

namespace vx::tools::system {

/// Reads a request from a connection and writes its answer, with limits to what the library reads
/// without any: how long a head is and takes, and how chunks are framed. A peer that does not go on
/// for 5 seconds is given up.
class ConnectionStream final : public httplib::Stream {
public:
    explicit ConnectionStream(ConnectionThreads::Connection& connection)
        : connection_(connection) {}

    enum class Head { Whole, TooLong, TooSlow, None };
    /// Reads until the head is there, for what follows to read.
    Head readHead();
    /// The body comes in chunks; to be said before any of it is read.
    void expectChunks() { framing_.emplace(); }
    /// Ends the answer, and takes what still comes for a while: the answer would be lost to a peer
    /// that finds the connection closed while it still sends.
    void finish();

    bool is_readable() const override;
    bool is_writable() const override;
    /// Some bytes; 0 at the end, negative when no more can be had.
    ssize_t read(char* bytes, std::size_t size) override;
    /// All of them, which the library takes for granted; negative when that cannot be.
    ssize_t write(const char* bytes, std::size_t size) override;
    void get_remote_ip_and_port(std::string&, int&) const override {} // this machine's
    void get_local_ip_and_port(std::string&, int&) const override {}
    socket_t socket() const override { return connection_.socket(); }

private:
    ssize_t receive(std::chrono::milliseconds patience);

    ConnectionThreads::Connection& connection_;
    std::string received_;
    std::size_t given_ = 0; // of them
    std::optional<ChunkFraming> framing_;
};

} // namespace vx::tools::system
