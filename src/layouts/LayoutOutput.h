#pragma once

#include "base/Program.h"
#include "layouts/document/DocumentWriter.h"
#include "print/Delivery.h"
#include "print/pages/PageOutput.h"
#include "print/pages/PreviewPages.h"

#include <functional>
#include <optional>

namespace velmora::layouts {

// Writes all records of a run.
using WriteDocument = std::function<void(DocumentWriter& writer)>;

// What becomes of the records of a run. Each run has a document of its own: reports that the program prints at the same
// time, their settings and their print job are left alone.
class LayoutOutput {
public:
    virtual ~LayoutOutput() = default;
    // Throws Error when the document cannot be made or does not get to where it goes.
    virtual void Deliver(const Layout& layout, const WriteDocument& write) = 0;
};

// Plain text or HTML into a file, or plain text by mail. What is given outlives the outputs.
class TextOutput : public LayoutOutput {
public:
    enum class Kind { File, Html, Mail };
    TextOutput(const Services& services, print::Delivery& delivery, Kind kind)
        : services_(services), delivery_(delivery), kind_(kind) {}
    void Deliver(const Layout& layout, const WriteDocument& write) override;

private:
    const Services& services_;
    print::Delivery& delivery_;
    Kind kind_;
};

// Pages of the current printer's paper, in the orientation of the layout whatever the printer's is set to.
class PagesOutput : public LayoutOutput {
public:
    // `documentName` is what documents are called in front of their title. An orientation counts in place of the
    // layouts'.
    PagesOutput(const Services& services, QString documentName, std::optional<Orientation> orientation = {})
        : services_(services), documentName_(std::move(documentName)), orientation_(orientation) {}
    void Deliver(const Layout& layout, const WriteDocument& write) override;

private:
    virtual void DeliverPages(const pages::Document& document, Orientation orientation) = 0;

    const Services& services_;
    QString documentName_;
    std::optional<Orientation> orientation_;
};

// The current printer's paper held in that orientation.
PrinterPage PageIn(const Printers& printers, Orientation orientation);

// Prints on the current printer, or into a PDF file where that prints to a file.
class PrinterOutput : public PagesOutput {
public:
    PrinterOutput(const Services& services, print::PageOutput& output, QString documentName,
                  std::optional<Orientation> orientation = {})
        : PagesOutput(services, std::move(documentName), orientation), printers_(services.printers), output_(output) {}

private:
    void DeliverPages(const pages::Document& document, Orientation orientation) override;

    const Printers& printers_;
    print::PageOutput& output_;
};

// Prints finished pages as PageOutput does, on paper held in one orientation whatever the printer's is set to: what a
// preview of a layout prints with.
class OrientedPrinter : public print::PagePrinter {
public:
    OrientedPrinter(const Printers& printers, print::PageOutput& output, Orientation orientation)
        : printers_(printers), output_(output), orientation_(orientation) {}
    pages::PaperSize Paper() const override;
    bool Print(const pages::Document& document) override { return output_.Print(document); }

private:
    const Printers& printers_;
    print::PageOutput& output_;
    Orientation orientation_;
};

// Opens a preview window for each document.
class PreviewOutput : public PagesOutput {
public:
    // The windows of documents of either orientation, which print on paper held that way.
    PreviewOutput(const Services& services, print::PreviewWindows& portrait, print::PreviewWindows& landscape,
                  QString documentName)
        : PagesOutput(services, std::move(documentName)), portrait_(portrait), landscape_(landscape) {}

private:
    void DeliverPages(const pages::Document& document, Orientation orientation) override;

    print::PreviewWindows& portrait_;
    print::PreviewWindows& landscape_;
};

} // namespace velmora::layouts
