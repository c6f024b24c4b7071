#pragma once

#include <QWidget>

class QSpinBox;

namespace velmora::print {

// The line below the preview in which a page number is typed.
class GoToBar : public QWidget {
    Q_OBJECT

public:
    GoToBar(int pageCount, QWidget* parent);
    // Shows the bar with that page's number and takes the keyboard.
    void Open(int currentPage);
    void Close();

Q_SIGNALS:
    void PageChosen(int page);
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QSpinBox* txtPage_;
};

} // namespace velmora::print
