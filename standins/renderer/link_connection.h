#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "standins/renderer/wire_format.h"

namespace velmora {

/// A client's connection to a renderer: gathers frames, sends them, and waits for the answers of
/// those that have one.
///
/// Nothing here throws for a renderer that dies, or waits for one longer than the time limit, which
/// holds for a question with its answer and for each megabyte of what is only sent: the connection
/// is closed then, and what is sent on goes nowhere.
///
///     connection.begin_frame(number);
///     connection.put(value);
///     connection.end_frame();
class LinkConnection {
public:
    LinkConnection();
    LinkConnection(const LinkConnection&) = delete;
    LinkConnection& operator=(const LinkConnection&) = delete;
    ~LinkConnection();

    /// True once a renderer has answered there. A former connection is closed.
    bool open(const std::string& host, int port);
    void close();
    bool is_open() const { return socket_ != nullptr; }

    /// Of the renderer that has answered.
    std::int64_t process_id() const { return process_id_; }

    void begin_frame(std::uint64_t operation);
    template <typename Value>
    void put(const Value& value) {
        frames_.put(value);
    }
    void put(const char* text) { frames_.put(text); }

    /// The last argument of its frame. A large one is sent from where it lies.
    void put_block(const void* data, std::uint64_t size);
    void end_frame();

    /// Sends a frame without arguments and all that stands before it, and waits for the answer:
    /// nothing if there is none in time, or one of another form.
    std::optional<std::uint64_t> ask_number(std::uint64_t operation);
    std::optional<std::string> ask_text(std::uint64_t operation);

private:
    struct Socket;
    using Deadline = std::chrono::steady_clock::time_point;

    bool flush();
    bool send(const char* bytes, std::uint64_t size);
    std::vector<char> ask(std::uint64_t operation);
    std::vector<char> exchange(std::uint64_t operation, Deadline deadline);
    template <typename Start>
    bool move(std::uint64_t size, Deadline deadline, Start start);
    bool send_until(Deadline deadline, const char* bytes, std::uint64_t size);
    bool receive_until(Deadline deadline, char* bytes, std::uint64_t size);
    std::optional<std::uint64_t> number_in(const std::vector<char>& answer);

    std::unique_ptr<Socket> socket_;  // null while closed
    std::int64_t process_id_ = 0;
    FrameWriter frames_;          // that wait
    bool frame_is_sent_ = false;  // the open one, with its last block
};

}  // namespace velmora
