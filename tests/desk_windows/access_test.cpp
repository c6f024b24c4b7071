#include "base/Translate.h"
#include "tests/desk_windows/DeskWindowFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QSpinBox>

#include <set>

namespace velmora {
namespace {

// Every control of the window that a person can act on.
std::vector<QWidget*> Controls(const QWidget& window) {
    std::vector<QWidget*> controls;
    for (auto* widget : window.findChildren<QWidget*>()) {
        const bool acts = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                          qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr ||
                          qobject_cast<QSpinBox*>(widget) != nullptr ||
                          qobject_cast<QAbstractItemView*>(widget) != nullptr;
        // Parts of other controls are reached through those.
        const bool part = widget->objectName().startsWith(u"qt_"_s) ||
                          qobject_cast<QSpinBox*>(widget->parentWidget()) != nullptr ||
                          qobject_cast<QComboBox*>(widget->parentWidget()) != nullptr ||
                          qobject_cast<QLineEdit*>(widget->parentWidget()) != nullptr || widget->objectName().isEmpty();
        if (acts && !part) {
            controls.push_back(widget);
        }
    }
    return controls;
}

QLabel* LabelOf(const QWidget& window, const QWidget* control) {
    for (auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy() == control) {
            return label;
        }
    }
    return nullptr;
}

TEST_F(DeskWindowTest, EveryControlHasANameAndAKey) {
    for (QWidget* control : Controls(*window_)) {
        const QString name = control->objectName();
        const auto* button = qobject_cast<QAbstractButton*>(control);
        const QLabel* label = LabelOf(*window_, control);
        const bool named = (button != nullptr && !button->text().isEmpty()) || label != nullptr ||
                           !control->accessibleName().isEmpty();
        EXPECT_TRUE(named) << name.toStdString();
        // The arrow keys go to the options that are not chosen.
        const auto* radio = qobject_cast<QRadioButton*>(control);
        const bool focusable =
            (control->focusPolicy() & Qt::TabFocus) != 0 || (radio != nullptr && !radio->isChecked());
        EXPECT_TRUE(focusable) << name.toStdString();
    }
    // On each page no two controls share a letter, nor with the button outside the pages.
    for (int page = 0; page < 7; ++page) {
        std::map<QString, QString> letters = {{QKeySequence::mnemonic(u"&Close"_s).toString(), u"cmdClose"_s}};
        QWidget& widget = Child(u"Page"_s + QString::number(page));
        const auto take = [&](const QString& text, const QString& name) {
            const QString letter = QKeySequence::mnemonic(text).toString();
            if (!letter.isEmpty()) {
                EXPECT_TRUE(letters.emplace(letter, name).second)
                    << name.toStdString() << " shares " << letter.toStdString() << " with "
                    << letters[letter].toStdString();
            }
        };
        for (auto* button : widget.findChildren<QAbstractButton*>()) {
            if (button->text().isEmpty() || qobject_cast<QLineEdit*>(button->parentWidget()) != nullptr) {
                continue;
            }
            EXPECT_FALSE(QKeySequence::mnemonic(button->text()).isEmpty()) << button->objectName().toStdString();
            take(button->text(), button->objectName());
        }
        for (auto* label : widget.findChildren<QLabel*>()) {
            if (label->buddy() != nullptr) {
                EXPECT_FALSE(QKeySequence::mnemonic(label->text()).isEmpty()) << label->objectName().toStdString();
                take(label->text(), label->objectName());
            }
        }
    }
}

TEST_F(DeskWindowTest, TabReachesEveryControlOfAPageInReadingOrder) {
    for (int page = 0; page < 7; ++page) {
        Child<QTabBar>(u"TabStrip1"_s).setCurrentIndex(page);
        auto& tabs = Child<QTabBar>(u"TabStrip1"_s);
        tabs.setFocus();
        std::set<QWidget*> seen;
        int lastTop = -1;
        int jumps = 0;
        for (int step = 0; step < 40; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* focus = QApplication::focusWidget();
            if (focus == &tabs || !seen.insert(focus).second) {
                break;
            }
            const int top = focus->mapTo(window_.get(), QPoint()).y();
            jumps += top + focus->height() < lastTop ? 1 : 0;
            lastTop = top;
        }
        for (QWidget* control : Controls(Child(u"Page"_s + QString::number(page)))) {
            const auto* radio = qobject_cast<QRadioButton*>(control);
            const bool reachable =
                control->isVisible() && control->isEnabled() && (radio == nullptr || radio->isChecked());
            EXPECT_TRUE(!reachable || seen.contains(control)) << page << ' ' << control->objectName().toStdString();
        }
        EXPECT_TRUE(seen.contains(&Child(u"cmdClose"_s)));
        // Upwards only where a second column begins.
        EXPECT_LE(jumps, 1) << page;
    }
}

TEST_F(DeskWindowTest, ReturnPressesTheButtonWithTheFocusElseThePagesOwn) {
    Choose(u"Daily"_s);
    const std::pair<const char*, int> presses[] = {{"Command6", 1}, {"Command2", 8}, {"chkBrief", 0}};
    for (const auto& [control, mode] : presses) {
        auto& focused = Child(QString::fromLatin1(control));
        focused.setFocus();
        QTest::keyClick(&focused, Qt::Key_Return);
        EXPECT_EQ(window_->State().ReportDayMode, mode) << control;
    }
    EXPECT_EQ(delivery_.delivered.size(), 3U);
    // Also below the pages: a running report is stopped with the focus on its button.
    Child(u"cmdClose"_s).setFocus();
    fakes_.eventLoop.onEvents = [this] { QTest::keyClick(&Child(u"cmdClose"_s), Qt::Key_Enter); };
    Click(u"Command5"_s);
    EXPECT_TRUE(fakes_.dialogs.messages.empty());
    EXPECT_LT(delivery_.delivered.at(3).size(), delivery_.delivered[2].size());
}

TEST_F(DeskWindowTest, TheFocusOfAPageStandsOnTheOptionChosen) {
    Choose(u"Status"_s);
    Child(u"optStatusType0"_s).setFocus();
    Click(u"optStatusType0"_s);
    Choose(u"Daily"_s);
    Child(u"chkBrief"_s).setFocus();
    // Comes with the locations chosen.
    Choose(u"Status"_s);
    EXPECT_TRUE(Child(u"optStatusType1"_s).hasFocus());
}

TEST_F(DeskWindowTest, APageScrollsOnASmallScreenAndTheButtonBelowItStays) {
    // A screen of 1080 lines at twice the size, less the window's frame and the desktop's own bar.
    constexpr QSize room(940, 480);
    window_->showNormal();
    window_->resize(room);
    QApplication::processEvents();
    ASSERT_EQ(window_->size(), room);
    for (int page = 0; page < 7; ++page) {
        Child<QTabBar>(u"TabStrip1"_s).setCurrentIndex(page);
        QApplication::processEvents();
        EXPECT_TRUE(Child(u"cmdClose"_s).visibleRegion().contains(Child(u"cmdClose"_s).rect())) << page;
    }
    // The keyboard brings what it reaches into sight.
    EXPECT_TRUE(Child(u"cmdOptions"_s).visibleRegion().contains(Child(u"cmdOptions"_s).rect()));
    Choose(u"Daily"_s);
    auto& directory = Child(u"Command4"_s);
    EXPECT_TRUE(directory.visibleRegion().isEmpty());
    Child(u"Command1"_s).setFocus();
    QTest::keyClick(&Child(u"Command1"_s), Qt::Key_Tab);
    EXPECT_TRUE(directory.hasFocus());
    EXPECT_FALSE(directory.visibleRegion().isEmpty());
}

TEST_F(DeskWindowTest, NothingIsCutWithTextsLongerByTwoFifths) {
    auto& dictionary = fakes_.program.Part<TranslationDictionary>();
    const auto lengthen = [&](const QString& text) {
        const QString plain = QString(text).remove(u'&');
        dictionary.Add(plain, plain + QString((2 * plain.size() + 4) / 5, u'm'));
    };
    for (auto* button : window_->findChildren<QAbstractButton*>()) {
        lengthen(button->text());
    }
    for (auto* label : window_->findChildren<QLabel*>()) {
        lengthen(label->text());
    }
    for (auto* frame : window_->findChildren<QGroupBox*>()) {
        lengthen(frame->title());
    }
    window_.reset();
    OpenDesk();
    window_->showNormal();
    window_->resize(1280, 760);
    for (int page = 0; page < 7; ++page) {
        Child<QTabBar>(u"TabStrip1"_s).setCurrentIndex(page);
        QApplication::processEvents();
        const QWidget& shown = Child(u"Page"_s + QString::number(page));
        EXPECT_EQ(shown.size(), shown.parentWidget()->size()) << "page " << page << " scrolls";
        for (auto* button : Child(u"Page"_s + QString::number(page)).findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->text().isEmpty() &&
                qobject_cast<QLineEdit*>(button->parentWidget()) == nullptr) {
                EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->objectName().toStdString();
            }
        }
        for (auto* label : Child(u"Page"_s + QString::number(page)).findChildren<QLabel*>()) {
            if (label->isVisible() && !label->wordWrap()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << label->objectName().toStdString();
            }
        }
    }
}

} // namespace
} // namespace velmora
