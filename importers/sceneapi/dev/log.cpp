#include "importers/sceneapi/dev/log.h"

#include <cstddef>
#include <iostream>
#include <optional>

#include "importers/sceneapi/dev/installation.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace qor {

namespace {

constexpr std::uint64_t kStartAnewSize = 0x1400000;  // 20 MiB

constexpr const char* kLevelNames[] = {
    "ERROR", "WARNING", "INFO", "DEBUG", "DEBUG1", "DEBUG2", "DEBUG3", "DEBUG4", "NONE",
};

std::FILE* open_log() {
    const std::string folder =
        Installation::get().resource_folder(kOldestRenderer, kNewestRenderer);
    if (folder.empty()) {
        return nullptr;
    }
    const std::string path = folder + platform::kSeparator + "sceneapi.log";
    const std::uint64_t size = platform::file_size(path).value_or(0);
    std::FILE* stream = platform::open_file(path, size >= kStartAnewSize ? "w" : "a");
    if (stream == nullptr) {
        std::cerr << "could not open log file:" << std::endl;
        std::perror("opening log");
    }
    return stream;
}

}  // namespace

std::FILE* Output2FILE::stream() {
    static std::FILE* stream = nullptr;
    if (stream == nullptr) {
        stream = open_log();
    }
    return stream;
}

void Output2FILE::output(const std::string& line) {
    std::FILE* file = stream();
    if (file == nullptr) {
        return;
    }
    std::fprintf(file, "%s", line.c_str());
    std::fflush(file);
}

std::string NowTime() {
    const std::optional<std::string> time = platform::local_time_of_day();
    if (!time) {
        return "Error in NowTime()";
    }
    static const std::uint32_t first_use = platform::tick_count();
    const long milliseconds = static_cast<long>((platform::tick_count() - first_use) % 1000);
    char text[32];
    std::snprintf(text, sizeof text, "%s.%03ld", time->c_str(), milliseconds);
    return text;
}

const char* LogLevelName(LogLevel level) {
    return kLevelNames[level];
}

std::string LogFileName(const char* path) {
    const std::string name = path;
    return name.substr(name.find_last_of("\\/") + 1);
}

}  // namespace qor
