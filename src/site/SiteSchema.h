#pragma once

#include "engine/Schema.h"

namespace velmora {

// The tables of a site's database, as share/site-schema.txt has them; the version is that of the latest one.
engine::Schema SiteSchema();

} // namespace velmora
