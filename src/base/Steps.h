#pragma once

#include "base/services/ErrorReporter.h"

#include <QString>

#include <utility>

namespace velmora {

// How a procedure reports its failures. A procedure opens one Steps with its module title and its own name, and runs
// each statement that can fail as a step:
//
//     Steps steps(errors, u"Internal Data"_s, u"Fill Asset Collection"_s);
//     steps.Step(u"Opening Assets"_s, [&] { rows = database.OpenRecordset(text); });
//
// A failure is caught and reported with the step's task text. Retry runs the step again from its beginning, so a
// step must restart cleanly; Ignore goes on behind it; Abort ends the program: the reporter throws StopProgram.
class Steps {
public:
    // `emptyTask` is what the report says of a step without a task text.
    Steps(ErrorReporter& errors, QString module, QString procedure, QString emptyTask = QStringLiteral("undefined"))
        : errors_(errors), module_(std::move(module)), procedure_(std::move(procedure)),
          emptyTask_(std::move(emptyTask)) {}

    // True when the step was done, false when its failure was ignored.
    template <typename Function>
    bool Step(const QString& task, Function&& statement) {
        for (;;) {
            try {
                statement();
                return true;
            } catch (const std::exception&) {
                if (!Again(task)) {
                    return false;
                }
            }
        }
    }

private:
    // Reports the failure being handled; true when the user chose Retry.
    bool Again(const QString& task) {
        const FailurePlace place{module_, procedure_, task.isEmpty() ? emptyTask_ : task};
        return errors_.Report(CurrentError(), place) == Answer::Retry;
    }

    ErrorReporter& errors_;
    QString module_;
    QString procedure_;
    QString emptyTask_;
};

} // namespace velmora
