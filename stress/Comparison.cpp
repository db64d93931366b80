#include "Comparison.h"

#include "Model.h"

#include <algorithm>
#include <array>
#include <set>
#include <sstream>

namespace klova::stress {
namespace {

constexpr std::size_t kContext = 8;

/// A frozen key holds back the keys after it, but not the clicks. How long it may take until the
/// key is answered, on a machine that has other things to do. In milliseconds.
constexpr std::int32_t kPatience = 100;

/// From one server time to another, which may have wrapped around.
std::int32_t between(const Heard& earlier, const Heard& later) {
    return static_cast<std::int32_t>(later.time - earlier.time);
}

bool comesBefore(const Heard& one, const Heard& other) { return between(one, other) > 0; }

/// How much older than one heard before it an event is, at most.
std::int32_t latest(const std::vector<Heard>& record) {
    std::int32_t late = 0;
    for (std::size_t i = 1, newest = 0; i < record.size(); ++i) {
        late = std::max(late, between(record[i], record[newest]));
        if (comesBefore(record[newest], record[i]))
            newest = i;
    }
    return late;
}

std::ostream& printEvent(std::ostream& out, std::uint8_t type, int detail) {
    static constexpr std::array names = {"key press", "key release", "button press",
                                         "button release"};
    return out << names[static_cast<std::size_t>(type - XCB_KEY_PRESS)] << ' ' << detail;
}

/// How many of the first expected events each agree with which numbers of the first heard ones.
class Alignment {
public:
    Alignment(const std::vector<Expected>& expected, const std::vector<Heard>& record)
        : expected_(expected), record_(record), reached_{{0}} {
        for (const auto& event : expected)
            if (auto next = after(event); !next.empty())
                reached_.push_back(std::move(next));
            else
                break;
    }

    bool complete() const {
        return agreeing() == expected_.size() && reached_.back().contains(record_.size());
    }
    std::size_t agreeing() const { return reached_.size() - 1; }
    std::size_t heard() const { return *reached_.back().rbegin(); }

private:
    std::set<std::size_t> after(const Expected& event) const {
        std::set<std::size_t> next;
        for (const std::size_t at : reached_.back()) {
            const bool same = at < record_.size() && record_[at].type == event.type &&
                              record_[at].detail == event.detail;
            if (event.verdict != Verdict::heard)
                next.insert(at);
            if (event.verdict != Verdict::kept && same)
                next.insert(at + 1);
        }
        return next;
    }

    const std::vector<Expected>& expected_;
    const std::vector<Heard>& record_;
    std::vector<std::set<std::size_t>> reached_;
};

void print(std::ostream& out, const Stream& stream, std::size_t from) {
    static constexpr std::array verdicts = {"to be heard", "to be kept", "to be either"};
    out << "expected from there:\n";
    for (std::size_t i = from; i < std::min(from + kContext, stream.expected.size()); ++i) {
        const auto& event = stream.expected[i];
        printEvent(out << "  step " << event.step << ": ", event.type, event.detail)
            << ' ' << verdicts[static_cast<std::size_t>(event.verdict)] << '\n';
    }
}

void print(std::ostream& out, const std::vector<Heard>& record, std::size_t at) {
    const std::size_t from = at - std::min(at, kContext);
    out << "heard around it:\n";
    for (std::size_t i = from; i < std::min(at + kContext, record.size()); ++i)
        printEvent(out << (i == at ? "> " : "  ") << record[i].time << ' ', record[i].type,
                   record[i].detail)
            << '\n';
}

/// Whether it is one in every layout that the stream has.
bool staysModifier(Key key, const Stream& stream) {
    const auto isModifier = [key](int layout) {
        return Model(layouts()[static_cast<std::size_t>(layout)]).isModifier(key);
    };
    return isModifier(stream.layout) && std::ranges::all_of(stream.steps, [&](const Step& step) {
               return step.act != Act::changeLayout || isModifier(step.detail);
           });
}

std::string stuckModifiers(const Stream& stream, const std::vector<Heard>& record) {
    std::set<Key> down;
    for (const auto& heard : record)
        if (heard.type == XCB_KEY_PRESS && staysModifier(heard.detail, stream))
            down.insert(heard.detail);
        else if (heard.type == XCB_KEY_RELEASE)
            down.erase(heard.detail);
    std::string text;
    for (const Key key : down)
        text += "modifier " + std::to_string(key) + " is heard going down and never up\n";
    return text;
}

} // namespace

std::string difference(const Stream& stream, std::vector<Heard> record) {
    const auto late = latest(record);
    std::ranges::stable_sort(record, comesBefore);
    const Alignment alignment(stream.expected, record);
    if (alignment.complete())
        return late > kPatience ? "an event is heard " + std::to_string(late) +
                                      " ms behind one that came after it\n"
                                : stuckModifiers(stream, record);
    std::ostringstream out;
    out << alignment.agreeing() << " of " << stream.expected.size() << " events agree\n";
    print(out, stream, alignment.agreeing());
    print(out, record, alignment.heard());
    return out.str();
}

} // namespace klova::stress
