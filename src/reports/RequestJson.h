#pragma once

#include "reports/Requests.h"

#include <QJsonObject>

namespace velmora {

// Requests and deliveries as JSON: {"kind": "daily", "list": "starts", "day": "next", "brief": true}. The keys are
// those of VisitFields; what is false, empty or not given is left out.

QJsonObject ToJson(ReportRequest request);
QJsonObject ToJson(Delivery delivery);

// Throws Error that names the key for one that is unknown, missing or of another type, for a day that does not exist,
// and for days that do not fit together. `keyPrefix` stands before the keys in these errors.
ReportRequest RequestFromJson(const QJsonObject& object, const QString& keyPrefix = {});
Delivery DeliveryFromJson(const QJsonObject& object, const QString& keyPrefix = {});

} // namespace velmora
