#include "RequestCount.h"

#include "desktop/Connections.h"

#include <algorithm>
#include <stdexcept>

namespace klova::bench {
namespace {

/// How many requests follow one another in a part of the record.
std::uint64_t requestsIn(const std::uint8_t* data, std::size_t size) {
    std::uint64_t requests = 0;
    for (std::size_t at = 0; at + 4 <= size; ++requests) {
        // In units of four bytes; 0 where the length does not fit and follows.
        std::size_t length = static_cast<std::size_t>(data[at + 2] | data[at + 3] << 8);
        if (length == 0 && at + 8 <= size)
            length =
                static_cast<std::size_t>(data[at + 4] | data[at + 5] << 8 | data[at + 6] << 16);
        at += std::max<std::size_t>(length, 1) * 4;
    }
    return requests;
}

} // namespace

RequestCount::RequestCount(const std::string& display, pid_t process)
    : control_(display), data_(display), context_(xcb_generate_id(control_.get())) {
    const auto clients = rig::clientsOf(control_, process);
    if (clients.empty())
        throw std::runtime_error("the process to be counted is not connected");
    xcb_record_range_t everything{};
    everything.core_requests = {1, 127};
    everything.ext_requests.major = {128, 255};
    everything.ext_requests.minor = {0, 65535};
    xcb_record_create_context(control_.get(), context_, 0,
                              static_cast<std::uint32_t>(clients.size()), 1, clients.data(),
                              &everything);
    control_.roundTrip();
    const auto cookie = xcb_record_enable_context(data_.get(), context_);
    // The first part of the record says that it has begun.
    rig::owned(xcb_record_enable_context_reply(data_.get(), cookie, nullptr));
    reader_ = std::jthread([this, cookie] {
        constexpr std::uint8_t fromClient = 1, end = 5;
        while (const auto part =
                   rig::owned(xcb_record_enable_context_reply(data_.get(), cookie, nullptr))) {
            if (part->category == end)
                return;
            if (part->category == fromClient)
                requests_ += requestsIn(
                    xcb_record_enable_context_data(part.get()),
                    static_cast<std::size_t>(xcb_record_enable_context_data_length(part.get())));
        }
    });
}

RequestCount::~RequestCount() {
    if (reader_.joinable())
        stop();
}

std::uint64_t RequestCount::stop() {
    xcb_record_disable_context(control_.get(), context_);
    control_.roundTrip();
    reader_.join();
    xcb_record_free_context(control_.get(), context_);
    control_.roundTrip();
    return requests_;
}

} // namespace klova::bench
