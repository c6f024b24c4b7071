#pragma once

namespace velmora {

// The running program itself.
class Process {
public:
    virtual ~Process() = default;
    // Ends the program. Never returns to its caller.
    [[noreturn]] virtual void End(int exitCode) = 0;
};

} // namespace velmora
