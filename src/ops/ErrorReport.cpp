#include "ops/ErrorReport.h"

#include "ops/SharedDatabase.h"

namespace velmora {

namespace {

struct LastError {
    Answer answer = Answer::Ignore;
};

} // namespace

QString ErrorReport::Text(const Error& error, const FailurePlace& place) {
    QString text = error.Description();
    const auto add = [&text](const QString& caption, const std::optional<QString>& value) {
        if (value) {
            text += QStringLiteral("\r\n") + caption + QStringLiteral(" = ") + *value;
        }
    };
    add(QStringLiteral("Module"), place.module);
    add(QStringLiteral("Procedure"), place.procedure);
    add(QStringLiteral("Task"), place.task);
    return text;
}

Answer ErrorReport::Report(const Error& error, const FailurePlace& place) {
    const QString text = Text(error, place);
    QString entry = QStringLiteral("Error %1: %2").arg(error.Number()).arg(text);
    if (!error.Detail().isEmpty()) {
        entry += QStringLiteral("\nDetail = ") + error.Detail();
    }
    log_.Write(entry);
    const Answer answer = dialogs_.ShowMessage(
        {text, error.Source() + QStringLiteral(" Error"), Buttons::AbortRetryIgnore, Icon::Exclamation});
    Program& program = CurrentProgram();
    program.Part<LastError>().answer = answer;
    if (answer == Answer::Abort) {
        ExitProgram();
        throw StopProgram{1};
    }
    ShowStatus(QString());
    return answer;
}

Answer ReportError(const Error& error, const FailurePlace& place) {
    return CurrentProgram().services().errors.Report(error, place);
}

Answer LastErrorAnswer() {
    return CurrentProgram().Part<LastError>().answer;
}

void ExitProgram() noexcept {
    try {
        CurrentProgram().services().windows.UnloadAll();
    } catch (...) { // NOLINT(bugprone-empty-catch)
        // The program goes on ending, whatever a window says.
    }
    try {
        CurrentProgram().Part<SharedDatabase>().database.reset();
    } catch (...) { // NOLINT(bugprone-empty-catch)
        // As above.
    }
}

void ShowStatus(const QString& text, std::optional<double> percent) {
    CurrentProgram().services().progress.Show(text, percent);
}

} // namespace velmora
