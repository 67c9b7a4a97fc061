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

// A second library is built with another name for this, so that it isn't a live library.
extern "C" live_library::Root* VSQ_INITIALIZE() {
    return behaviour.initialize();
}
