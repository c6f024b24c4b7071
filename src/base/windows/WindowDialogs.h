#pragma once

#include "base/services/Dialogs.h"

#include <QFont>

namespace velmora {

// Questions in windows of their own, in front of the window in use.
class WindowDialogs : public Dialogs {
public:
    Answer ShowMessage(const Message& message) override;
    std::optional<QString> AskText(const QString& prompt, const QString& title, const QString& initial) override;
    std::optional<SaveFileAnswer> AskSaveFile(const SaveFileRequest& request) override;
    std::optional<FontChoice> AskFont(const FontChoice& initial) override;
};

QFont ToFont(const FontChoice& choice);
FontChoice ToFontChoice(const QFont& font);

// "Text file (*.txt)|*.txt" as the toolkit's dialogs want it: "Text file (*.txt)", several separated by ";;".
QString NameFilters(const QString& filter);

} // namespace velmora
