#include "base/windows/DateBox.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

Date Day(int year, int month, int day) {
    return *MakeDate(year, month, day);
}

// A window with two boxes and a button, so that the focus can go somewhere.
class DateBoxTest : public testing::Test {
protected:
    explicit DateBoxTest(const QLocale& locale = QLocale(u"en_US"_s)) : locale_(locale) {
        auto* column = new QVBoxLayout(&window_);
        column->addWidget(box_);
        column->addWidget(other_);
        window_.show();
        QApplication::setActiveWindow(&window_);
        box_->setFocus();
    }
    void Type(const QString& text) {
        box_->selectAll();
        QTest::keyClicks(box_, text);
        QTest::keyClick(box_, Qt::Key_Return);
    }
    CalendarPopup* Popup() { return box_->findChild<CalendarPopup*>(); }

    QWidget window_;
    LocaleText locale_;
    // Saturday, March 7, 2026.
    fakes::FakeClock clock_;
    DateBox* box_ = new DateBox(locale_, clock_, &window_);
    DateBox* other_ = new DateBox(locale_, clock_, &window_);
};

TEST_F(DateBoxTest, TypedDatesAreReadInTheLocalesOrder) {
    const std::pair<const char*, Date> entries[] = {{"2/3/26", Day(2026, 2, 3)},
                                                    {"12-31-1999", Day(1999, 12, 31)},
                                                    {"2/29/2028", Day(2028, 2, 29)},
                                                    {"2026-03-09", Day(2026, 3, 9)}};
    for (const auto& [text, date] : entries) {
        Type(QString::fromLatin1(text));
        EXPECT_EQ(box_->Value(), date) << text;
        EXPECT_EQ(box_->text(), locale_.ShortDate(date));
    }
    DateBox german(LocaleText(QLocale(u"de_DE"_s)), clock_);
    QTest::keyClicks(&german, u"2.3.26"_s);
    EXPECT_TRUE(german.Commit());
    EXPECT_EQ(german.Value(), Day(2026, 3, 2));
}

TEST_F(DateBoxTest, WhatIsNoDateIsRefusedInPlaceAndStaysAsTyped) {
    box_->SetValue(Day(2026, 2, 3));
    const QSignalSpy changes(box_, &DateBox::Change);
    for (const QString& text : {u"2/30/2026"_s, u"13/1/2026"_s, u"tomorrow"_s}) {
        Type(text);
        EXPECT_EQ(box_->Value(), std::nullopt);
        EXPECT_EQ(box_->text(), text);
        EXPECT_TRUE(box_->Refusal().contains(text));
        auto* note = window_.findChild<QLabel*>();
        ASSERT_NE(note, nullptr);
        EXPECT_TRUE(note->isVisible());
        EXPECT_EQ(FindRefusedDate(window_), box_);
    }
    EXPECT_GE(changes.count(), 1);
    QTest::keyClick(box_, Qt::Key_Escape);
    EXPECT_EQ(box_->Value(), Day(2026, 2, 3));
    EXPECT_FALSE(window_.findChild<QLabel*>()->isVisible());
    EXPECT_EQ(FindRefusedDate(window_), nullptr);
}

TEST_F(DateBoxTest, LeavingTheBoxTakesTheEntryAndTellsOfAChangeOnce) {
    const QSignalSpy changes(box_, &DateBox::Change);
    QTest::keyClicks(box_, u"3/9/26"_s);
    EXPECT_EQ(changes.count(), 0);
    other_->setFocus();
    EXPECT_EQ(box_->Value(), Day(2026, 3, 9));
    EXPECT_EQ(changes.count(), 1);
    box_->setFocus();
    other_->setFocus();
    EXPECT_EQ(changes.count(), 1);
    box_->clear();
    box_->setModified(true);
    EXPECT_TRUE(box_->Commit());
    EXPECT_EQ(box_->Value(), std::nullopt);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(DateBoxTest, KeysStepByOneDayWithoutLeavingTheRange) {
    QTest::keyClick(box_, Qt::Key_Up);
    EXPECT_EQ(box_->Value(), clock_.Today());
    box_->SetValue(Day(2026, 2, 28));
    QTest::keyClick(box_, Qt::Key_Up);
    EXPECT_EQ(box_->Value(), Day(2026, 3, 1));
    QTest::keyClick(box_, Qt::Key_Down);
    EXPECT_EQ(box_->Value(), Day(2026, 2, 28));
    box_->SetValue(Day(9999, 12, 31));
    QTest::keyClick(box_, Qt::Key_Up);
    EXPECT_EQ(box_->Value(), Day(9999, 12, 31));
}

TEST_F(DateBoxTest, TheCalendarChoosesByKeysAndByMouse) {
    box_->SetValue(Day(2026, 2, 3));
    QTest::keyClick(box_, Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(Popup(), nullptr);
    auto* month = Popup()->findChild<QCalendarWidget*>();
    EXPECT_EQ(month->selectedDate(), QDate(2026, 2, 3));
    QWidget* days = month->findChild<QWidget*>(u"qt_calendar_calendarview"_s);
    ASSERT_NE(days, nullptr);
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);
    EXPECT_EQ(box_->Value(), Day(2026, 2, 4));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    box_->OpenCalendar();
    QTest::mouseClick(Popup()->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_EQ(box_->Value(), clock_.Today());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    box_->OpenCalendar();
    QTest::keyClick(Popup(), Qt::Key_Escape);
    EXPECT_EQ(box_->Value(), clock_.Today());
}

} // namespace
} // namespace velmora
