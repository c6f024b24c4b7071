#pragma once

#include "base/services/UserInterface.h"

#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

namespace velmora {

// The windows of the program in the order in which they were opened. There is an application before it is made.
class DeskWindows : public QObject, public OpenWindows {
    Q_OBJECT

public:
    DeskWindows();
    void UnloadAll() override;
    void UnloadStartup() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void Unload(QWidget& window);

    std::vector<QPointer<QWidget>> opened_;
    bool unloading_ = false;
};

} // namespace velmora
