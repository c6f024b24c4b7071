#include "desk/windows/DateRangeBox.h"

#include "base/windows/DateBox.h"
#include "desk/windows/PageParts.h"

#include <QLabel>

namespace velmora {

using namespace Qt::StringLiterals;

DateRangeBox::DateRangeBox(const Services& services, QWidget* parent)
    : QWidget(parent), StartDate(new DateBox(services.localeText, services.clock)),
      EndDate(new DateBox(services.localeText, services.clock)) {
    StartDate->setObjectName(u"StartDate"_s);
    EndDate->setObjectName(u"EndDate"_s);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing::large);
    row->addLayout(Captioned(NewControl<QLabel>(u"lblStartDate"_s, u"St&art"_s), StartDate));
    row->addLayout(Captioned(NewControl<QLabel>(u"lblEndDate"_s, u"&Before"_s), EndDate));
}

DateRange DateRangeBox::Range() const {
    return {StartDate->Value(), EndDate->Value()};
}

void DateRangeBox::SetRange(const DateRange& range) {
    StartDate->SetValue(range.StartDate);
    EndDate->SetValue(range.EndDate);
}

} // namespace velmora
