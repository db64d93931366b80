#include "Album.h"

#include "desktop/Process.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>

namespace klova::demo {
namespace {

constexpr int kAnimationWidth = 720;
constexpr auto kDelay = "110"; // hundredths of a second

std::string fileNameOf(const std::string& name) {
    std::string result;
    for (const char letter : name)
        result += std::isalnum(static_cast<unsigned char>(letter)) != 0
                      ? static_cast<char>(std::tolower(static_cast<unsigned char>(letter)))
                      : '-';
    return result;
}

std::string numbered(std::size_t number, const std::string& rest) {
    return (number < 10 ? "0" : "") + std::to_string(number) + rest;
}

void save(const QImage& picture, const std::filesystem::path& file) {
    if (!picture.save(QString::fromStdString(file.string())))
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace

Album::Album(std::filesystem::path folder) : folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        if (entry.path().extension() == ".png" || entry.path().extension() == ".gif")
            std::filesystem::remove(entry.path());
    std::filesystem::remove_all(folder_ / "frames");
    std::filesystem::create_directory(folder_ / "frames");
}

void Album::add(const QImage& picture, const std::string& name) {
    const auto number = frames_.size();
    save(picture, folder_ / numbered(number, "-" + fileNameOf(name) + ".png"));
    const auto frame = folder_ / "frames" / numbered(number, ".bmp");
    save(picture.scaledToWidth(kAnimationWidth, Qt::SmoothTransformation), frame);
    frames_.push_back(frame.string());
}

std::filesystem::path Album::animate() const {
    auto file = folder_ / "klova.gif";
    std::vector<std::string> command{"convert", "-delay", kDelay, "-loop", "0"};
    command.insert(command.end(), frames_.begin(), frames_.end());
    command.insert(command.end(), {"+dither", "-colors", "128", "-layers", "Optimize", file});
    const char* path = std::getenv("PATH");
    rig::Process convert(command, {.environment = {{"PATH", path != nullptr ? path : ""}},
                                   .output = folder_ / "frames" / "convert.log"});
    const auto status = convert.waitExit(std::chrono::minutes(2));
    if (status != 0)
        throw std::runtime_error("no animated picture: " + convert.output());
    std::filesystem::remove_all(folder_ / "frames");
    return file;
}

} // namespace klova::demo
