#include "desktop/Files.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace klova::rig {

TemporaryDirectory::TemporaryDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "klova-desktop-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "cannot make " + name);
    path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void writeFile(const std::filesystem::path& file, std::string_view text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace klova::rig
