#include "notes/windows/ChoiceBox.h"

#include <QAbstractItemView>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

constexpr int lettersInBox = 8;
constexpr int lettersInList = 60;

} // namespace

void FrameInHighlight(QFrame& area) {
    area.setFrameStyle(int{QFrame::Box} | int{QFrame::Plain});
    area.setLineWidth(1);
    area.setForegroundRole(QPalette::Highlight);
}

ChoiceBox::ChoiceBox(const QStringList& choices, QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(lettersInBox);
    addItems(choices);
    connect(this, &QComboBox::activated, this, [this] { chosen_ = true; });
}

void ChoiceBox::showPopup() {
    // The list may be wider than the box, but not as wide as the longest entry can be.
    const int widest = fontMetrics().averageCharWidth() * lettersInList;
    const int entries = view()->sizeHintForColumn(0) + 2 * view()->verticalScrollBar()->sizeHint().width();
    FrameInHighlight(*view());
    view()->setMinimumWidth(std::clamp(entries, width(), std::max(width(), widest)));
    chosen_ = false;
    QComboBox::showPopup();
}

void ChoiceBox::hidePopup() {
    const bool wasOpen = view()->isVisible();
    QComboBox::hidePopup();
    if (wasOpen) {
        // The box takes the chosen entry only after its list is closed.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (std::exchange(chosen_, false)) {
                    Q_EMIT Chosen();
                }
            },
            Qt::QueuedConnection);
    }
}

} // namespace velmora
