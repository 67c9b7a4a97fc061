#include "tools/vsqexport/scene_collection.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/vsqexport/unfinished_file.h"
#include "tools/vsqinfo/checks/file_search.h"
#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/vsq_reader.h"
#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqexport {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
    throw std::runtime_error(vsqinfo::display_text(path) + ": " + reason);
}

// A place in a scene file that names another file.
struct Reference {
    std::uint64_t offset;
    std::uint64_t length;
    std::string path;
};

// Finds the names of pictures and mesh files.
class ReferenceListener : public vsqinfo::VsqListener {
public:
    const std::vector<Reference>& references() const { return references_; }

    void name(std::string_view bytes, bool is_hex, vsqinfo::FilePlace place) override {
        constexpr std::size_t kMarks = 2;  // two quotes, or "xX"
        last_ = {place.offset, bytes.size() * (is_hex ? 2 : 1) + kMarks, std::string(bytes)};
    }

    // The value is the last name before its parameter.
    void parameter(const vsqinfo::VsqParameter& parameter) override {
        constexpr char kRendererPicture[] = "startup.hdr";
        const bool names_file = parameter.name == "file" || parameter.name == "texture";
        if (parameter.form == vsqinfo::ValueForm::kText && names_file && !last_.path.empty() &&
            last_.path.size() < vsqinfo::VsqTokens::kKeptText && last_.path != kRendererPicture) {
            references_.push_back(last_);
        }
    }

private:
    Reference last_{};
    std::vector<Reference> references_;
};

// The last part of a path of any system, with underlines for what isn't plain ASCII.
std::string plain_name(const std::string& path) {
    std::string name = path.substr(path.find_last_of("/\\") + 1);
    for (char& c : name) {
        const auto letter = static_cast<unsigned char>(c);
        const bool is_plain = letter < 0x80 && (std::isalnum(letter) || std::strchr("._- ", c));
        c = is_plain ? c : '_';
    }
    return name.empty() || name == "." || name == ".." ? "file" : name;
}

// Names in one folder. Some systems don't tell letter cases apart.
class FolderNames {
public:
    std::string distinct(const std::string& wanted) {
        const std::size_t dot = std::min(wanted.rfind('.'), wanted.size());
        std::string name = wanted;
        for (int number = 2; !taken_.insert(folded(name)).second; ++number) {
            name = wanted.substr(0, dot) + "-" + std::to_string(number) + wanted.substr(dot);
        }
        return name;
    }

private:
    static std::string folded(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
        return text;
    }

    std::set<std::string> taken_;
};

struct Scene {
    std::string path;
    std::string name;  // in the folder
    std::vector<Reference> references;
};

std::vector<Reference> references_of(const std::string& scene) {
    ReferenceListener listener;
    try {
        vsqinfo::read_vsq_file(scene, &listener);
    } catch (const std::runtime_error& error) {
        fail(scene, error.what());
    }
    return listener.references();
}

class Collection {
public:
    Collection(const std::vector<std::string>& scenes, const std::string& folder);

    void check_nothing_is_replaced() const;
    Collected copy();

private:
    using Source =
        std::pair<std::string, std::string>;  // the scene's folder, the path in the scene

    void choose_name(const std::string& scene, const std::string& path);
    std::uint64_t copy_file(std::ifstream& from, const std::string& name) const;
    std::uint64_t copy_scene(const Scene& scene) const;
    std::string target(const std::string& name) const {
        return (fs::u8path(folder_) / fs::u8path(name)).u8string();
    }

    std::string folder_;
    std::vector<Scene> scenes_;
    FolderNames names_;
    std::map<Source, std::optional<std::string>> files_;  // names in the folder; none if missing
    std::vector<std::string> missing_;
};

std::string folder_of(const std::string& scene) {
    return fs::u8path(scene).parent_path().u8string();
}

Collection::Collection(const std::vector<std::string>& scenes, const std::string& folder)
    : folder_(folder) {
    for (const std::string& path : scenes) {
        scenes_.push_back(
            {path, names_.distinct(fs::u8path(path).filename().u8string()), references_of(path)});
    }
    for (const Scene& scene : scenes_) {
        for (const Reference& reference : scene.references) {
            choose_name(scene.path, reference.path);
        }
    }
}

void Collection::choose_name(const std::string& scene, const std::string& path) {
    const auto [file, is_new] = files_.emplace(Source(folder_of(scene), path), std::nullopt);
    if (!is_new) {
        return;
    }
    const vsqinfo::FileSearch search = vsqinfo::FileSearch::beside(scene);
    if (const std::optional<fs::path> found = search.find(path)) {
        // A copy could replace it before it's copied itself.
        std::error_code ignored;
        if (fs::equivalent(fs::absolute(*found).parent_path(), fs::u8path(folder_), ignored)) {
            fail(path, "it is in that folder already");
        }
        file->second = names_.distinct(plain_name(path));
    } else {
        missing_.push_back(vsqinfo::display_text(scene) + ": " + search.missing_text(path));
    }
}

void Collection::check_nothing_is_replaced() const {
    const auto check = [this](const std::string& name) {
        std::error_code ignored;
        if (fs::exists(fs::symlink_status(fs::u8path(target(name)), ignored))) {
            fail(target(name), "it is there already (--force replaces it)");
        }
    };
    for (const Scene& scene : scenes_) {
        check(scene.name);
    }
    for (const auto& [source, name] : files_) {
        if (name) {
            check(*name);
        }
    }
}

Collected Collection::copy() {
    std::error_code error;
    fs::create_directories(fs::u8path(folder_), error);
    if (error) {
        fail(folder_, "the folder can't be made: " + error.message());
    }
    for (const Scene& scene : scenes_) {
        if (fs::equivalent(fs::u8path(scene.path), fs::u8path(target(scene.name)), error)) {
            fail(scene.path, "it is in that folder already");
        }
    }
    Collected collected;
    collected.missing = missing_;
    for (const auto& [source, name] : files_) {
        if (name) {
            const auto search =
                vsqinfo::FileSearch::beside((fs::u8path(source.first) / "x").u8string());
            std::optional<std::ifstream> from = search.open(source.second);
            if (!from) {
                fail(source.second, "it can't be opened any more");
            }
            collected.bytes += copy_file(*from, *name);
            ++collected.files;
        }
    }
    for (const Scene& scene : scenes_) {
        collected.bytes += copy_scene(scene);
        ++collected.files;
    }
    return collected;
}

// Copies `count` bytes, or all if there are fewer, and returns how many.
std::uint64_t pump(std::istream& from, std::ostream& to, std::uint64_t count) {
    std::vector<char> block(1 << 16);
    std::uint64_t done = 0;
    while (done < count && from && to) {
        const std::uint64_t wanted = std::min<std::uint64_t>(block.size(), count - done);
        from.read(block.data(), static_cast<std::streamsize>(wanted));
        to.write(block.data(), from.gcount());
        done += static_cast<std::uint64_t>(from.gcount());
        if (from.gcount() == 0) {
            break;
        }
    }
    return done;
}

constexpr std::uint64_t kAll = UINT64_MAX;

// Writes a file of the folder with `fill`, and returns its size.
template <typename Fill>
std::uint64_t written(const std::string& target, const Fill& fill) {
    UnfinishedFile unfinished(target);
    errno = 0;
    std::ofstream to(fs::u8path(unfinished.path()), std::ios::binary);
    fill(to);
    to.close();
    if (!to) {
        fail(target, "cannot be written: " + std::generic_category().message(errno));
    }
    const std::uint64_t size = fs::file_size(fs::u8path(unfinished.path()));
    unfinished.finish();
    return size;
}

std::uint64_t Collection::copy_file(std::ifstream& from, const std::string& name) const {
    return written(target(name), [&](std::ostream& to) {
        pump(from, to, kAll);
        if (from.bad()) {
            fail(target(name), "its source can't be read to the end");
        }
    });
}

std::uint64_t Collection::copy_scene(const Scene& scene) const {
    return written(target(scene.name), [&](std::ostream& to) {
        std::ifstream from(fs::u8path(scene.path), std::ios::binary);
        std::uint64_t done = 0;
        for (const Reference& reference : scene.references) {
            const auto& name = files_.at({folder_of(scene.path), reference.path});
            if (name) {
                done += pump(from, to, reference.offset - done);
                to << '"' << *name << '"';
                from.seekg(static_cast<std::streamoff>(reference.offset + reference.length));
                done += reference.length;
            }
        }
        pump(from, to, kAll);
        if (from.bad()) {
            fail(scene.path, "it can't be read to the end");
        }
    });
}

}  // namespace

Collected collect_scenes(const std::vector<std::string>& scenes, const std::string& folder,
                         bool force) {
    Collection collection(scenes, folder);
    if (!force) {
        collection.check_nothing_is_replaced();
    }
    return collection.copy();
}

}  // namespace vsqexport
