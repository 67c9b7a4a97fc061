#include "fuzz/fuzz_input.h"
#include "standins/renderer/received_scene.h"
#include "standins/renderer/wire_format.h"
#include "tests/support/temporary_folder.h"

// A renderer takes any bytes for the frames of a client.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    FuzzInput input(data, size);
    velmora::ReceivedScene scene(folder / "scene");
    try {
        while (!input.is_at_end()) {
            const auto head = input.take<velmora::FrameHead>();
            if (head.size != velmora::padded(head.size) || head.size > size) {
                break;
            }
            std::vector<std::uint64_t> words(head.size / sizeof(std::uint64_t));
            for (std::uint64_t& word : words) {
                word = input.take<std::uint64_t>();
            }
            if (head.operation >= velmora::operation::kFirstSceneCall) {
                scene.call(head.operation, reinterpret_cast<const char*>(words.data()), head.size);
            }
        }
    } catch (const velmora::MalformedFrame&) {
        return 0;
    }
    require(scene.finish(folder / "whole"), "a scene that isn't kept");
    return 0;
}
