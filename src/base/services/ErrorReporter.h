#pragma once

#include "base/Error.h"
#include "base/services/Dialogs.h"

#include <optional>

namespace velmora {

// Where a failure happened. A text that is absent leaves its line out of the report; one that is present but empty
// prints the line's caption alone.
struct FailurePlace {
    std::optional<QString> module;
    std::optional<QString> procedure;
    std::optional<QString> task;
};

// Reports failures to the person at the desk.
class ErrorReporter {
public:
    virtual ~ErrorReporter() = default;
    // Returns Retry or Ignore; throws StopProgram on Abort.
    virtual Answer Report(const Error& error, const FailurePlace& place) = 0;
};

} // namespace velmora
