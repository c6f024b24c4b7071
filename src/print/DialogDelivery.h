#pragma once

#include "base/Program.h"
#include "print/DocumentSink.h"
#include "print/ReportFile.h"

namespace velmora::print {

// Delivery at a desk: the mail window, or the file that the person names in the save dialog.
class DialogDelivery : public DocumentSink {
public:
    explicit DialogDelivery(const Services& services) : services_(services) {}
    void SendMail(const QByteArray& text) override;
    // Writes nothing when the person cancels the dialog.
    bool SaveFile(const QByteArray& bytes, ReportFileKind kind) override;

private:
    const Services& services_;
};

} // namespace velmora::print
