#include "tools/vsqexport/animation_files.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace vsqexport {

namespace {

const std::string kEnding = ".vsq";

bool ends_with(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

bool is_scene_file_name(std::string path) {
    std::transform(path.begin(), path.end(), path.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ends_with(path, kEnding);
}

}  // namespace

AnimationFiles::AnimationFiles(const std::string& target) {
    if (!is_scene_file_name(target)) {
        throw std::invalid_argument("the name of an animation must end in " + kEnding + ", not '" +
                                    target + "'");
    }
    base_ = target.substr(0, target.size() - kEnding.size());
}

std::string AnimationFiles::frame(int number) const {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return base_ + digits + kEnding;
}

bool AnimationFiles::include(const std::string& path) const {
    const auto canonical = [](const std::string& name) {
        std::error_code ignored;
        const auto whole = std::filesystem::absolute(std::filesystem::u8path(name), ignored);
        return std::filesystem::weakly_canonical(whole, ignored).u8string();
    };
    const std::string file = canonical(path);
    const std::string base = canonical(base_);
    if (file.compare(0, base.size(), base) != 0) {
        return false;
    }
    const std::string rest = file.substr(base.size());
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    return canonical(script()) == file || (digits > 0 && rest.substr(digits) == kEnding);
}

// If the plug-in couldn't write its script, an older one may still be there.
void AnimationFiles::check_script(int last_frame) const {
    const std::filesystem::path path = std::filesystem::u8path(script());
    std::string text;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) {
        std::ifstream file(path);
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    std::string prefix = base_;
    std::replace(prefix.begin(), prefix.end(), '\\', '/');
    const std::string expected[] = {
        "\n    end = " + std::to_string(last_frame) + "\n",
        "\n        path = \"" + prefix + "\" + str(i).zfill(4) + \"" + kEnding + "\"\n",
    };
    for (const std::string& line : expected) {
        if (text.find(line) == std::string::npos) {
            throw std::runtime_error(script() + ": the script was not written");
        }
    }
    if (!ends_with(text, "\nmain()\n")) {
        throw std::runtime_error(script() + ": the script is incomplete");
    }
}

}  // namespace vsqexport
