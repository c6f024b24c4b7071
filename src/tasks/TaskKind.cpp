#include "tasks/TaskKind.h"

#include "base/Error.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

struct TaskNames {
    const char16_t* caption;
    const char16_t* field;
};

// By TaskKind.
constexpr std::array taskNames = {TaskNames{u"Move In", u"SLockStart"}, TaskNames{u"Move Out", u"SLockEnd"},
                                  TaskNames{u"Phone Connect", u"TLockStart"},
                                  TaskNames{u"Phone Disconnect", u"TLockEnd"}};

const TaskNames& NamesOf(TaskKind task) {
    return taskNames[static_cast<size_t>(task)];
}

} // namespace

TaskKind TaskOfViewType(qint16 viewType) {
    for (const TaskKind task : allTasks) {
        if (static_cast<int>(task) == viewType) {
            return task;
        }
    }
    throw ProgramError(ErrorNumber::InvalidCall, u"There is no kind of task with the number %1."_s.arg(viewType));
}

QString TaskCaption(TaskKind task) {
    return QString::fromUtf16(NamesOf(task).caption);
}

QString TaskField(TaskKind task) {
    return QString::fromUtf16(NamesOf(task).field);
}

} // namespace velmora
