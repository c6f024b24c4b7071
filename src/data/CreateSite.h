#pragma once

#include "data/demo/Scale.h"
#include "site/Site.h"

#include <QString>

#include <optional>

namespace velmora {

// Makes a site in a folder, with `demo` also that demo site's rows and sample HTML wrapper files. Throws as
// Site::Create.
Site CreateSite(const QString& folder, const std::optional<demo::Options>& demo);

} // namespace velmora
