#include "tools/vsqexport/own_resources.h"

#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "importers/sceneapi/dev/installation.h"
#include "platform/folders.h"
#include "platform/wide_text.h"
#include "plugins/3dsmax/export/option_keys.h"
#include "tools/vsqexport/settings_file.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace fs = std::filesystem;

namespace {

// The plug-in ignores longer paths of a resource folder.
constexpr std::size_t kLongestPath = 259;

constexpr const char* kParts[] = {"textures", "Animations/3ds max", "Animations", ""};

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        result += c == '\\' || c == '"' ? std::string("\\") + c : std::string(1, c);
    }
    return result + '"';
}

// An installation counts only if its program is there, so this program stands for it.
std::string registry_text(const fs::path& folder) {
    return "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\" +
           qor::installation_key(qor::kSceneRenderer) + "]\r\n\"" + qor::kResourceFolderValue +
           "\"=" + quoted(folder.u8string()) +
           "\r\n\"BinName\"=" + quoted(platform::program_folder() + "/vsqexport") + "\r\n";
}

std::set<fs::path> files_below(const fs::path& folder) {
    std::set<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator i(folder, error), end; !error && i != end;
         i.increment(error)) {
        if (i->is_regular_file(error)) {
            files.insert(i->path());
        }
    }
    return files;
}

}  // namespace

OwnResources::OwnResources(const std::string& folder, fs::path scratch)
    : folder_(fs::absolute(fs::u8path(folder)).lexically_normal()), scratch_(std::move(scratch)) {
    const std::string shown = vsqinfo::display_text(folder);
    if (platform::wide_from_utf8(folder_.u8string()).size() > kLongestPath) {
        throw std::runtime_error(shown + ": the path of a resource folder can't be longer than " +
                                 std::to_string(kLongestPath) + " characters");
    }
    files_before_ = files_below(folder_);
    std::error_code error;
    fs::create_directories(folder_ / "textures", error);
    if (!error) {
        fs::create_directories(folder_ / "Animations", error);
    }
    if (error) {
        throw std::runtime_error(shown + ": cannot be made: " + error.message());
    }
    const fs::path settings = scratch_ / "quoria" / "plugcfg";
    fs::create_directories(settings);
    const fs::path users = fs::u8path(user_settings_folder()) / Qor::kSettingsFile;
    if (fs::exists(users)) {
        fs::copy_file(users, settings / Qor::kSettingsFile);
    }
    std::ofstream registry(scratch_ / "quoria" / "registry.reg", std::ios::binary);
    registry << registry_text(folder_);
    registry.close();
    if (!registry) {
        throw std::runtime_error(scratch_.u8string() + ": cannot be written");
    }
}

OwnResources::~OwnResources() {
    std::error_code ignored;
    fs::remove_all(scratch_, ignored);
    // The renderer's log says no more than the report.
    if (files_before_.count(folder_ / "sceneapi.log") == 0) {
        fs::remove(folder_ / "sceneapi.log", ignored);
    }
    for (const char* part : kParts) {
        fs::remove(*part == 0 ? folder_ : folder_ / part, ignored);  // fails if it isn't empty
    }
}

std::map<std::string, std::string> OwnResources::environment() const {
    return {{"XDG_CONFIG_HOME", scratch_.u8string()}, {"TMPDIR", scratch_.u8string()}};
}

void OwnResources::drop_new_files() {
    std::error_code ignored;
    for (const fs::path& file : files_below(folder_)) {
        if (files_before_.count(file) == 0) {
            fs::remove(file, ignored);
        }
    }
}

}  // namespace vsqexport
