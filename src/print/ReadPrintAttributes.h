#pragma once

#include "engine/Database.h"
#include "print/PrintAttributes.h"

namespace velmora::print {

// The rows of the table "PrintAttributes". A missing caption is the empty one; bits beyond 16 are cut.
std::vector<PrintAttribute> ReadPrintAttributes(engine::Database& database);

} // namespace velmora::print
