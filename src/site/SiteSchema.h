#pragma once

#include "engine/Schema.h"

namespace velmora {

// The tables of a site's database. Those of the first version belong to the whole suite and never change; later ones
// are this program's own. A table more is an entry in the list with the next version, which is raised with it; sites
// are brought up to date when they are opened.
engine::Schema SiteSchema();

} // namespace velmora
