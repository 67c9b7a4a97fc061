#include <asio.hpp>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "fuzz/fuzz_input.h"
#include "standins/renderer/link_connection.h"
#include "tests/support/environment_variable.h"

namespace {

// A server that answers each connection with the current input, whatever it is asked.
class Server {
public:
    Server() {
        std::thread([this] {
            for (;;) {
                asio::error_code ignored;
                asio::ip::tcp::socket socket(io_);
                acceptor_.accept(socket, ignored);
                const std::string answer = current();
                asio::write(socket, asio::buffer(answer), ignored);
                socket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
                char asked[4096];
                while (socket.read_some(asio::buffer(asked), ignored) > 0) {
                }
            }
        }).detach();
    }

    int port() const { return acceptor_.local_endpoint().port(); }

    void set_answer(std::string answer) {
        const std::lock_guard<std::mutex> lock(mutex_);
        answer_ = std::move(answer);
    }

private:
    std::string current() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return answer_;
    }

    std::mutex mutex_;
    std::string answer_;
    asio::io_context io_;
    asio::ip::tcp::acceptor acceptor_{io_, {asio::ip::address_v4::loopback(), 0}};
};

}  // namespace

// A client takes any bytes for the answers of a renderer.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const EnvironmentVariable limit("VELMORA_LINK_TIMEOUT_MS", "500");
    static Server& server = *new Server();  // its thread never ends
    server.set_answer(std::string(reinterpret_cast<const char*>(data), size));
    velmora::LinkConnection connection;
    if (connection.open("localhost", server.port())) {
        const auto text = connection.ask_text(velmora::operation::kTree);
        require(!text || text->size() <= size, "a text longer than the answer");
        connection.ask_number(velmora::operation::kFinish);
    }
    connection.close();
    return 0;
}
