#pragma once

#include <QString>

#include <array>

namespace velmora {

// The four tasks of a reservation, numbered as the task view's option buttons are.
enum class TaskKind { MoveIn, MoveOut, PhoneConnect, PhoneDisconnect };

inline constexpr std::array allTasks = {TaskKind::MoveIn, TaskKind::MoveOut, TaskKind::PhoneConnect,
                                        TaskKind::PhoneDisconnect};

// The task of an option button's number; throws Error for any other number.
TaskKind TaskOfViewType(qint16 viewType);

// The task's name in English, as its option button and check box read: "Move In".
QString TaskCaption(TaskKind task);
// The yes/no field of the reservation that says the task is done: "SLockStart".
QString TaskField(TaskKind task);

} // namespace velmora
