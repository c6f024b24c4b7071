#pragma once

#include "tests/desk/DeskFixture.h"

namespace velmora {

// The reports on the site of tests/reports/site.sql.
class ReportsFixture : public DeskFixture {
protected:
    ReportsFixture() : DeskFixture({}, u"/reports/site.sql"_s) {}
};

} // namespace velmora
