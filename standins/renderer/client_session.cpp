#include "standins/renderer/client_session.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "standins/renderer/operating_system.h"
#include "standins/renderer/renderer.h"

namespace velmora {

namespace {

constexpr std::size_t kFirstCapacity = 0x40000;

}  // namespace

ClientSession::ClientSession(Renderer& renderer, asio::ip::tcp::socket socket)
    : renderer_(renderer), socket_(std::move(socket)) {
    asio::error_code ignored;
    socket_.set_option(asio::ip::tcp::no_delay(true), ignored);
}

void ClientSession::start() {
    if (!fails_on_purpose()) {
        go_on();
    }
}

bool ClientSession::fails_on_purpose() {
    const Fault& fault = renderer_.settings().fault;
    if (received_ < fault.after_bytes) {
        return false;
    }
    nonsense_ = fault.kind == Fault::Kind::kAnswerNonsense;
    if (nonsense_ || fault.kind == Fault::Kind::kNone) {
        return false;
    }
    if (fault.kind == Fault::Kind::kDie) {
        std::_Exit(EXIT_FAILURE);
    }
    renderer_.leave_open(shared_from_this());
    return true;
}

// The pending operation holds the only reference to the session, so the session ends when there is
// no next read or answer.
void ClientSession::read() {
    make_room();
    socket_.async_read_some(
        asio::mutable_buffer(buffer_.get() + filled_, capacity_ - filled_),
        [this, self = shared_from_this()](const asio::error_code& error, std::size_t size) {
            if (error) {
                return end();
            }
            filled_ += size;
            received_ += size;
            if (!fails_on_purpose()) {
                go_on();
            }
        });
}

// The buffer grows only as bytes arrive, whatever size a frame claims to have.
void ClientSession::make_room() {
    if (handled_ > 0) {
        std::memmove(buffer_.get(), buffer_.get() + handled_, filled_ - handled_);
        filled_ -= handled_;
        handled_ = 0;
    }
    if (filled_ < capacity_) {
        return;
    }
    grow_to(std::max(kFirstCapacity, 2 * capacity_));
}

// realloc can move large blocks without copying them.
void ClientSession::grow_to(std::size_t capacity) {
    void* grown = std::realloc(buffer_.get(), capacity);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(buffer_.release());
    buffer_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
}

void ClientSession::go_on() {
    try {
        if (handle_frames()) {
            send_answer();
        } else {
            read();
        }
    } catch (const MalformedFrame&) {
        end();
    } catch (const std::exception& error) {
        // A full disk or a lack of memory costs only this client its connection.
        std::fprintf(stderr, "velmora: %s\n", error.what());
        end();
    }
}

void ClientSession::end() {
    if (scene_) {
        renderer_.take_over(*scene_);
        scene_.reset();
    }
}

// True if a frame has to be answered before the next one is handled.
bool ClientSession::handle_frames() {
    while (filled_ - handled_ >= sizeof(FrameHead)) {
        FrameHead head;
        std::memcpy(&head, buffer_.get() + handled_, sizeof head);
        if (head.size != padded(head.size) || head.size > kLargestFrame ||
            is_greeted_ == (head.operation == operation::kHello)) {
            throw MalformedFrame();
        }
        if (head.size > filled_ - handled_ - sizeof head) {
            return false;
        }
        const char* arguments = buffer_.get() + handled_ + sizeof head;
        handled_ += sizeof head + static_cast<std::size_t>(head.size);
        if (handle(head, arguments)) {
            return true;
        }
    }
    return false;
}

bool ClientSession::handle(const FrameHead& head, const char* arguments) {
    if (head.operation >= operation::kFirstSceneCall) {
        if (!scene_) {
            scene_ = renderer_.begin_scene();
        }
        scene_->call(head.operation, arguments, head.size);
        return false;
    }

    answer_.clear();
    answer_.begin(head.operation | operation::kAnswer);
    switch (head.operation) {
        case operation::kHello: {
            FrameReader greeting(arguments, head.size);
            if (greeting.take<std::uint64_t>() != kGreeting) {
                throw MalformedFrame();
            }
            client_process_id_ = greeting.take<std::int64_t>();
            is_greeted_ = true;
            answer_.put(own_process_id());
            break;
        }
        case operation::kFinish:
            answer_.put(!scene_ || renderer_.keep_scene(*scene_, client_process_id_));
            scene_.reset();
            break;
        case operation::kTree:
            answer_.put(renderer_.scene_tree().c_str());
            break;
        case operation::kStop:
            ends_renderer_ = true;
            answer_.put(true);
            break;
        default:
            throw MalformedFrame();
    }
    answer_.end();
    return true;
}

void ClientSession::send_answer() {
    if (nonsense_) {
        answer_.overwrite('?');
    }
    asio::async_write(
        socket_, asio::buffer(answer_.bytes()),
        [this, self = shared_from_this()](const asio::error_code& error, std::size_t) {
            if (ends_renderer_) {
                renderer_.stop();
            } else if (!error) {
                go_on();
            }
        });
}

}  // namespace velmora
