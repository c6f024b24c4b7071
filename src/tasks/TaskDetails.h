#pragma once

#include "base/LocaleText.h"
#include "engine/Recordset.h"
#include "tasks/TaskKind.h"

#include <QStringList>

namespace velmora {

// What the task view shows of one reservation, by the names of its controls. What is missing is an empty text.
struct TaskDetails {
    // The name of the reservation, the caption of the frame.
    QString frEvent;
    QString lblLastName;
    QString lblFirstName;
    QString lblAsset;
    QString lblAssetName;
    QString lblAttendees;
    // The whole period in one line.
    QString lblEnd;
    QString lblEvent;
    QString lblOrganization;
    QString lblID;
    bool chkSLockStart = false;
    bool chkSLockEnd = false;
    bool chkTLockStart = false;
    bool chkTLockEnd = false;

    // Reads the current record of a set over assets and reservations.
    static TaskDetails Read(const engine::Recordset& rows, const LocaleText& locale);

    // The check box of a task.
    bool& Done(TaskKind task);
    bool Done(TaskKind task) const;
    // The captions, in English, of what differs in `other`.
    QStringList Differences(const TaskDetails& other) const;

    friend bool operator==(const TaskDetails&, const TaskDetails&) = default;
};

} // namespace velmora
