#include "importers/sceneapi/dev/qorscene_api.h"

bool qorScene_api::connect(const char*, std::int32_t, std::int32_t) {
    return false;
}
bool qorScene_api::disconnect() {
    return false;
}
bool qorScene_api::link_request(void*, void*, void*) {
    return false;
}
