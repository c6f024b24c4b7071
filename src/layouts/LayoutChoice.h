#pragma once

#include "base/DateTime.h"
#include "reports/Requests.h"

#include <QString>

#include <optional>
#include <span>

namespace velmora::layouts {

// A layout of the program: all that knows them one by one.
struct LayoutChoice {
    // The option button's index, which stays what it is: 8 is nobody's.
    qint16 index;
    // With the mark of its mnemonic.
    QStringView caption;
    // The layout file's name in the data directory.
    QStringView file;
    // What its formula is put together from: the range, of which %1 and %2 are the arguments of the two dates, and what
    // the completion filter adds.
    QStringView range;
    QStringView completed;
    // It can leave out conference rooms.
    bool knowsAssets;
};

// The options in the order of the page.
std::span<const LayoutChoice> LayoutChoices();
// Null for an index that is no layout's.
const LayoutChoice* FindLayoutChoice(qint16 index);

// What the option buttons make of the page.
struct LayoutPageView {
    // The check box chkReportCompleted.
    bool showCompleted = true;
    // As it is shown; empty while the box is hidden.
    QString completedCaption;
};

// The click on an option button: `isSet` is the button's state after it. Returns what the page shows from now on,
// with the button Command3 enabled; none when the button is not set.
std::optional<LayoutPageView> ShowReportSelection(qint16 index, bool isSet);

// The record selection formula of the layout; empty for an index that is no layout's. A missing date leaves its place
// in the formula empty, which the report refuses.
QString SelectionFormula(const LayoutRequest& request);

} // namespace velmora::layouts
