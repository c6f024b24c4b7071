#pragma once

#include "platform/printers/PrintQueues.h"

namespace velmora::printers {

// The queues of the system's print server. Each call connects anew, so a server that comes or goes is noticed. No
// password is ever asked for: a server that wants one refuses.
class CupsQueues : public PrintQueues {
public:
    QStringList Names() const override;
    QString DefaultName() const override;
    std::optional<PrinterPage> Paper(const QString& queue) const override;
    void Submit(const QString& queue, const QueueJob& job) override;
};

} // namespace velmora::printers
