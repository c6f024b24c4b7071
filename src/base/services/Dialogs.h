#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace velmora {

enum class Buttons { Ok, OkCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class Icon { None, Critical, Question, Exclamation, Information };

// Which button of a message box was pressed.
enum class Answer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct Message {
    QString text;
    QString title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
};

struct SaveFileRequest {
    QString title;
    // "Text file (*.txt)|*.txt": a description and its pattern, separated by bars.
    QString filter;
    // Native folder in which the dialog starts.
    QString folder;
};

struct SaveFileAnswer {
    // The folder chosen, native form, and the file's name without its folder.
    QString folder;
    QString name;
};

struct FontChoice {
    QString family;
    double points = 10;
    bool bold = false;
    bool italic = false;
};

// Questions to the person at the desk. Every call returns when the person has answered.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual Answer ShowMessage(const Message& message) = 0;
    // The text entered, or none when the person cancelled.
    virtual std::optional<QString> AskText(const QString& prompt, const QString& title, const QString& initial) = 0;
    // None when the person cancelled. Existing files are replaced only after the dialog has asked.
    virtual std::optional<SaveFileAnswer> AskSaveFile(const SaveFileRequest& request) = 0;
    virtual std::optional<FontChoice> AskFont(const FontChoice& initial) = 0;
};

} // namespace velmora
