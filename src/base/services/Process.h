#pragma once

#include <exception>

namespace velmora {

// The running program itself.
class Process {
public:
    virtual ~Process() = default;
    // Ends the program. Never returns to its caller.
    [[noreturn]] void End(int exitCode) {
        EndNow(exitCode);
        std::terminate();
    }

private:
    virtual void EndNow(int exitCode) = 0;
};

} // namespace velmora
