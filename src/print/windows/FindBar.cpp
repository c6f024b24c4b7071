#include "print/windows/FindBar.h"

#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace velmora::print {

namespace {

QToolButton* AddButton(QHBoxLayout& row, const QString& name, Glyph glyph, const QString& tip) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(GlyphIcon(glyph));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    row.addWidget(button);
    return button;
}

} // namespace

FindBar::FindBar(const pages::Document& document, QWidget* parent)
    : QWidget(parent), document_(document), txtFind_(new QLineEdit), lblCount_(new QLabel) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(spacing::large, spacing::small, spacing::large, spacing::small);
    row->setSpacing(spacing::normal);
    auto* caption = new QLabel(Translate(QStringLiteral("Find:")));
    caption->setBuddy(txtFind_);
    txtFind_->setObjectName(QStringLiteral("txtFind"));
    txtFind_->setAccessibleName(Translate(QStringLiteral("Text to find")));
    txtFind_->setClearButtonEnabled(true);
    lblCount_->setObjectName(QStringLiteral("lblCount"));
    row->addWidget(caption);
    row->addWidget(txtFind_, 2);
    auto* previous = AddButton(*row, QStringLiteral("cmdFindPrevious"), Glyph::Up,
                               Translate(QStringLiteral("Previous Hit (Shift+F3)")));
    auto* next =
        AddButton(*row, QStringLiteral("cmdFindNext"), Glyph::Down, Translate(QStringLiteral("Next Hit (F3)")));
    row->addWidget(lblCount_, 3);
    auto* close =
        AddButton(*row, QStringLiteral("cmdFindClose"), Glyph::Close, Translate(QStringLiteral("Close (Esc)")));
    connect(txtFind_, &QLineEdit::textChanged, this, &FindBar::Look);
    connect(previous, &QToolButton::clicked, this, &FindBar::FindPrevious);
    connect(next, &QToolButton::clicked, this, &FindBar::FindNext);
    connect(close, &QToolButton::clicked, this, &FindBar::Close);
    hide();
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

void FindBar::Close() {
    hide();
    Q_EMIT Closed();
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
        text = Translate(QStringLiteral("%1 of %2")).arg(current_ + 1).arg(hits_.size());
    } else if (!txtFind_->text().isEmpty()) {
        text = Translate(QStringLiteral("Not found in this report"));
    }
    if (wrapped) {
        text += QStringLiteral("  ") + (current_ == 0 ? Translate(QStringLiteral("(went on from the beginning)"))
                                                      : Translate(QStringLiteral("(went on from the end)")));
    }
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, hits_.empty() ? WarningColour(colours) : QuietColour(colours));
    lblCount_->setPalette(colours);
    lblCount_->setText(text);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Step(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
    } else if (event->key() == Qt::Key_Escape) {
        Close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace velmora::print
