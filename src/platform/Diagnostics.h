// Lines on standard output and standard error that never hold the program up.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace klova {

/// Writes `text` and a line break to standard output. Never blocks, never fails: where the reader
/// is slow or gone the text is dropped, because the caller may hold the person's keyboard.
void diagnosticLine(std::string_view text);

/// The same for a text that takes work to put together: it is asked for when the line is written,
/// and so owns what it tells of.
void diagnosticLine(std::function<std::string()> text);

/// Whether standard output is a terminal or a pipe, so that somebody may be reading along, and no
/// log or nothing.
bool diagnosticsAreRead();

/// Writes "klova: ", the sentence and a line break to standard error, under the same terms.
void errorLine(std::string_view sentence);

/// While one lives, diagnostic lines are kept; the last one to go writes them. For whoever has
/// something to do that a person waits for. Of one thread, like the lines themselves.
class DiagnosticsHold {
public:
    DiagnosticsHold();
    ~DiagnosticsHold();
    DiagnosticsHold(const DiagnosticsHold&) = delete;
    DiagnosticsHold& operator=(const DiagnosticsHold&) = delete;
};

/// Sends the diagnostic lines elsewhere (null: back to standard output); returns the earlier sink.
using DiagnosticSink = void (*)(std::string_view line);
DiagnosticSink setDiagnosticSink(DiagnosticSink sink);

} // namespace klova
