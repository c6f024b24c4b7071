#include "print/windows/GoToBar.h"

#include "base/Translate.h"
#include "base/windows/Look.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace velmora::print {

GoToBar::GoToBar(int pageCount, QWidget* parent) : QWidget(parent), txtPage_(new QSpinBox) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(spacing::large, spacing::small, spacing::large, spacing::small);
    row->setSpacing(spacing::normal);
    auto* caption = new QLabel(Translate(QStringLiteral("Go to page:")));
    caption->setBuddy(txtPage_);
    txtPage_->setObjectName(QStringLiteral("txtPage"));
    txtPage_->setAccessibleName(Translate(QStringLiteral("Page number")));
    txtPage_->setRange(1, pageCount);
    auto* go = new QPushButton(Translate(QStringLiteral("Go")));
    go->setObjectName(QStringLiteral("cmdGo"));
    row->addWidget(caption);
    row->addWidget(txtPage_);
    row->addWidget(new QLabel(Translate(QStringLiteral("of %1")).arg(pageCount)));
    row->addWidget(go);
    row->addStretch();
    connect(go, &QPushButton::clicked, this, [this] { Q_EMIT PageChosen(txtPage_->value()); });
    hide();
}

void GoToBar::Open(int currentPage) {
    txtPage_->setValue(currentPage);
    show();
    txtPage_->setFocus();
    txtPage_->selectAll();
}

void GoToBar::Close() {
    hide();
    Q_EMIT Closed();
}

void GoToBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT PageChosen(txtPage_->value());
        Close();
    } else if (event->key() == Qt::Key_Escape) {
        Close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace velmora::print
