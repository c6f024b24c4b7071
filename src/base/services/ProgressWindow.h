#pragma once

#include <QString>

#include <optional>

namespace velmora {

// The small window that shows one line of status text and, when a percentage (0 to 100) is given, a bar.
class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    // An empty text hides the window.
    virtual void Show(const QString& text, std::optional<double> percent) = 0;
};

} // namespace velmora
