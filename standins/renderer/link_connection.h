#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "standins/renderer/wire_format.h"

namespace velmora {

/// A client's connection to a renderer. It collects frames, sends them, and waits for the answer if
/// an operation has one.
///
/// If the renderer dies or exceeds the time limit, nothing throws: the connection closes, and
/// whatever is sent afterwards is dropped. The limit applies to each question with its answer, and
/// to each megabyte of data that needs no answer.
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

    /// True if a renderer has answered on that port. Closes any earlier connection first.
    bool open(const std::string& host, int port);
    void close();
    bool is_open() const { return socket_ != nullptr; }

    /// The process id that the renderer reported when the connection was opened.
    std::int64_t process_id() const { return process_id_; }

    void begin_frame(std::uint64_t operation);
    template <typename Value>
    void put(const Value& value) {
        frames_.put(value);
    }
    void put(const char* text) { frames_.put(text); }

    /// Must be the last argument of its frame. A large block is sent straight from `data`, not
    /// copied.
    void put_block(const void* data, std::uint64_t size);
    void end_frame();

    /// Sends the pending frames and a question without arguments, then waits for the answer.
    /// Returns `nullopt` if the answer is malformed or doesn't arrive in time.
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
    FrameWriter frames_;          // not sent yet
    bool frame_is_sent_ = false;  // set once `put_block` has sent the open frame
};

}  // namespace velmora
