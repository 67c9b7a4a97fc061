#include <gtest/gtest.h>

#include <asio.hpp>
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

#include "standins/renderer/link_connection.h"
#include "standins/renderer/scene_calls.h"
#include "tests/support/velmora_process.h"

namespace {

using asio::ip::tcp;
using velmora::SceneCalls;

using Frames = velmora::FrameWriter;

template <auto Call>
constexpr std::uint64_t kCall = SceneCalls::number_of<Call>();

template <typename... Arguments>
void add(Frames& frames, std::uint64_t operation, const Arguments&... arguments) {
    frames.begin(operation);
    (frames.put(arguments), ...);
    frames.end();
}

// A greeting, followed by frames.
template <typename Fill>
std::string stream_of(Fill fill, std::int64_t sender = 0) {
    Frames frames;
    add(frames, velmora::operation::kHello, velmora::kGreeting, sender);
    fill(frames);
    return {frames.bytes().begin(), frames.bytes().end()};
}

std::string head(std::uint64_t operation, std::uint64_t size) {
    return stream_of([&](Frames& frames) { frames.put(velmora::FrameHead{operation, size}); });
}

constexpr std::uint64_t kGroup = kCall<&qorScene_api::begin_group>;
constexpr std::uint64_t kParameter = kCall<&qorScene_api::set_parameter>;

// Puts a shader into itself, again and again until its buffer has to move.
void write_shader_into_itself(Frames& frames) {
    add(frames, kCall<&qorScene_api::begin_shader>, static_cast<const char*>(nullptr), "type");
    for (int time = 0; time < 20; ++time) {
        add(frames, kCall<&qorScene_api::assign_shader>, std::int32_t{0}, std::uint64_t{1});
    }
}

// Each shader contains the previous one twice, so that a few bytes double its text.
void double_shaders(Frames& frames) {
    for (std::uint64_t shader = 1; shader < 60; ++shader) {
        add(frames, kCall<&qorScene_api::begin_shader>, static_cast<const char*>(nullptr), "type");
        for (int time = 0; time < 2; ++time) {
            add(frames, kCall<&qorScene_api::set_parameter_shader>, "name", shader - 1);
        }
        add(frames, kCall<&qorScene_api::end_shader>);
    }
}

// True if the renderer accepts a connection, and closes it within some seconds.
bool survives(int port, const std::string& bytes) {
    asio::io_context io;
    tcp::socket socket(io);
    asio::error_code error;
    socket.connect({asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(port)}, error);
    if (error) {
        return false;
    }
    asio::write(socket, asio::buffer(bytes), error);
    socket.shutdown(tcp::socket::shutdown_send, error);
    std::string answers;
    asio::async_read(socket, asio::dynamic_buffer(answers), [](asio::error_code, size_t) {});
    io.run_for(std::chrono::seconds(10));
    return io.stopped();
}

// Sends a whole scene of one group from this process.
void send_group(int port, const char* name) {
    velmora::LinkConnection connection;
    ASSERT_TRUE(connection.open("localhost", port));
    connection.begin_frame(kGroup);
    connection.put(name);
    connection.put(true);
    connection.end_frame();
    EXPECT_EQ(connection.ask_number(velmora::operation::kFinish), 1u);
}

TEST(RendererProcess, SurvivesAnyInput) {
    const RendererFolder folder;
    VelmoraProcess renderer(VELMORA_PROGRAM);
    const int port = renderer.port();

    const std::string whole = stream_of([](Frames& frames) {
        add(frames, kGroup, "name", true);
        add(frames, kCall<&qorScene_api::begin_shader>, static_cast<const char*>(nullptr), "type");
        add(frames, kParameter, "name", parameter_code::kText | parameter_code::kArray, 0u);
        add(frames, kCall<&qorScene_api::end_shader>);
        add(frames, kCall<&qorScene_api::assign_shader>, std::int32_t{0}, std::uint64_t{1});
        add(frames, kCall<&qorScene_api::end_group>);
        add(frames, velmora::operation::kTree);
        add(frames, velmora::operation::kFinish);
    });
    std::vector<std::string> streams = {
        "",
        "GET / HTTP/1.1\r\n\r\n",
        std::string(100000, '\0'),
        std::string(100000, '\xff'),
        head(kGroup, 0),
        head(kGroup, 3),
        head(kGroup, 0xfffffffffffffff8u),
        head(kGroup, velmora::kLargestFrame) + std::string(5000, 'x'),
        head(9999, 0),
        head(7, 0),
        head(velmora::operation::kHello, 0),
        stream_of(write_shader_into_itself),
        stream_of(double_shaders),
    };
    for (const std::int32_t code : {1, 9, 10, 13, 0x10000, 0x8001, 0x8009, 0x800a, 0x18000}) {
        streams.push_back(
            stream_of([code](Frames& frames) { add(frames, kParameter, "name", code, ~0u); }));
    }
    for (size_t size = 0; size < whole.size(); size += 5) {
        streams.push_back(whole.substr(0, size));
    }
    std::mt19937 random(20220211);
    for (int i = 0; i < 400; ++i) {
        std::string damaged = whole;
        for (int change = 0; change < 3; ++change) {
            const char byte = static_cast<char>(random());
            // The change must not make a valid request to stop.
            damaged[32 + random() % (damaged.size() - 32)] =
                byte == char{velmora::operation::kStop} ? 'x' : byte;
        }
        streams.push_back(damaged);
    }
    for (size_t i = 0; i < streams.size(); ++i) {
        ASSERT_TRUE(survives(port, streams[i]) && renderer.announced())
            << "stream " << i << ": " << testing::PrintToString(streams[i].substr(0, 80));
    }

    send_group(port, "sound");
    EXPECT_EQ(file_contents(renderer.newest_scene().file), "\ngroup \"sound\" {\n");
}

// Several hosts can send to one renderer, and each looks for its own scene.
TEST(RendererProcess, KeepsTheNewestSceneOfEachSender) {
    const RendererFolder folder;
    VelmoraProcess renderer(VELMORA_PROGRAM);
    const auto send_from = [&](std::int64_t sender, const char* group) {
        const auto scene = [&](Frames& frames) {
            add(frames, kGroup, group, true);
            add(frames, velmora::operation::kFinish);
        };
        ASSERT_TRUE(survives(renderer.port(), stream_of(scene, sender)));
    };
    EXPECT_EQ(renderer.announcement().own_scene(), nullptr);
    send_from(0, "of a process that is gone");
    send_group(renderer.port(), "old");
    send_group(renderer.port(), "own");
    send_from(renderer.id(), "of another");
    const velmora::RunningRenderer announced = renderer.announcement();
    ASSERT_EQ(announced.scenes.size(), 2u);
    EXPECT_EQ(announced.own_scene(), &announced.scenes[0]);
    EXPECT_EQ(announced.scenes[0].number, 3u);
    EXPECT_EQ(file_contents(announced.scenes[0].file), "\ngroup \"own\" {\n");
    EXPECT_EQ(announced.scenes[1].sender, renderer.id());
    EXPECT_EQ(announced.scenes[1].number, 4u);
}

// True if a server is accepted as a renderer. It answers a greeting with `answer`, or with the
// greeting itself if that is empty, and pauses before each byte.
bool passes_for_renderer(std::string answer, std::chrono::milliseconds pause,
                         const char* limit_ms) {
    const EnvironmentVariable limit("VELMORA_LINK_TIMEOUT_MS", limit_ms);
    asio::io_context io;
    tcp::acceptor acceptor(io, {asio::ip::address_v4::loopback(), 0});
    std::thread server([&] {
        asio::error_code error;
        tcp::socket socket = acceptor.accept();
        std::string greeting = stream_of([](Frames&) {});
        asio::read(socket, asio::buffer(greeting), error);
        for (const char byte : answer.empty() ? greeting : answer) {
            std::this_thread::sleep_for(pause);
            asio::write(socket, asio::buffer(&byte, 1), error);
            if (error) {
                break;
            }
        }
    });
    velmora::LinkConnection connection;
    const bool passes = connection.open("127.0.0.1", acceptor.local_endpoint().port());
    connection.close();
    server.join();
    return passes;
}

TEST(LinkConnection, RejectsOtherServers) {
    using std::chrono::milliseconds;
    Frames frames;
    add(frames, velmora::operation::kHello | velmora::operation::kAnswer, std::int64_t{4711});
    const std::string answer(frames.bytes().begin(), frames.bytes().end());
    EXPECT_TRUE(passes_for_renderer(answer, milliseconds(0), "10000"));
    EXPECT_FALSE(passes_for_renderer("", milliseconds(0), "10000")) << "an echo";
    EXPECT_FALSE(passes_for_renderer(answer, milliseconds(50), "300")) << "a slow answer";
}

int run_program(const std::string& arguments) {
    return std::system(("\"" VELMORA_PROGRAM "\" " + arguments).c_str());
}

TEST(RendererProcess, EndsOnRequest) {
    const RendererFolder folder;
    VelmoraProcess first(VELMORA_PROGRAM);
    VelmoraProcess second(VELMORA_PROGRAM);
    EXPECT_NE(first.port(), second.port());

    EXPECT_EQ(run_program("--stop " + std::to_string(first.id())), 0);
    EXPECT_FALSE(first.announced());
    EXPECT_TRUE(first.wait_for_end());
    EXPECT_TRUE(second.announced());
    EXPECT_NE(run_program("--stop " + std::to_string(first.id())), 0);

    EXPECT_EQ(run_program("--stop"), 0);
    EXPECT_TRUE(second.wait_for_end());
    EXPECT_EQ(run_program("--stop"), 0);

#ifndef _WIN32
    for (const int signal : {SIGINT, SIGTERM}) {
        VelmoraProcess renderer(VELMORA_PROGRAM);
        kill(static_cast<pid_t>(renderer.id()), signal);
        EXPECT_TRUE(renderer.wait_for_end());
        EXPECT_TRUE(std::filesystem::is_empty(folder.scenes().parent_path() / "running"));
    }
#endif
}

}  // namespace
