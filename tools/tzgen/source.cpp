// The source's first line, "# version 2025b", names its release. All else is zic's to understand.

#include "source.h"

#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

extern char **environ;

namespace tzgen {

source_t read_source(const std::filesystem::path &path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    source_t source{path.filename().string(), path.stem().string()};
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string first, second, third;
        words >> first >> second >> third;
        if (first == "#" && second == "version") source.release = third;
    }
    return source;
}

void compile_source(const std::filesystem::path &path, const std::string &zic,
                    const std::filesystem::path &folder) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::string words[] = {zic, "-b", "fat", "-d", folder.string(), path.string()};
    char *argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(),
                    words[4].data(), words[5].data(), nullptr};
    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, argv[0], nullptr, nullptr, argv, environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error(zic + " failed on " + path.string());
    }
}

}  // namespace tzgen
