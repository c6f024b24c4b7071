#pragma once

#include "base/Error.h"
#include "platform/printers/PrintQueues.h"

namespace velmora::printers {

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

} // namespace velmora::printers
