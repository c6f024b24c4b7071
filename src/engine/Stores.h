#pragma once

#include "engine/DatabasePlace.h"

#include <QString>

#include <memory>

namespace velmora::engine {

// Where the site's database lies in a folder, a path that ends in a separator: the first kind of store in the table of
// the source whose file is there; the first of all where there is none.
std::unique_ptr<DatabasePlace> PlaceIn(const QString& folder);

} // namespace velmora::engine
