#pragma once

#include <QWidget>

#include <functional>

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

// The program's help file; native path, empty while none is set. A part of the current program.
struct HelpFile {
    QString path;
};

// Opens the help at a topic, in front of the window in use, or brings the open help to that topic. A topic that the
// help does not have shows its beginning. A message says when the file cannot be read.
void ShowHelp(const QString& topic);

// While it lives, F1 opens the help from any window of the program, at the topic that is asked for then.
class HelpKey : public QObject {
    Q_OBJECT

public:
    explicit HelpKey(std::function<QString()> topic);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<QString()> topic_;
};

} // namespace velmora
