#include "Usage.h"

#include "desktop/Connections.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <xcb/res.h>

namespace klova::stress {
namespace {

constexpr Usage kBound{KLOVA_GROWTH_BOUND_KIB, 2, 16};

std::filesystem::path folderOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

long residentKib(pid_t process) {
    std::ifstream status(folderOf(process) / "status");
    for (std::string word; status >> word;)
        if (word == "VmRSS:") {
            long size = 0;
            status >> size;
            return size;
        }
    return 0;
}

long descriptors(pid_t process) {
    std::error_code gone;
    const std::filesystem::directory_iterator all(folderOf(process) / "fd", gone);
    return gone ? 0 : std::distance(begin(all), end(all));
}

long resourcesOf(rig::Display& display, std::uint32_t client) {
    const auto reply = rig::owned(xcb_res_query_client_resources_reply(
        display.get(), xcb_res_query_client_resources(display.get(), client), nullptr));
    long count = 0;
    auto each = xcb_res_query_client_resources_types_iterator(reply.get());
    for (; reply && each.rem > 0; xcb_res_type_next(&each))
        count += each.data->count;
    return count;
}

} // namespace

Usage usageOf(rig::Display& display, pid_t process) {
    rig::owned(xcb_res_query_version_reply(display.get(),
                                           xcb_res_query_version(display.get(), 1, 2), nullptr));
    Usage usage{residentKib(process), descriptors(process), 0};
    for (const auto client : rig::clientsOf(display, process))
        usage.xResources += resourcesOf(display, client);
    return usage;
}

Usage operator-(const Usage& later, const Usage& earlier) {
    return {later.residentKib - earlier.residentKib, later.descriptors - earlier.descriptors,
            later.xResources - earlier.xResources};
}

std::ostream& operator<<(std::ostream& out, const Usage& usage) {
    return out << usage.residentKib << " KiB, " << usage.descriptors << " descriptors, "
               << usage.xResources << " X resources";
}

bool isLeak(const Usage& growth) {
    return growth.residentKib > kBound.residentKib || growth.descriptors > kBound.descriptors ||
           growth.xResources > kBound.xResources;
}

} // namespace klova::stress
