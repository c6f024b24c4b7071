#pragma once

#include "base/Program.h"

#include <QIODevice>

#include <optional>

namespace velmora::print {

enum class ReportFileKind { PlainText, Html, Pdf };

// Where finished documents go that are not put on paper. The texts are UTF-8; a PDF file is its bytes. A failure is
// thrown as an Error that says what to do; the report may then be handed over again.
class DocumentSink {
public:
    virtual ~DocumentSink() = default;
    virtual void SendMail(const QByteArray& text) = 0;
    // False when the user was asked for the file and gave none.
    virtual bool SaveFile(const QByteArray& bytes, ReportFileKind kind) = 0;
};

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

// Asks for a report file, first in the data directory. Returns its native path, with the extension of its kind behind
// it unless it ends with exactly that; none when the person named no file.
std::optional<QString> AskReportPath(Dialogs& dialogs, ReportFileKind kind);

// Writes a report as its file holds it: a PDF's bytes; a text and one line end, or nothing at all for an empty text.
// Returns false when the device did not take all of it. The device is opened unbuffered.
bool WriteReport(QIODevice& device, const QByteArray& bytes, ReportFileKind kind);

// Makes or replaces the file at a native path. The file appears complete or not at all: after a failure, a full disk
// included, what was there before is still there. Throws Error with the path and the reason.
void WriteReportFile(const QString& path, const QByteArray& bytes, ReportFileKind kind);

} // namespace velmora::print
