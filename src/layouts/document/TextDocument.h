#pragma once

#include "layouts/document/DocumentWriter.h"

#include <QByteArray>

namespace velmora::layouts {

// Plain text for files and mail, UTF-8: columns separated by TABs, lines by carriage return and line feed.
class TextDocument : public DocumentWriter {
public:
    TextDocument(const Layout& layout, const LocaleText& locale) : layout_(layout), locale_(locale) {}

    void Begin(const SpecialTexts& specials) override;
    void BeginGroup(size_t level, const QString& heading) override;
    void Record(const FilledRecord& record) override;
    void EndGroup(size_t level, const QString& footer) override;
    void Finish(const QString& closing) override;

    // The finished text, without an end of its last line.
    const QByteArray& Bytes() const { return text_; }

private:
    void AppendLine(const QString& line);
    void AppendBody(const FilledRecord& record);

    const Layout& layout_;
    const LocaleText& locale_;
    QByteArray text_;
    bool hasRecords_ = false;
};

} // namespace velmora::layouts
