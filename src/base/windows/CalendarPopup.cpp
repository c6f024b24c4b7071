#include "base/windows/CalendarPopup.h"

#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"

#include <QCalendarWidget>
#include <QPushButton>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

QDate ToCalendar(Date day) {
    const DateTimeFields fields = Fields(StartOfDay(day));
    return {fields.year, fields.month, fields.day};
}

// The toolkit's calendar has pictures and colours of its own at its top; these are the program's.
void DressTop(QCalendarWidget& month) {
    if (auto* top = month.findChild<QWidget*>(u"qt_calendar_navigationbar"_s)) {
        QPalette colours = top->palette();
        colours.setColor(QPalette::Highlight, colours.color(QPalette::Window));
        colours.setColor(QPalette::HighlightedText, colours.color(QPalette::WindowText));
        top->setPalette(colours);
    }
    const std::pair<QString, Glyph> steps[] = {{u"qt_calendar_prevmonth"_s, Glyph::Previous},
                                               {u"qt_calendar_nextmonth"_s, Glyph::Next}};
    for (const auto& [name, glyph] : steps) {
        if (auto* button = month.findChild<QToolButton*>(name)) {
            button->setIcon(GlyphIcon(glyph));
        }
    }
}

} // namespace

CalendarPopup::CalendarPopup(const QLocale& locale, Date shown, Date today, QWidget* parent)
    : QFrame(parent, Qt::Popup), month_(new QCalendarWidget(this)) {
    setObjectName(u"CalendarPopup"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(QFrame::StyledPanel);
    month_->setLocale(locale);
    month_->setFirstDayOfWeek(locale.firstDayOfWeek());
    month_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    month_->setDateEditEnabled(false);
    month_->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    month_->setSelectedDate(ToCalendar(shown));
    DressTop(*month_);
    QTextCharFormat plain;
    plain.setForeground(palette().text());
    month_->setWeekdayTextFormat(Qt::Saturday, plain);
    month_->setWeekdayTextFormat(Qt::Sunday, plain);
    QTextCharFormat marked;
    marked.setFontWeight(QFont::Bold);
    marked.setFontUnderline(true);
    month_->setDateTextFormat(ToCalendar(today), marked);

    auto* now = new QPushButton(Translate(u"&Today"_s), this);
    now->setObjectName(u"cmdToday"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::small, spacing::small, spacing::small, spacing::small);
    column->setSpacing(spacing::small);
    column->addWidget(month_);
    column->addWidget(now);
    // A click chooses; the keys move first, and Return chooses.
    const auto choose = [this](QDate day) { Choose(*MakeDate(day.year(), day.month(), day.day())); };
    connect(month_, &QCalendarWidget::clicked, this, choose);
    connect(month_, &QCalendarWidget::activated, this, choose);
    connect(now, &QPushButton::clicked, this, [this, today] { Choose(today); });
    month_->setFocus();
}

void CalendarPopup::ShowBelow(const QWidget& box) {
    adjustSize();
    const QRect area = box.screen()->availableGeometry();
    QPoint place = box.mapToGlobal(QPoint(0, box.height()));
    if (place.y() + height() > area.bottom()) {
        place.setY(box.mapToGlobal(QPoint()).y() - height());
    }
    place.setX(std::clamp(place.x(), area.left(), std::max(area.left(), area.right() - width())));
    move(place);
    show();
    month_->setFocus(Qt::PopupFocusReason);
}

void CalendarPopup::Choose(Date day) {
    // A click in the month emits both signals.
    if (isVisible()) {
        close();
        Q_EMIT Chosen(day);
    }
}

} // namespace velmora
