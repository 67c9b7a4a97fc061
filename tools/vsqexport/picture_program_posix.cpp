#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <stdexcept>

#include "platform/folders.h"
#include "tools/vsqexport/picture_program.h"

extern char** environ;

namespace vsqexport {

void draw_picture(const std::vector<std::string>& scene_files, const std::string& picture) {
    std::vector<std::string> words = {platform::program_folder() + "/vsqpicture"};
    words.insert(words.end(), scene_files.begin(), scene_files.end());
    words.push_back(picture);
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(&word[0]);
    }
    arguments.push_back(nullptr);

    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
        throw std::runtime_error(words[0] + " can't be started, so there is no picture");
    }
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error(picture + ": the picture was not drawn");
    }
}

}  // namespace vsqexport
