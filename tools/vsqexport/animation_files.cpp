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
    int piece = 0, pieces = 0;
    const bool is_piece = std::sscanf(rest.c_str(), ".%d-of-%d", &piece, &pieces) == 2 &&
                          canonical(script_of_piece(piece, pieces)) == file;
    return canonical(script()) == file || is_piece ||
           (digits > 0 && rest.substr(digits) == kEnding);
}

std::string AnimationFiles::script_of_piece(int piece, int pieces) const {
    return base_ + "." + std::to_string(piece) + "-of-" + std::to_string(pieces) + ".py";
}

std::string AnimationFiles::prefix_in_script() const {
    std::string prefix = base_;
    std::replace(prefix.begin(), prefix.end(), '\\', '/');
    return prefix;
}

// If the plug-in couldn't write its script, an older one may still be there.
std::string AnimationFiles::checked_script(int last_frame) const {
    const std::filesystem::path path = std::filesystem::u8path(script());
    std::string text;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) {
        std::ifstream file(path);  // as text, as the plug-in writes it
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    const std::string expected[] = {
        "\n    end = " + std::to_string(last_frame) + "\n",
        "\n        path = \"" + prefix_in_script() + "\" + str(i).zfill(4) + \"" + kEnding + "\"\n",
    };
    for (const std::string& line : expected) {
        if (text.find(line) == std::string::npos) {
            throw std::runtime_error(script() + ": the script was not written");
        }
    }
    if (!ends_with(text, "\nmain()\n")) {
        throw std::runtime_error(script() + ": the script is incomplete");
    }
    return text;
}

void AnimationFiles::check_script(int last_frame) const {
    checked_script(last_frame);
}

std::string AnimationFiles::script_for(const AnimationFiles& other, int last_frame, int first,
                                       int last, int step) const {
    std::string text = checked_script(last_frame);
    const auto replace = [&text](const std::string& from, const std::string& to) {
        for (std::size_t place = 0; (place = text.find(from, place)) != std::string::npos;
             place += to.size()) {
            text.replace(place, from.size(), to);
        }
    };
    replace("path = \"" + prefix_in_script() + "\"", "path = \"" + other.prefix_in_script() + "\"");
    replace(
        "\n    start = 1\n    end = " + std::to_string(last_frame) + "\n",
        "\n    start = " + std::to_string(first) + "\n    end = " + std::to_string(last) + "\n");
    if (step > 1) {
        replace(" range (start, end+1):", " range (start, end+1, " + std::to_string(step) + "):");
    }
    return text;
}

}  // namespace vsqexport
