#include "base/windows/DateBox.h"

#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"

#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLabel>
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

DateBox::DateBox(const LocaleText& locale, const Clock& clock, QWidget* parent)
    : QLineEdit(parent), locale_(locale), clock_(clock) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QAction* open = addAction(GlyphIcon(Glyph::Calendar), QLineEdit::TrailingPosition);
    open->setText(Translate(u"Calendar"_s));
    open->setToolTip(Translate(u"Choose from a calendar (Alt+Down)"_s));
    connect(open, &QAction::triggered, this, &DateBox::OpenCalendar);
    connect(this, &QLineEdit::textEdited, this, [this] { Refuse({}); });
    connect(this, &QLineEdit::returnPressed, this, &DateBox::Commit);
}

void DateBox::SetValue(std::optional<Date> value) {
    const bool changed = value != Value();
    value_ = value;
    Refuse({});
    Write();
    if (changed) {
        Q_EMIT Change();
    }
}

void DateBox::Write() {
    setText(value_ ? locale_.ShortDate(*value_) : QString());
    setModified(false);
}

bool DateBox::Commit() {
    if (isModified()) {
        Entered(text().trimmed());
    }
    return !Refused();
}

void DateBox::Entered(const QString& text) {
    const auto date = locale_.ParseDate(text);
    if (date || text.isEmpty()) {
        SetValue(date);
        return;
    }
    const QString example = locale_.ShortDate(clock_.Today());
    Refuse(Translate(u"\"%1\" is no date. Type a date like %2."_s).arg(text, example));
    Q_EMIT Change();
}

bool DateBox::Step(int days) {
    if (!Commit()) {
        return false;
    }
    const Date next = value_ ? *value_ + std::chrono::days(days) : clock_.Today();
    // The last and the first day that a date can be have no neighbour.
    const std::chrono::year_month_day fields{std::chrono::sys_days(next.time_since_epoch())};
    const auto date = MakeDate(static_cast<int>(fields.year()), static_cast<int>(static_cast<unsigned>(fields.month())),
                               static_cast<int>(static_cast<unsigned>(fields.day())));
    if (date) {
        SetValue(date);
        selectAll();
    }
    return date.has_value();
}

void DateBox::OpenCalendar() {
    const Date today = clock_.Today();
    const Date shown = Commit() && value_ ? *value_ : today;
    auto* popup = new CalendarPopup(locale_.Locale(), shown, today, this);
    connect(popup, &CalendarPopup::Chosen, this, [this](Date day) {
        SetValue(day);
        setFocus();
        selectAll();
    });
    popup->ShowBelow(*this);
}

void DateBox::keyPressEvent(QKeyEvent* event) {
    const bool alt = event->modifiers() == Qt::AltModifier;
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
    if ((plain && event->key() == Qt::Key_F4) || (alt && event->key() == Qt::Key_Down)) {
        OpenCalendar();
    } else if (plain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) && !isReadOnly()) {
        Step(event->key() == Qt::Key_Up ? 1 : -1);
    } else if (plain && event->key() == Qt::Key_Escape && (isModified() || Refused())) {
        SetValue(value_);
        selectAll();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void DateBox::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) {
        Commit();
    }
    QLineEdit::focusOutEvent(event);
}

void DateBox::hideEvent(QHideEvent* event) {
    if (note_ != nullptr) {
        note_->hide();
    }
    QLineEdit::hideEvent(event);
}

void DateBox::moveEvent(QMoveEvent* event) {
    QLineEdit::moveEvent(event);
    PlaceNote();
}

void DateBox::Refuse(const QString& reason) {
    refusal_ = reason;
    setAccessibleDescription(reason);
    if (reason.isEmpty()) {
        if (note_ != nullptr) {
            note_->hide();
        }
        return;
    }
    if (note_ == nullptr) {
        note_ = new QLabel(window());
        note_->setObjectName(objectName() + u"Refusal"_s);
        note_->setAutoFillBackground(true);
        note_->setBackgroundRole(QPalette::ToolTipBase);
        note_->setFrameShape(QFrame::Box);
        note_->setMargin(spacing::small);
        note_->setTextFormat(Qt::PlainText);
        QPalette colours = palette();
        colours.setColor(QPalette::WindowText, WarningColour(palette()));
        note_->setPalette(colours);
    }
    note_->setText(reason);
    PlaceNote();
    note_->setVisible(isVisible());
    note_->raise();
}

void DateBox::PlaceNote() {
    if (note_ == nullptr || !Refused()) {
        return;
    }
    note_->adjustSize();
    const QPoint below = mapTo(window(), QPoint(0, height() + spacing::small));
    const int most = window()->width() - note_->width() - spacing::small;
    note_->move(std::max(0, std::min(below.x(), most)), below.y());
}

QSize DateBox::sizeHint() const {
    // Wide enough for the longest short date and the calendar's button.
    const QSize usual = QLineEdit::sizeHint();
    return {fontMetrics().horizontalAdvance(u"00/00/0000"_s) + 3 * usual.height() / 2 + spacing::large, usual.height()};
}

DateBox* FindRefusedDate(const QWidget& parent) {
    for (auto* box : parent.findChildren<DateBox*>()) {
        if (!box->Commit()) {
            return box;
        }
    }
    return nullptr;
}

} // namespace velmora
