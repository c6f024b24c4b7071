#pragma once

#include "base/Error.h"
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

// No print system: for programs that print into files alone.
class NoQueues : public PrintQueues {
public:
    QStringList Names() const override { return {}; }
    QString DefaultName() const override { return {}; }
    std::optional<PrinterPage> Paper(const QString& queue) const override { Refuse(queue); }
    void Submit(const QString& queue, const QueueJob&) override { Refuse(queue); }

private:
    [[noreturn]] static void Refuse(const QString& queue) {
        throw ProgramError(ErrorNumber::Unavailable, QStringLiteral("There is no printer \"%1\"").arg(queue));
    }
};

// Prints finished documents on the printer that they were made for, whichever is the current one by then.
class DocumentPrinter {
public:
    virtual ~DocumentPrinter() = default;
    // Throws Error, naming the printer, unless the printer has taken the whole document.
    virtual void Print(const QString& deviceName, const QueueJob& job) = 0;
};

} // namespace velmora::printers
