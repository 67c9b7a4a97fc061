#pragma once

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

/// A new folder that is deleted with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static std::atomic<int> count{0};
#ifdef _WIN32
        const int process = _getpid();
#else
        const int process = getpid();
#endif
        path_ = std::filesystem::temp_directory_path() /
                ("vsq_test_" + std::to_string(process) + "_" + std::to_string(++count));
        // An earlier process with this id may have left a file that it couldn't delete.
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const {
        return path_;
    }

    /// The path of a name in the folder, as UTF-8.
    std::string operator/(const std::string& name_utf8) const {
        return (path_ / std::filesystem::u8path(name_utf8)).u8string();
    }

private:
    std::filesystem::path path_;
};

/// All bytes of a file; empty if there is no such file.
inline std::string file_contents(const std::string& path_utf8) {
    std::ifstream file(std::filesystem::u8path(path_utf8), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
