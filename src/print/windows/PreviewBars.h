#pragma once

#include "platform/pages/PageSearch.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace velmora::print {

// A line below the preview in which something is typed. Escape closes it.
class PreviewBar : public QWidget {
    Q_OBJECT

public:
    explicit PreviewBar(QWidget* parent);
    void Close();

Q_SIGNALS:
    void Closed();

protected:
    // Adds the field behind its caption.
    void AddField(const QString& caption, QWidget& field, int stretch);
    // `backwards`: with the Shift key.
    virtual void ReturnPressed(bool backwards) = 0;
    void keyPressEvent(QKeyEvent* event) override;

    QHBoxLayout* row_;
};

// Looks for a text. Typing looks at once; Return and the arrows go from hit to hit and on from the end to the
// beginning.
class FindBar : public PreviewBar {
    Q_OBJECT

public:
    // The document outlives the bar.
    FindBar(const pages::Document& document, QWidget* parent);

    // Shows the bar and takes the keyboard. Looking begins at that page.
    void Open(int page);
    void FindNext() { Step(1); }
    void FindPrevious() { Step(-1); }

    const std::vector<pages::TextHit>& Hits() const { return hits_; }
    // Index into the hits; -1 without any.
    int Current() const { return current_; }

Q_SIGNALS:
    // The hits or the current one changed.
    void Found();

private:
    void ReturnPressed(bool backwards) override { Step(backwards ? -1 : 1); }
    void Look();
    void Step(int direction);
    void ShowCount(bool wrapped);

    const pages::Document& document_;
    QLineEdit* txtFind_;
    QLabel* lblCount_;
    std::vector<pages::TextHit> hits_;
    int current_ = -1;
    int startPage_ = 0;
};

// Goes to the page whose number is typed.
class GoToBar : public PreviewBar {
    Q_OBJECT

public:
    GoToBar(int pageCount, QWidget* parent);
    // Shows the bar with that page's number and takes the keyboard.
    void Open(int currentPage);

Q_SIGNALS:
    void PageChosen(int page);

private:
    void ReturnPressed(bool backwards) override;

    QSpinBox* txtPage_;
};

} // namespace velmora::print
