#include "platform/Diagnostics.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace klova {
namespace {

DiagnosticSink theSink = nullptr;
int holds = 0;
std::vector<std::function<std::string()>> heldLines;

/// A standard stream, opened once more without blocking where writing to it could block. The flag
/// is not set on the descriptor itself, which other processes may share.
class Output {
public:
    explicit Output(int stream) : stream_(stream) {
        struct stat status {};
        if (::fstat(stream, &status) != 0)
            return;
        if (S_ISSOCK(status.st_mode))
            socket_ = true;
        else if (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))
            descriptor_ = ::open(("/proc/self/fd/" + std::to_string(stream)).c_str(),
                                 O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        else
            descriptor_ = stream;
    }

    void write(const std::string& line) {
        const std::string text = brokenLine_ ? "\n" + line : line;
        std::size_t done = 0;
        while (done < text.size()) {
            const auto written = writeSome(text.data() + done, text.size() - done);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                break;
            done += static_cast<std::size_t>(written);
        }
        if (done > 0)
            brokenLine_ = done < text.size();
    }

private:
    ssize_t writeSome(const char* text, std::size_t size) const {
        if (socket_)
            return ::send(stream_, text, size, MSG_DONTWAIT | MSG_NOSIGNAL);
        return descriptor_ < 0 ? -1 : ::write(descriptor_, text, size);
    }

    int stream_;
    int descriptor_ = -1;
    bool socket_ = false;
    bool brokenLine_ = false;
};

void writeHeldLines() {
    if (heldLines.empty())
        return;
    std::string text;
    for (const auto& line : heldLines)
        text += line() + '\n';
    heldLines.clear();
    static Output output(STDOUT_FILENO);
    output.write(text);
}

} // namespace

void diagnosticLine(std::string_view text) {
    diagnosticLine([line = std::string(text)] { return line; });
}

void diagnosticLine(std::function<std::string()> text) {
    if (theSink != nullptr) {
        theSink(text());
        return;
    }
    heldLines.push_back(std::move(text));
    if (holds == 0)
        writeHeldLines();
}

bool diagnosticsAreRead() {
    static const bool areRead = [] {
        struct stat status {};
        return ::isatty(STDOUT_FILENO) == 1 ||
               (::fstat(STDOUT_FILENO, &status) == 0 && S_ISFIFO(status.st_mode));
    }();
    return areRead;
}

DiagnosticsHold::DiagnosticsHold() { ++holds; }

DiagnosticsHold::~DiagnosticsHold() {
    if (--holds == 0)
        writeHeldLines();
}

void errorLine(std::string_view sentence) {
    writeHeldLines(); // it may be the last one
    static Output errors(STDERR_FILENO);
    errors.write("klova: " + std::string(sentence) + "\n");
}

DiagnosticSink setDiagnosticSink(DiagnosticSink sink) { return std::exchange(theSink, sink); }

} // namespace klova
