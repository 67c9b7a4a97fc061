#include <gtest/gtest.h>

#include <asio.hpp>
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>

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

// Frames behind a greeting.
template <typename Fill>
std::string stream_of(Fill fill) {
    Frames frames;
    add(frames, velmora::operation::kHello, velmora::kGreeting);
    fill(frames);
    return {frames.bytes().begin(), frames.bytes().end()};
}

std::string head(std::uint64_t operation, std::uint64_t size) {
    return stream_of([&](Frames& frames) { frames.put(velmora::FrameHead{operation, size}); });
}

constexpr std::uint64_t kGroup = kCall<&qorScene_api::begin_group>;
constexpr std::uint64_t kParameter = kCall<&qorScene_api::set_parameter>;

// A shader that holds itself, again and again until its buffer has to move.
void write_shader_into_itself(Frames& frames) {
    add(frames, kCall<&qorScene_api::begin_shader>, static_cast<const char*>(nullptr), "type");
    for (int time = 0; time < 20; ++time) {
        add(frames, kCall<&qorScene_api::assign_shader>, std::int32_t{0}, std::uint64_t{1});
    }
}

// Each shader holds the one before twice, so that its text doubles with a few bytes more.
void double_shaders(Frames& frames) {
    for (std::uint64_t shader = 1; shader < 60; ++shader) {
        add(frames, kCall<&qorScene_api::begin_shader>, static_cast<const char*>(nullptr), "type");
        for (int time = 0; time < 2; ++time) {
            add(frames, kCall<&qorScene_api::set_parameter_shader>, "name", shader - 1);
        }
        add(frames, kCall<&qorScene_api::end_shader>);
    }
}

// Whether the renderer takes a connection, and closes it within some seconds.
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

TEST(RendererProcess, SurvivesWhatAnybodySends) {
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
            // Not into a request to stop, which would be a sound one.
            damaged[24 + random() % (damaged.size() - 24)] =
                byte == char{velmora::operation::kStop} ? 'x' : byte;
        }
        streams.push_back(damaged);
    }
    for (size_t i = 0; i < streams.size(); ++i) {
        ASSERT_TRUE(survives(port, streams[i]) && renderer.announced())
            << "stream " << i << ": " << testing::PrintToString(streams[i].substr(0, 80));
    }

    velmora::LinkConnection connection;
    ASSERT_TRUE(connection.open("localhost", port));
    connection.begin_frame(kGroup);
    connection.put("sound");
    connection.put(true);
    connection.end_frame();
    EXPECT_EQ(connection.ask_number(velmora::operation::kFinish), 1u);
    EXPECT_EQ(file_contents(renderer.announcement().scene_file), "\ngroup \"sound\" {\n");
}

int run_program(const std::string& arguments) {
    return std::system(("\"" VELMORA_PROGRAM "\" " + arguments).c_str());
}

TEST(RendererProcess, EndsWhenItIsTold) {
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
