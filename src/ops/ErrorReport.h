#pragma once

#include "base/Program.h"

namespace velmora {

// The error report: says where a failure happened, writes it to the log, and asks whether to abort the program, retry
// the step or ignore it.
class ErrorReport : public ErrorReporter {
public:
    ErrorReport(Dialogs& dialogs, Log& log) : dialogs_(dialogs), log_(log) {}
    Answer Report(const Error& error, const FailurePlace& place) override;

    // The description, then one line each for module, procedure and task where they are given; CR LF between lines.
    static QString Text(const Error& error, const FailurePlace& place);

private:
    Dialogs& dialogs_;
    Log& log_;
};

// Shows the error report of the current program and keeps the answer. Returns Retry or Ignore; on Abort it exits the
// program in order and throws StopProgram.
Answer ReportError(const Error& error, const FailurePlace& place = {});

// The button chosen in the last error report; Ignore before the first one.
Answer LastErrorAnswer();

// Unloads every window, the last opened first, and closes the shared database. Failures are passed over. The caller
// then throws StopProgram.
void ExitProgram() noexcept;

// Shows or hides the progress window. An empty text hides it.
void ShowStatus(const QString& text, std::optional<double> percent = std::nullopt);

} // namespace velmora
