#include "importers/sceneapi/dev/live_library.h"

namespace {

struct Behaviour {
    live_library::Initialize* initialize = nullptr;
    void (*unload)() = nullptr;

    ~Behaviour() {
        if (unload != nullptr) {
            unload();
        }
    }
} behaviour;

}  // namespace

extern "C" void set_behaviour(live_library::Initialize* initialize, void (*unload)()) {
    behaviour.initialize = initialize;
    behaviour.unload = unload;
}

// Built a second time with another name, the library is one that isn't the renderer's.
extern "C" live_library::Root* VSQ_INITIALIZE() {
    return behaviour.initialize();
}
