#include "project_file.h"

#include <fstream>
#include <regex>
#include <sstream>

namespace dv::test {

std::string project_file(const std::string &name) { return DV_SOURCE_DIR "/" + name; }

std::set<std::string> functions_with_pointers(const std::string &header) {
    std::stringstream content;
    content << std::ifstream(project_file("src/include/dvtypes/" + header)).rdbuf();
    const std::string text = content.str();
    const std::regex declaration(R"(\nDV_EXPORT [\w ]+ \*?(\w+)\(([^)]*\*[^)]*)\);)");
    std::set<std::string> names;
    for (std::sregex_iterator it(text.begin(), text.end(), declaration), end; it != end; ++it)
        names.insert((*it)[1]);
    return names;
}

}  // namespace dv::test
