#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTextBrowser;

namespace velmora {

// The help: its topics beside its text, and a search through it. It is gone when its user closes it.
class frmHelp : public QWidget {
    Q_OBJECT

public:
    // The text is HTML; each topic begins with <h2><a name="key">Heading</a></h2>.
    explicit frmHelp(const QString& html, QWidget* parent = nullptr);
    // Shows the window at the topic of that key.
    void ShowTopic(const QString& key);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ListTopics(const QString& html);
    void lstTopics_Click();
    void txtFind_Return();

    QListWidget* lstTopics;
    QLineEdit* txtFind;
    QTextBrowser* txtHelp;
    QLabel* lblFound;
    // The topic chosen is still at the top; its reader has gone nowhere else.
    bool atTopic_ = false;
};

} // namespace velmora
