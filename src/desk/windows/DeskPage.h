#pragma once

#include "desk/windows/DeskState.h"

#include <QWidget>

namespace velmora {

// One page of the main window: a set of controls, and how they and the desk's state agree.
class DeskPage : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    // Writes what the controls say into the state.
    virtual void Store(DeskState& state) const = 0;
    // Sets the controls to what the state says; no handler runs.
    virtual void Load(const DeskState& state) = 0;
    // The page was chosen on the tab strip and is on view now.
    virtual void Chosen() {}
};

} // namespace velmora
