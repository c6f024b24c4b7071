#pragma once

#include "base/LocaleText.h"
#include "base/services/Clock.h"

#include <QFrame>
#include <QLineEdit>

#include <optional>

class QCalendarWidget;
class QLabel;

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

// A box for one date: typed in the locale's order of day, month and year, picked from a calendar (Alt+Down, F4, or the
// button in the box), or stepped by a day with Up and Down. A finished entry is written as the short date. What is not
// a date stays as typed and is refused with a line below the box; it is never turned into another day. Escape goes back
// to the date before.
class DateBox : public QLineEdit {
    Q_OBJECT

public:
    // The clock gives the calendar's "today"; it outlives the box.
    DateBox(const LocaleText& locale, const Clock& clock, QWidget* parent = nullptr);

    // The date in the box; none while it is empty or refused.
    std::optional<Date> Value() const { return Refused() ? std::nullopt : value_; }
    // Shows the date; emits Change when it is another one than before.
    void SetValue(std::optional<Date> value);
    // What was typed is not a date.
    bool Refused() const { return !refusal_.isEmpty(); }
    // Why, as shown below the box; empty unless refused.
    const QString& Refusal() const { return refusal_; }
    // Takes what is typed so far as the entry; false when it is refused.
    bool Commit();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    // The box holds another date, or none any more.
    void Change();

public Q_SLOTS:
    void OpenCalendar();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void Entered(const QString& text);
    bool Step(int days);
    void Write();
    void Refuse(const QString& reason);
    void PlaceNote();

    LocaleText locale_;
    const Clock& clock_;
    std::optional<Date> value_;
    QString refusal_;
    // Hangs below the box, over the window; made when it is first needed.
    QLabel* note_ = nullptr;
};

// The first box below `parent` whose entry is refused, every entry taken as it is typed so far; null when all are
// dates or empty.
DateBox* FindRefusedDate(const QWidget& parent);

} // namespace velmora
