#pragma once

#include <asio.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "standins/renderer/received_scene.h"
#include "standins/renderer/wire_format.h"

namespace velmora {

class Renderer;

/// One client's connection. It ends when the client disconnects or sends something malformed. If a
/// scene is unfinished then, the renderer keeps what has arrived of it.
class ClientSession : public std::enable_shared_from_this<ClientSession> {
public:
    /// Borrows `renderer`, which must outlive the session.
    ClientSession(Renderer& renderer, asio::ip::tcp::socket socket);
    ClientSession(const ClientSession&) = delete;
    ClientSession& operator=(const ClientSession&) = delete;

    void start();

private:
    bool fails_on_purpose();
    void read();
    void make_room();
    void grow_to(std::size_t capacity);
    void go_on();
    bool handle_frames();
    bool handle(const FrameHead& head, const char* arguments);
    void send_answer();
    void end();

    Renderer& renderer_;
    asio::ip::tcp::socket socket_;
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    std::unique_ptr<char, Free> buffer_;
    std::size_t capacity_ = 0;
    std::size_t filled_ = 0;
    std::size_t handled_ = 0;
    std::uint64_t received_ = 0;
    bool nonsense_ = false;  // answers are overwritten
    bool is_greeted_ = false;
    std::int64_t client_process_id_ = 0;  // 0 until the greeting
    bool ends_renderer_ = false;          // once the answer is sent
    FrameWriter answer_;
    std::unique_ptr<ReceivedScene> scene_;  // null between scenes
};

}  // namespace velmora
