#include "print/windows/PreviewBars.h"

#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

namespace velmora::print {

using namespace Qt::StringLiterals;

PreviewBar::PreviewBar(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
    row_->setContentsMargins(spacing::large, spacing::small, spacing::large, spacing::small);
    row_->setSpacing(spacing::normal);
    hide();
}

void PreviewBar::AddField(const QString& caption, QWidget& field, int stretch) {
    auto* label = new QLabel(caption);
    label->setBuddy(&field);
    row_->addWidget(label);
    row_->addWidget(&field, stretch);
}

void PreviewBar::Close() {
    hide();
    Q_EMIT Closed();
}

void PreviewBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        ReturnPressed(event->modifiers() & Qt::ShiftModifier);
    } else if (event->key() == Qt::Key_Escape) {
        Close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

FindBar::FindBar(const pages::Document& document, QWidget* parent)
    : PreviewBar(parent), document_(document), txtFind_(new QLineEdit), lblCount_(new QLabel) {
    txtFind_->setObjectName(u"txtFind"_s);
    txtFind_->setAccessibleName(Translate(u"Text to find"_s));
    txtFind_->setClearButtonEnabled(true);
    lblCount_->setObjectName(u"lblCount"_s);
    const auto addButton = [this](const QString& name, Glyph glyph, const QString& tip, void (FindBar::*run)()) {
        auto* button = new QToolButton;
        button->setObjectName(name);
        button->setIcon(GlyphIcon(glyph));
        button->setAutoRaise(true);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        row_->addWidget(button);
        connect(button, &QToolButton::clicked, this, run);
    };
    AddField(Translate(u"Find:"_s), *txtFind_, 2);
    addButton(u"cmdFindPrevious"_s, Glyph::Up, Translate(u"Previous Hit (Shift+F3)"_s), &FindBar::FindPrevious);
    addButton(u"cmdFindNext"_s, Glyph::Down, Translate(u"Next Hit (F3)"_s), &FindBar::FindNext);
    row_->addWidget(lblCount_, 3);
    addButton(u"cmdFindClose"_s, Glyph::Close, Translate(u"Close (Esc)"_s), &FindBar::Close);
    connect(txtFind_, &QLineEdit::textChanged, this, &FindBar::Look);
}

void FindBar::Open(int page) {
    startPage_ = page;
    show();
    txtFind_->setFocus();
    txtFind_->selectAll();
    if (hits_.empty()) {
        Look();
    } else {
        Q_EMIT Found();
    }
}

void FindBar::Look() {
    hits_ = pages::FindText(document_, txtFind_->text());
    current_ = hits_.empty() ? -1 : 0;
    // The first hit from the page on view on, else the first of all.
    for (size_t i = hits_.size(); i-- > 0 && hits_[i].page >= startPage_;) {
        current_ = static_cast<int>(i);
    }
    ShowCount(false);
    Q_EMIT Found();
}

void FindBar::Step(int direction) {
    if (hits_.empty()) {
        return;
    }
    const int count = static_cast<int>(hits_.size());
    const int next = current_ + direction;
    current_ = (next + count) % count;
    ShowCount(next != current_);
    Q_EMIT Found();
}

void FindBar::ShowCount(bool wrapped) {
    QString text;
    if (!hits_.empty()) {
        text = Translate(u"%1 of %2"_s).arg(current_ + 1).arg(hits_.size());
    } else if (!txtFind_->text().isEmpty()) {
        text = Translate(u"Not found in this report"_s);
    }
    if (wrapped) {
        text += u"  "_s +
                (current_ == 0 ? Translate(u"(went on from the beginning)"_s) : Translate(u"(went on from the end)"_s));
    }
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, hits_.empty() ? WarningColour(colours) : QuietColour(colours));
    lblCount_->setPalette(colours);
    lblCount_->setText(text);
}

GoToBar::GoToBar(int pageCount, QWidget* parent) : PreviewBar(parent), txtPage_(new QSpinBox) {
    txtPage_->setObjectName(u"txtPage"_s);
    txtPage_->setAccessibleName(Translate(u"Page number"_s));
    txtPage_->setRange(1, pageCount);
    auto* go = new QPushButton(Translate(u"Go"_s));
    go->setObjectName(u"cmdGo"_s);
    AddField(Translate(u"Go to page:"_s), *txtPage_, 0);
    row_->addWidget(new QLabel(Translate(u"of %1"_s).arg(pageCount)));
    row_->addWidget(go);
    row_->addStretch();
    connect(go, &QPushButton::clicked, this, [this] { Q_EMIT PageChosen(txtPage_->value()); });
}

void GoToBar::Open(int currentPage) {
    txtPage_->setValue(currentPage);
    show();
    txtPage_->setFocus();
    txtPage_->selectAll();
}

void GoToBar::ReturnPressed(bool) {
    Q_EMIT PageChosen(txtPage_->value());
    Close();
}

} // namespace velmora::print
