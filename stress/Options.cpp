#include "Options.h"

#include "desktop/WindowManager.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace klova::stress {
namespace {

bool known(const std::string& manager) {
    const auto& names = rig::windowManagerNames();
    return std::ranges::find(names, manager) != names.end();
}

std::vector<std::string> managersIn(const std::string& list) {
    std::vector<std::string> names;
    for (std::size_t from = 0; from <= list.size();) {
        const auto end = std::min(list.find(',', from), list.size());
        names.push_back(list.substr(from, end - from));
        if (!known(names.back()))
            throw std::invalid_argument(names.back());
        from = end + 1;
    }
    return names;
}

void set(Options& options, const std::string& name, const std::string& value) {
    if (name == "--seed")
        options.seed = static_cast<std::uint32_t>(std::stoul(value));
    else if (name == "--first")
        options.first = static_cast<std::uint32_t>(std::stoul(value));
    else if (name == "--streams")
        options.streams = std::stoi(value);
    else if (name == "--gestures")
        options.gestures = std::stoi(value);
    else if (name == "--minutes")
        options.minutes = std::stod(value);
    else if (name == "--manager")
        options.managers = managersIn(value);
    else
        throw std::invalid_argument(name);
}

} // namespace

std::optional<Options> parse(const std::vector<std::string>& words) {
    if (words.size() % 2 != 0)
        return std::nullopt;
    Options options;
    try {
        for (std::size_t i = 0; i < words.size(); i += 2)
            set(options, words[i], words[i + 1]);
    } catch (const std::logic_error&) {
        return std::nullopt;
    }
    if (options.minutes)
        *options.minutes /= static_cast<double>(options.managers.size());
    else if (!options.streams && !options.gestures)
        options.gestures = 500;
    return options;
}

void printUsage() {
    std::string names;
    for (const auto& name : rig::windowManagerNames())
        names += " " + name;
    std::fprintf(stderr,
                 "usage: klova-stress [--seed <number>] [--manager <name>[,<name>...]]\n"
                 "                    [--gestures <number>] [--minutes <number>]\n"
                 "                    [--first <stream>] [--streams <number>]\n"
                 "Gestures and streams are counted for each manager, minutes for all of\n"
                 "them together. Window managers:%s\n",
                 names.c_str());
}

} // namespace klova::stress
