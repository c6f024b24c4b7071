#pragma once

#include "base/windows/Look.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QString>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

class QLabel;
class QPushButton;
class QScrollArea;

namespace velmora {

class DateBox;
class OptionGroup;

// How the pages of the main window are put together, so that all look alike.

// A control under its name, with its caption.
template <typename Control>
Control* NewControl(const QString& name, const QString& caption) {
    auto* control = new Control(caption);
    control->setObjectName(name);
    return control;
}

// A frame with the page's margins inside; add its rows to the column.
struct Frame {
    QGroupBox* box;
    QVBoxLayout* column;
};
Frame NewFrame(const QString& name, const QString& caption);

// The column of a whole page.
QVBoxLayout* NewPageColumn(QWidget* page);

// A label above a control, which is its buddy.
QVBoxLayout* Captioned(QLabel* label, QWidget* control);

// A label that may wrap, in the colour of secondary words.
QLabel* NewHint(const QString& name, const QString& text);

// A row that ends in the page's buttons; the first is the one that Return presses.
QHBoxLayout* NewButtonRow(std::initializer_list<QPushButton*> buttons);

// A page that runs a report of one day: a frame with the options, the date below it under its label, and the button
// that runs it.
void LayOutDayPage(QWidget* page, const Frame& frame, const OptionGroup& options, QLabel* label, DateBox* date,
                   QPushButton* run);

// A view of a page, which scrolls it on a screen that is smaller, so that what is below the pages stays in sight.
QScrollArea* NewPageView(QWidget* page);

// The index of an option button, and its caption.
using OptionCaption = std::pair<int, QString>;

// Option buttons that share a name and differ by an index.
class OptionGroup {
public:
    OptionGroup(QWidget* parent, const QString& name, const std::vector<OptionCaption>& captions);
    // -1 when none is chosen.
    int Chosen() const { return group_->checkedId(); }
    // Chooses without a click; an index that no button has clears the choice.
    void Choose(int index) const;
    QRadioButton* Button(int index) const { return static_cast<QRadioButton*>(group_->button(index)); }
    QButtonGroup* Group() const { return group_; }
    QList<QAbstractButton*> Buttons() const { return group_->buttons(); }

private:
    static void FixTabStops(const QButtonGroup& group);

    QButtonGroup* group_;
};

// The text with the mnemonic mark before the first such letter behind `from`; unchanged when there is none.
QString WithMnemonic(const QString& text, QChar letter, qsizetype from = 0);

} // namespace velmora
