#pragma once

#include "print/Delivery.h"

#include <QString>

namespace velmora::report {

// Delivers to the file that the command line names, or to standard output, the bytes that a desk would save.
class OutputDelivery : public print::Delivery {
public:
    // A path, or "-" for standard output.
    explicit OutputDelivery(QString output) : output_(std::move(output)) {}
    void SendMail(const QByteArray& text) override;
    void SaveFile(const QByteArray& bytes, print::ReportFileKind kind) override;

    bool HasDelivered() const { return delivered_; }

private:
    QString output_;
    bool delivered_ = false;
};

} // namespace velmora::report
