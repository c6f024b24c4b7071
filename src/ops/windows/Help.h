#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace velmora {

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
