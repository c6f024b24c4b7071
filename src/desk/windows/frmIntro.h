#pragma once

#include "base/Program.h"

#include <QWidget>

#include <functional>

class QLabel;

namespace velmora {

// The start-up window: shows the version and the database while the main window loads.
class frmIntro : public QWidget {
    Q_OBJECT

public:
    explicit frmIntro(Program& program);

    // Stops the program when a hold is placed or the database is not there. Otherwise shows itself, has the main window
    // loaded, hides itself and has the main window shown.
    void Form_Load(const std::function<void()>& loadMain, const std::function<void()>& showMain);

private:
    void ShowNow();

    Program& program_;
    QLabel* lblTitle;
    QLabel* lblVersion;
    QLabel* lblDatabase;
};

} // namespace velmora
