#include "desk/windows/UsagePage.h"

#include "base/windows/DateBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

using namespace Qt::StringLiterals;

UsagePage::UsagePage(DeskHost& host)
    : host_(host), OptUsage(this, u"OptUsage"_s,
                            {{0, u"&Location by Area, Space Type and Organizaition"_s},
                             {1, u"Pesons by &First Area, Organization, and Space Type"_s},
                             {2, u"Persons by &Second Area, Organization and Space Type"_s},
                             {3, u"Persons by &Third Area, Organization, and Space Type"_s}}),
      chkUsageDetail(NewControl<QCheckBox>(u"chkUsageDetail"_s, u"&Include Detail"_s)),
      dtcUsage(NewDateBox(host, u"dtcUsage"_s)), Command7(NewControl<QPushButton>(u"Command7"_s, u"&Run Report"_s)) {
    const Frame frame = NewFrame(u"Frame10"_s, u"Usage Breakdown"_s);
    LayOutDayPage(this, frame, OptUsage, NewControl<QLabel>(u"Label8"_s, u"Report &Date"_s), dtcUsage, Command7);
    frame.column->addSpacing(spacing::normal);
    frame.column->addWidget(chkUsageDetail);
    connect(Command7, &QPushButton::clicked, this, &UsagePage::Command7_Click);
}

void UsagePage::Store(DeskState& state) const {
    state.OptUsage = static_cast<qint16>(OptUsage.Chosen());
    state.chkUsageDetail = chkUsageDetail->isChecked();
    state.dtcUsage = dtcUsage->Value();
}

void UsagePage::Load(const DeskState& state) {
    const QSignalBlocker quiet(dtcUsage);
    OptUsage.Choose(state.OptUsage);
    chkUsageDetail->setChecked(state.chkUsageDetail);
    dtcUsage->SetValue(state.dtcUsage);
}

void UsagePage::Command7_Click() {
    if (host_.StorePages()) {
        const DeskState& state = host_.State();
        host_.RunReport(UsageRequest{.breakdown = static_cast<UsageBreakdown>(std::max<int>(state.OptUsage, 0)),
                                     .date = state.dtcUsage,
                                     .detail = state.chkUsageDetail});
    }
}

} // namespace velmora
