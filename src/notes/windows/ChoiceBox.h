#pragma once

#include <QComboBox>

namespace velmora {

// A frame that is seen on a dark grid too, which the style's own is not.
void FrameInHighlight(QFrame& area);

// An editable list in a cell, as wide as the cell however long its entries are.
class ChoiceBox : public QComboBox {
    Q_OBJECT

public:
    ChoiceBox(const QStringList& choices, QWidget* parent);

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    // An entry was chosen from the open list: nothing more is to be typed. The arrow keys choose without it.
    void Chosen();

private:
    bool chosen_ = false;
};

} // namespace velmora
