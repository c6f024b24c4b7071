#pragma once

#include "print/pages/PageWriter.h"
#include "print/pages/PageWriters.h"
#include "tests/print/PrintFixture.h"

namespace velmora::print {

// Keeps the pages of the last report as they were drawn.
class CapturedPages : public PageWriterFactory {
public:
    std::unique_ptr<ReportWriter> MakeWriter(JobState& state) override {
        return std::make_unique<Writer>(*this, state);
    }

    PageTarget target;
    pages::Document document;
    int refusals = 0;

private:
    class Writer : public PageWriter {
    public:
        Writer(CapturedPages& pages, JobState& state)
            : PageWriter(state, pages.target, QStringLiteral("Desk")), pages_(pages) {}
        void Deliver() override { pages_.document = Pages(); }
        void RefusePage() override { ++pages_.refusals; }

    private:
        CapturedPages& pages_;
    };
};

// Letter paper with margins of 500 on the left and 300 above, and a line height that is Liberation Sans at 10 points.
class PagesFixture : public PrintFixture {
protected:
    static constexpr int width = 10000;
    static constexpr int height = 15000;
    static constexpr int left = 500;
    static constexpr int top = 300;

    PagesFixture() {
        factory_.target.geometry = {12240, 15840, left, top, width, height, 2.4, 2.4};
        factory_.target.font = FontOf({QStringLiteral("Liberation Sans"), 10, false, false, false, false});
        job_.SetOutputTarget(0);
    }

    const pages::Document& Lay(const std::function<void(PrintJob&)>& layout, std::optional<bool> suppress = {},
                               qint16 leader = 0) {
        fakes_.userSettings.Write(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s, QString::number(leader));
        job_.BeginReport(suppress);
        layout(job_);
        job_.EndReport();
        return factory_.document;
    }
    int LineHeight() const { return pages::PageFont(factory_.target.font).LineHeight(); }

    // One text as it stands on its page.
    struct Placed {
        QString text;
        int x = 0;
        int y = 0;
        int width = 0;
        pages::FontSpec font;
    };
    // The texts of a page in the order of drawing; positions count from the drawable area's corner.
    std::vector<Placed> Texts(size_t page = 0) const {
        std::vector<Placed> texts;
        const pages::Document& document = factory_.document;
        for (const pages::Item& item : document.pages.at(page).Items()) {
            if (item.kind == pages::Item::Kind::Text) {
                texts.push_back({document.pages[page].Text(item).toString(), item.x - left, item.y - top, item.width,
                                 document.fonts[item.font]});
            }
        }
        return texts;
    }
    Placed Find(const QString& text, size_t page = 0) const {
        for (const Placed& placed : Texts(page)) {
            if (placed.text == text) {
                return placed;
            }
        }
        ADD_FAILURE() << "not on the page: " << text.toStdString();
        return {};
    }
    CapturedPages factory_;
    PrintJob job_{{fakes_.program.services(), delivery_, [this] { return attributes_; }, &factory_}};
};

} // namespace velmora::print
