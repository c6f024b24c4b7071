#pragma once

#include "base/services/Mail.h"
#include "base/services/Printers.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmora {

// Where a report goes. A PDF file holds the pages of the printer.
enum class DeliveryTarget { Printer, Preview, Mail, TextFile, HtmlFile, PdfFile };

// How and where a report is delivered.
struct Delivery {
    DeliveryTarget target = DeliveryTarget::Preview;
    // Device name of the printer that pages are made for; empty for the current one.
    QString printer{};
    // Family name of the font of pages; empty for the current one.
    QString font{};
    // None: portrait, or as the layout has it.
    std::optional<Orientation> orientation{};
    // Of label and value lines, in place of the user's own setting: 0 none, 1 boxes, 2 lines.
    std::optional<qint16> leaderStyle{};
    // Without page breaks; printer, font and orientation stay as they are.
    bool continuous = false;
    // A path, or "-" for standard output; empty where a person is asked.
    QString file{};
    // Who gets the report by mail; none where a person is asked.
    std::vector<MailRecipient> recipients{};

    // It is drawn as the printer's pages and goes on paper or into a PDF file.
    bool ToPages() const { return target == DeliveryTarget::Printer || target == DeliveryTarget::PdfFile; }
    friend bool operator==(const Delivery&, const Delivery&) = default;
};

} // namespace velmora
