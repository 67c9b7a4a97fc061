#include "tools/vsqexport/json_text.h"

#include <nlohmann/json.hpp>

namespace vsqexport {

std::string json_text(const std::string& bytes) {
    return nlohmann::json(bytes).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace vsqexport
