#pragma once

#include "print/pages/PageSurface.h"

namespace velmora::print {

// Writes records on pages, from BeginGroup to EndRecords: from the top of the surface's first page on, in its font and
// sizes around it. Headings are never parted from the first record below them, and stand again at the top of the next
// page; a record is parted only where it is longer than a page. The writer throws Error where there are more pages than
// can be numbered. `document` is the surface's; both outlive the writer.
std::unique_ptr<ReportWriter> MakePageRecords(PageSurface& surface, pages::Document& document, const RecordForm& form);

} // namespace velmora::print
