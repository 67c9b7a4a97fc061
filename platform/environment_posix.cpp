#include "platform/environment.h"

#include <cstddef>
#include <cstdlib>

namespace platform {

std::string expand_environment(const std::string& text) {
    std::string expanded;
    std::size_t done = 0;
    for (std::size_t start = text.find('%'); start != std::string::npos;) {
        const std::size_t end = text.find('%', start + 1);
        if (end == std::string::npos) {
            break;
        }
        const char* value = std::getenv(text.substr(start + 1, end - start - 1).c_str());
        if (value == nullptr) {
            start = end;  // this "%" may begin the next name
            continue;
        }
        expanded += text.substr(done, start - done) + value;
        done = end + 1;
        start = text.find('%', done);
    }
    return expanded + text.substr(done);
}

}  // namespace platform
