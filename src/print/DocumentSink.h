#pragma once

#include <QByteArray>

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

} // namespace velmora::print
