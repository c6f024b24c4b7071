#include "desk/windows/DeskPage.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// The page of the usage reports: the breakdown, with or without detail, and for which day.
class UsagePage : public DeskPage {
public:
    explicit UsagePage(DeskHost& host);

private:
    void Command7_Click();
};

UsagePage::UsagePage(DeskHost& host) : DeskPage(host) {
    const OptionGroup OptUsage = NewOptions(u"OptUsage"_s,
                                            {{0, u"&Location by Area, Space Type and Organizaition"_s},
                                             {1, u"Pesons by &First Area, Organization, and Space Type"_s},
                                             {2, u"Persons by &Second Area, Organization and Space Type"_s},
                                             {3, u"Persons by &Third Area, Organization, and Space Type"_s}},
                                            host.State().OptUsage);
    const Frame frame = NewFrame(u"Frame10"_s, u"Usage Breakdown"_s);
    auto* Command7 = NewControl<QPushButton>(u"Command7"_s, u"&Run Report"_s);
    LayOutDayPage(this, frame, OptUsage, NewControl<QLabel>(u"Label8"_s, u"Report &Date"_s),
                  NewDate(u"dtcUsage"_s, host.State().dtcUsage), Command7);
    frame.column->addSpacing(spacing::normal);
    frame.column->addWidget(NewCheck(u"chkUsageDetail"_s, u"&Include Detail"_s, host.State().chkUsageDetail));
    connect(Command7, &QPushButton::clicked, this, &UsagePage::Command7_Click);
}

void UsagePage::Command7_Click() {
    if (Host().StorePages()) {
        const DeskState& state = Host().State();
        Host().RunReport(UsageRequest{.breakdown = static_cast<UsageBreakdown>(std::max<int>(state.OptUsage, 0)),
                                      .date = state.dtcUsage,
                                      .detail = state.chkUsageDetail});
    }
}

} // namespace

DeskPage* NewUsagePage(DeskHost& host) {
    return new UsagePage(host);
}

} // namespace velmora
