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

// A block of this size costs more to copy than a write of its own.
constexpr std::uint64_t kLargeBlock = 0x8000;

// The time limit holds for each slice, so that a long transfer counts as alive while it moves.
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

    // Starts an operation and waits until it is done: how many bytes it has moved, or nothing if it
    // has failed or not come to an end in time.
    template <typename Start>
    std::optional<std::size_t> finish_in_time(Start start) {
        std::optional<std::size_t> moved;
        start([&moved](const asio::error_code& error, std::size_t size) {
            if (!error) {
                moved = size;
            }
        });
        io.restart();
        io.run_for(limit);
        if (!io.stopped()) {
            // The operation refers to the caller's bytes until it is told that it is over. Without
            // lingering, Windows takes no time to get rid of what is still to be sent.
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
    if (port < 1 || port > 0xffff) {
        return false;
    }
    try {
        auto socket = std::make_unique<Socket>();
        // This machine is found even where nothing tells what "localhost" is.
        const std::string address = host == "localhost" ? "127.0.0.1" : host;
        // A renderer listens on the fourth version of the protocol alone, and Windows takes two
        // seconds to find a port of the sixth closed.
        asio::error_code error;
        const tcp::resolver::results_type found =
            tcp::resolver(socket->io).resolve(tcp::v4(), address, std::to_string(port), error);
        if (error || found.empty()) {
            return false;
        }
        const tcp::endpoint endpoint = found.begin()->endpoint();
        const bool connected =
            socket
                ->finish_in_time([&](auto done) {
                    socket->stream.async_connect(
                        endpoint, [done](const asio::error_code& failed) { done(failed, 0); });
                })
                .has_value();
        if (!connected) {
            return false;
        }
        socket->stream.set_option(tcp::no_delay(true), error);
        socket_ = std::move(socket);
    } catch (const std::exception&) {
        return false;
    }

    begin_frame(operation::kHello);
    put(kGreeting);
    end_frame();
    flush();
    const std::optional<std::uint64_t> process_id = receive_number(operation::kHello);
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

// Each slice has the whole time limit; `start` begins to move so many bytes from that position on.
template <typename Start>
bool LinkConnection::move_in_slices(std::uint64_t size, Start start) {
    for (std::uint64_t position = 0; socket_ && position < size;) {
        const auto slice = static_cast<std::size_t>(std::min(size - position, kSlice));
        const std::optional<std::size_t> moved =
            socket_->finish_in_time([&](auto done) { start(position, slice, done); });
        if (!moved) {
            close();
            return false;
        }
        position += *moved;
    }
    return is_open();
}

bool LinkConnection::send(const char* bytes, std::uint64_t size) {
    return move_in_slices(size, [&](std::uint64_t position, std::size_t slice, auto done) {
        socket_->stream.async_write_some(asio::const_buffer(bytes + position, slice), done);
    });
}

bool LinkConnection::receive(char* bytes, std::uint64_t size) {
    return move_in_slices(size, [&](std::uint64_t position, std::size_t slice, auto done) {
        socket_->stream.async_read_some(asio::mutable_buffer(bytes + position, slice), done);
    });
}

std::optional<std::uint64_t> LinkConnection::ask_number(std::uint64_t operation) {
    begin_frame(operation);
    end_frame();
    flush();
    return receive_number(operation);
}

std::optional<std::string> LinkConnection::ask_text(std::uint64_t operation) {
    begin_frame(operation);
    end_frame();
    flush();
    const std::vector<char> answer = receive_answer(operation);
    try {
        const char* text = FrameReader(answer.data(), answer.size()).take_text();
        return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
    } catch (const MalformedFrame&) {
        close();
        return std::nullopt;
    }
}

std::optional<std::uint64_t> LinkConnection::receive_number(std::uint64_t operation) {
    const std::vector<char> answer = receive_answer(operation);
    try {
        return FrameReader(answer.data(), answer.size()).take<std::uint64_t>();
    } catch (const MalformedFrame&) {
        close();
        return std::nullopt;
    }
}

// The arguments; empty if there is no answer, as none of them is.
std::vector<char> LinkConnection::receive_answer(std::uint64_t operation) {
    FrameHead head;
    if (!receive(reinterpret_cast<char*>(&head), sizeof head) || head.operation != operation ||
        head.size > kLargestAnswer) {
        return {};
    }
    std::vector<char> arguments;
    while (arguments.size() < head.size) {
        const std::size_t received = arguments.size();
        arguments.resize(static_cast<std::size_t>(std::min(head.size, received + kSlice)));
        if (!receive(arguments.data() + received, arguments.size() - received)) {
            return {};
        }
    }
    return arguments;
}

}  // namespace velmora
