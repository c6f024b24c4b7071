#pragma once

#include "base/DateTime.h"

#include <QFrame>
#include <QLocale>

class QCalendarWidget;

namespace velmora {

// A month to choose a day from, below the box that asks for it. It deletes itself when it closes.
class CalendarPopup : public QFrame {
    Q_OBJECT

public:
    CalendarPopup(const QLocale& locale, Date shown, Date today, QWidget* parent);
    // Below the box, or above it where the screen ends.
    void ShowBelow(const QWidget& box);

Q_SIGNALS:
    void Chosen(Date day);

private:
    void Choose(Date day);

    QCalendarWidget* month_;
};

} // namespace velmora
