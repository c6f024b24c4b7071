#pragma once

#include "base/services/Mail.h"
#include "print/ReportFile.h"

#include <QString>

namespace velmora::runner {

// Delivers into a file, or to standard output, the bytes that a desk would save; mail goes
// to its recipients at once, under the report's title.
class OutputDelivery : public print::DocumentSink {
public:
    // `output` is a path, or "-" for standard output. The session outlives the delivery.
    OutputDelivery(QString output, MailSession& session, std::vector<MailRecipient> recipients)
        : output_(std::move(output)), session_(session), recipients_(std::move(recipients)) {}
    void SendMail(const QByteArray& text) override;
    bool SaveFile(const QByteArray& bytes, print::ReportFileKind kind) override;

    bool HasDelivered() const { return delivered_; }

private:
    QString output_;
    MailSession& session_;
    std::vector<MailRecipient> recipients_;
    bool delivered_ = false;
};

} // namespace velmora::runner
