#pragma once

#include <QByteArray>

namespace velmora::print {

enum class ReportFileKind { Text, Html };

// Where finished reports without pages go. The texts are UTF-8. A failure is thrown as an Error that says what to do;
// the report may then be handed over again.
class Delivery {
public:
    virtual ~Delivery() = default;
    virtual void SendMail(const QByteArray& text) = 0;
    virtual void SaveFile(const QByteArray& text, ReportFileKind kind) = 0;
};

} // namespace velmora::print
