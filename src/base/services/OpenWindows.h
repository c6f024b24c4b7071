#pragma once

namespace velmora {

// The windows that are open.
class OpenWindows {
public:
    virtual ~OpenWindows() = default;
    // Unloads every window, the last opened first; goes on when one cannot be unloaded.
    virtual void UnloadAll() = 0;
    // Unloads the start-up window alone, when it is there.
    virtual void UnloadStartup() = 0;
};

} // namespace velmora
