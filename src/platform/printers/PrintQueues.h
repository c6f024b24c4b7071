#pragma once

#include "base/services/Printers.h"

#include <QByteArray>

#include <optional>

namespace velmora::printers {

// What is handed to a queue.
struct QueueJob {
    // What the document is called in the queue.
    QString title;
    QByteArray pdf;
    // The sheets to print on, held upright, in twips.
    int paperWidth = 0;
    int paperHeight = 0;
};

// The print queues of the system.
class PrintQueues {
public:
    virtual ~PrintQueues() = default;
    // In the order in which the system lists them; empty where there is no print system.
    virtual QStringList Names() const = 0;
    // Empty where none is the default.
    virtual QString DefaultName() const = 0;
    // The queue's own paper in portrait, or none where the queue does not say. Throws Error when there is no such
    // queue.
    virtual std::optional<PrinterPage> Paper(const QString& queue) const = 0;
    // Throws Error, naming the queue, unless the queue has taken the whole job.
    virtual void Submit(const QString& queue, const QueueJob& job) = 0;
};

} // namespace velmora::printers
