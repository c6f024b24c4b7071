#pragma once

#include "platform/pages/PageSearch.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace velmora::print {

// The line below the preview in which a text is looked for. Typing looks at once; Return and the arrows go from hit to
// hit and on from the end to the beginning.
class FindBar : public QWidget {
    Q_OBJECT

public:
    // The document outlives the bar.
    FindBar(const pages::Document& document, QWidget* parent);

    // Shows the bar and takes the keyboard. Looking begins at that page.
    void Open(int page);
    void Close();
    void FindNext() { Step(1); }
    void FindPrevious() { Step(-1); }

    const std::vector<pages::TextHit>& Hits() const { return hits_; }
    // Index into the hits; -1 without any.
    int Current() const { return current_; }

Q_SIGNALS:
    // The hits or the current one changed.
    void Found();
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
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

} // namespace velmora::print
