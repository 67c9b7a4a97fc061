#pragma once

#include <optional>

#include "importers/sceneapi/dev/live_library.h"
#include "platform/dynamic_library.h"

/// A live library that finds renderers. Tests override what they observe.
struct StandInLibrary : live_library::Root, live_library::QueryApi {
    QueryApi* get_query_api(int, int) override { return this; }
    bool connect(std::int64_t) override { return true; }
    void disconnect() override {}
    void reserved_2() override {}
    void reserved_4() override {}
    void reserved_5() override {}
};

/// Loads a copy of the fake live library, and keeps it loaded. It then gives what `initialize`
/// returns.
inline std::optional<platform::DynamicLibrary> load_fake_library(
    const std::string& path, live_library::Initialize* initialize, void (*unload)() = nullptr) {
    auto library = platform::DynamicLibrary::open(path);
    using SetBehaviour = void(live_library::Initialize*, void (*)());
    reinterpret_cast<SetBehaviour*>(library.value().find("set_behaviour"))(initialize, unload);
    return library;
}
