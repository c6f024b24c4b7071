#pragma once

#include "layouts/document/DocumentWriter.h"

#include <QByteArray>

namespace velmora::layouts {

// HTML between the site's own two wrapper files, UTF-8.
class HtmlDocument : public DocumentWriter {
public:
    HtmlDocument(const Layout& layout, const LocaleText& locale) : layout_(layout), locale_(locale) {}

    void Begin(const SpecialTexts& specials) override;
    void BeginGroup(size_t level, const QString& heading) override;
    void Record(const FilledRecord& record) override;
    void EndGroup(size_t level, const QString& footer) override;
    void Finish(const QString& closing) override;

    const QByteArray& Bytes() const { return html_; }

private:
    void AppendElement(const QByteArray& open, const QString& text, const char* close);
    void OpenTable();
    void CloseTable();
    void AppendCell(const LayoutColumn& column, const FilledCell& cell);
    void AppendBody(const FilledRecord& record);
    void AppendBodyItem(const BodyItem& item, const QString& value);
    void AppendDetails(const QStringList& lines);

    const Layout& layout_;
    const LocaleText& locale_;
    QByteArray html_;
    bool tableIsOpen_ = false;
    // No record stands on the page yet that the next one would be printed on.
    bool isPageStart_ = true;
};

} // namespace velmora::layouts
