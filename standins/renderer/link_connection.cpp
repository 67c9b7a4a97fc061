#include "standins/renderer/link_connection.h"

#include <algorithm>
#include <asio.hpp>
#include <chrono>
#include <exception>

#include "importers/sceneapi/dev/decimal_text.h"
#include "standins/renderer/operating_system.h"

namespace velmora {

namespace {

using asio::ip::tcp;

constexpr std::size_t kFullBuffer = 0x40000;

// Copying a block of this size costs more than sending it separately.
constexpr std::uint64_t kLargeBlock = 0x8000;

// The time limit applies to each slice of data that needs no answer: a long transfer may take its
// time as long as it makes progress.
constexpr std::uint64_t kSlice = 0x100000;

constexpr std::uint64_t kLargestAnswer = std::uint64_t{1} << 30;

constexpr int kDefaultTimeLimitMs = 5000;

std::chrono::milliseconds time_limit() {
    const int limit = decimal_number(environment_value("VELMORA_LINK_TIMEOUT_MS"));
    return std::chrono::milliseconds(limit > 0 ? limit : kDefaultTimeLimitMs);
}

}  // namespace

struct LinkConnection::Socket {
    asio::io_context io;
    tcp::socket stream{io};
    std::chrono::milliseconds limit = time_limit();

    Deadline new_deadline() const { return std::chrono::steady_clock::now() + limit; }

    // Starts an operation and waits for its end. Returns the number of bytes that it has moved, or
    // `nullopt` if it failed or timed out.
    template <typename Start>
    std::optional<std::size_t> finish_until(Deadline deadline, Start start) {
        std::optional<std::size_t> moved;
        start([&moved](const asio::error_code& error, std::size_t size) {
            if (!error) {
                moved = size;
            }
        });
        io.restart();
        io.run_until(deadline);
        if (!io.stopped()) {
            // The operation uses the caller's bytes until its handler has run. With a linger time
            // of 0, Windows drops unsent data at once.
            asio::error_code ignored;
            stream.set_option(tcp::socket::linger(true, 0), ignored);
            stream.cancel(ignored);
            stream.close(ignored);
            io.run();
            return std::nullopt;
        }
        return moved;
    }
};

LinkConnection::LinkConnection() = default;
LinkConnection::~LinkConnection() = default;

bool LinkConnection::open(const std::string& host, int port) {
    close();
    Deadline deadline;
    if (port < 1 || port > 0xffff) {
        return false;
    }
    try {
        auto socket = std::make_unique<Socket>();
        // This machine can be reached even where "localhost" can't be resolved.
        const std::string address = host == "localhost" ? "127.0.0.1" : host;
        // A renderer listens on IPv4 only, and Windows takes two seconds to find an IPv6 port
        // closed.
        asio::error_code error;
        const tcp::resolver::results_type found =
            tcp::resolver(socket->io).resolve(tcp::v4(), address, std::to_string(port), error);
        if (error || found.empty()) {
            return false;
        }
        const tcp::endpoint endpoint = found.begin()->endpoint();
        deadline = socket->new_deadline();
        const auto connect = [&](auto done) {
            socket->stream.async_connect(
                endpoint, [done](const asio::error_code& failed) { done(failed, 0); });
        };
        if (!socket->finish_until(deadline, connect)) {
            return false;
        }
        socket->stream.set_option(tcp::no_delay(true), error);
        socket_ = std::move(socket);
    } catch (const std::exception&) {
        return false;
    }

    begin_frame(operation::kHello);
    put(kGreeting);
    put(own_process_id());
    end_frame();
    const std::optional<std::uint64_t> process_id =
        number_in(exchange(operation::kHello, deadline));
    process_id_ = static_cast<std::int64_t>(process_id.value_or(0));
    return process_id.has_value();
}

void LinkConnection::close() {
    socket_.reset();
    frames_.clear();
}

void LinkConnection::begin_frame(std::uint64_t operation) {
    frame_is_sent_ = false;
    frames_.begin(operation);
}

void LinkConnection::put_block(const void* data, std::uint64_t size) {
    put(size);
    if (size < kLargeBlock) {
        if (size > 0) {
            frames_.put_bytes(data, size);
        }
        return;
    }
    frames_.end(padded(size));
    frame_is_sent_ = true;
    constexpr char kPadding[8] = {};
    if (flush() && send(static_cast<const char*>(data), size)) {
        send(kPadding, padded(size) - size);
    }
}

void LinkConnection::end_frame() {
    if (!frame_is_sent_) {
        frames_.end();
    }
    if (frames_.bytes().size() >= kFullBuffer) {
        flush();
    }
}

bool LinkConnection::flush() {
    const bool sent = send(frames_.bytes().data(), frames_.bytes().size());
    frames_.clear();
    return sent;
}

bool LinkConnection::send(const char* bytes, std::uint64_t size) {
    for (std::uint64_t position = 0; is_open() && position < size; position += kSlice) {
        send_until(socket_->new_deadline(), bytes + position, std::min(size - position, kSlice));
    }
    return is_open();
}

std::optional<std::uint64_t> LinkConnection::ask_number(std::uint64_t operation) {
    return number_in(ask(operation));
}

std::optional<std::string> LinkConnection::ask_text(std::uint64_t operation) {
    const std::vector<char> answer = ask(operation);
    try {
        const char* text = FrameReader(answer.data(), answer.size()).take_text();
        return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
    } catch (const MalformedFrame&) {
        close();
        return std::nullopt;
    }
}

std::optional<std::uint64_t> LinkConnection::number_in(const std::vector<char>& answer) {
    try {
        return FrameReader(answer.data(), answer.size()).take<std::uint64_t>();
    } catch (const MalformedFrame&) {
        close();
        return std::nullopt;
    }
}

// Returns the arguments of the answer. Empty means that there is no answer, as every answer has
// arguments.
std::vector<char> LinkConnection::ask(std::uint64_t operation) {
    begin_frame(operation);
    end_frame();
    if (!is_open()) {
        frames_.clear();
        return {};
    }
    return exchange(operation, socket_->new_deadline());
}

// Sends the pending frames, the last of which is the question, and waits for the answer.
std::vector<char> LinkConnection::exchange(std::uint64_t operation, Deadline deadline) {
    const bool asked = send_until(deadline, frames_.bytes().data(), frames_.bytes().size());
    frames_.clear();
    FrameHead head;
    if (!asked || !receive_until(deadline, reinterpret_cast<char*>(&head), sizeof head) ||
        head.operation != (operation | operation::kAnswer) || head.size > kLargestAnswer) {
        return {};
    }
    std::vector<char> arguments;
    while (arguments.size() < head.size) {
        const std::size_t received = arguments.size();
        arguments.resize(static_cast<std::size_t>(std::min(head.size, received + kSlice)));
        if (!receive_until(deadline, arguments.data() + received, arguments.size() - received)) {
            return {};
        }
    }
    return arguments;
}

// Moves `size` bytes. `start(position, most, done)` starts an operation that moves up to `most`
// bytes from `position` on.
template <typename Start>
bool LinkConnection::move(std::uint64_t size, Deadline deadline, Start start) {
    for (std::uint64_t position = 0; is_open() && position < size;) {
        const auto most = static_cast<std::size_t>(std::min(size - position, kSlice));
        const std::optional<std::size_t> moved =
            socket_->finish_until(deadline, [&](auto done) { start(position, most, done); });
        if (!moved) {
            close();
            return false;
        }
        position += *moved;
    }
    return is_open();
}

bool LinkConnection::send_until(Deadline deadline, const char* bytes, std::uint64_t size) {
    return move(size, deadline, [&](std::uint64_t position, std::size_t most, auto done) {
        socket_->stream.async_write_some(asio::const_buffer(bytes + position, most), done);
    });
}

bool LinkConnection::receive_until(Deadline deadline, char* bytes, std::uint64_t size) {
    return move(size, deadline, [&](std::uint64_t position, std::size_t most, auto done) {
        socket_->stream.async_read_some(asio::mutable_buffer(bytes + position, most), done);
    });
}

}  // namespace velmora
