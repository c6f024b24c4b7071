#include "desk/windows/PageParts.h"

#include "base/windows/DateBox.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

namespace velmora {

Frame NewFrame(const QString& name, const QString& caption) {
    auto* box = NewControl<QGroupBox>(name, caption);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(spacing::large, spacing::normal, spacing::large, spacing::large);
    column->setSpacing(spacing::normal);
    return {box, column};
}

QVBoxLayout* NewPageColumn(QWidget* page) {
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::large);
    return column;
}

QVBoxLayout* Captioned(QLabel* label, QWidget* control) {
    auto* column = new QVBoxLayout;
    column->setSpacing(spacing::small);
    column->addWidget(label);
    column->addWidget(control);
    label->setBuddy(control);
    return column;
}

QLabel* NewHint(const QString& name, const QString& text) {
    auto* label = NewControl<QLabel>(name, text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, QuietColour(colours));
    label->setPalette(colours);
    return label;
}

QHBoxLayout* NewButtonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    row->addStretch();
    constexpr int least = 112;
    for (QPushButton* button : buttons) {
        button->setMinimumWidth(std::max(least, button->sizeHint().width()));
        row->addWidget(button);
    }
    return row;
}

void LayOutDayPage(QWidget* page, const Frame& frame, const OptionGroup& options, QLabel* label, DateBox* date,
                   QPushButton* run) {
    for (QAbstractButton* option : options.Buttons()) {
        frame.column->addWidget(option);
    }
    auto* day = new QHBoxLayout;
    day->addLayout(Captioned(label, date));
    day->addStretch();
    run->setDefault(true);
    QVBoxLayout* column = NewPageColumn(page);
    column->addWidget(frame.box);
    column->addLayout(day);
    column->addStretch();
    column->addLayout(NewButtonRow({run}));
}

QScrollArea* NewPageView(QWidget* page) {
    auto* view = new QScrollArea;
    view->setWidgetResizable(true);
    view->setFrameShape(QFrame::NoFrame);
    view->setFocusPolicy(Qt::NoFocus);
    view->setWidget(page);
    return view;
}

OptionGroup::OptionGroup(QWidget* parent, const QString& name, const std::vector<OptionCaption>& captions)
    : group_(new QButtonGroup(parent)) {
    group_->setObjectName(name);
    for (const auto& [index, caption] : captions) {
        group_->addButton(NewControl<QRadioButton>(name + QString::number(index), caption), index);
    }
    QObject::connect(group_, &QButtonGroup::idToggled, group_, [group = group_] { FixTabStops(*group); });
}

// Tab goes to the button chosen, the arrow keys to the others.
void OptionGroup::FixTabStops(const QButtonGroup& group) {
    for (QAbstractButton* button : group.buttons()) {
        const bool stop = button->isChecked() || group.checkedButton() == nullptr;
        button->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void OptionGroup::Choose(int index) const {
    if (QAbstractButton* button = group_->button(index)) {
        const auto buttons = group_->buttons();
        const bool focused = std::ranges::any_of(buttons, &QAbstractButton::hasFocus);
        button->setChecked(true);
        if (focused) {
            // Space would press an option that is not chosen.
            button->setFocus();
        }
        FixTabStops(*group_);
        return;
    }
    group_->setExclusive(false);
    for (QAbstractButton* button : group_->buttons()) {
        button->setChecked(false);
    }
    group_->setExclusive(true);
    FixTabStops(*group_);
}

QString WithMnemonic(const QString& text, QChar letter, qsizetype from) {
    const qsizetype place = text.indexOf(letter, from, Qt::CaseInsensitive);
    return place < 0 ? text : text.left(place) + u'&' + text.mid(place);
}

} // namespace velmora
