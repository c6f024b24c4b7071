#pragma once

#include "base/services/ProgressWindow.h"

#include <memory>

namespace velmora {

class frmProgress;

// The progress window of a program with windows, made when it is first needed.
class WindowProgress : public ProgressWindow {
public:
    WindowProgress();
    ~WindowProgress() override;
    Q_DISABLE_COPY_MOVE(WindowProgress)
    void Show(const QString& text, std::optional<double> percent) override;
    // Takes the window off the screen for good; a later text makes a new one.
    void Unload();

private:
    std::unique_ptr<frmProgress> window_;
};

} // namespace velmora
