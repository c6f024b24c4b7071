#pragma once

#include "demo/Assets.h"
#include "demo/Persons.h"
#include "demo/Random.h"
#include "demo/RowSink.h"
#include "demo/Scale.h"

#include <vector>

namespace velmora::demo {

// The rows of [Asset/Organization] and [Asset/Person]: whose room it is, and who looks after it.
void WriteOwners(const std::vector<Asset>& assets, const Staff& staff, Random random, RowSink& sink);

// The rows of [WorkOrder], two thirds of the past ones completed.
void WriteWorkOrders(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
                     Random random, RowSink& sink);

// The rows of [PrintAttributes].
void WritePrintAttributes(RowSink& sink);

} // namespace velmora::demo
