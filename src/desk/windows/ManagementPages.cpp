#include "desk/windows/ManagementPages.h"

#include "base/windows/DateBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

DateBox* NewDateBox(DeskHost& host, const QString& name) {
    const Services& services = host.TheProgram().services();
    auto* box = new DateBox(services.localeText, services.clock);
    box->setObjectName(name);
    return box;
}

// The frame with the options, the date below it, and the button that runs the report.
void LayOut(DeskPage* page, const Frame& frame, const OptionGroup& options, QLabel* label, DateBox* date,
            QPushButton* run) {
    for (QAbstractButton* option : options.Buttons()) {
        frame.column->addWidget(option);
    }
    auto* day = new QHBoxLayout;
    day->addLayout(Captioned(label, date));
    day->addStretch();
    run->setDefault(true);
    QVBoxLayout* column = NewPageColumn(page);
    column->addWidget(frame.box);
    column->addLayout(day);
    column->addStretch();
    column->addLayout(NewButtonRow({run}));
}

} // namespace

ExceptionPage::ExceptionPage(DeskHost& host)
    : host_(host), optException(this, u"optException"_s,
                                {{0, u"Reservations outside of &Space Type"_s},
                                 {1, u"Reservations outside of &First Area"_s},
                                 {2, u"Reservations outside of S&econd Area"_s},
                                 {3, u"Reservations outside of &Third Area"_s},
                                 {4, u"Reservations not c&hecked-in"_s}}),
      dtcException(NewDateBox(host, u"dtcException"_s)),
      cmdRunExceptions(NewControl<QPushButton>(u"cmdRunExceptions"_s, u"&Run Report"_s)) {
    LayOut(this, NewFrame(u"Frame9"_s, u"Report Type"_s), optException,
           NewControl<QLabel>(u"Label1"_s, u"Report &Date"_s), dtcException, cmdRunExceptions);
    connect(cmdRunExceptions, &QPushButton::clicked, this, &ExceptionPage::cmdRunExceptions_Click);
}

void ExceptionPage::Store(DeskState& state) const {
    state.optException = static_cast<qint16>(optException.Chosen());
    state.dtcException = dtcException->Value();
}

void ExceptionPage::Load(const DeskState& state) {
    const QSignalBlocker quiet(dtcException);
    optException.Choose(state.optException);
    dtcException->SetValue(state.dtcException);
}

void ExceptionPage::cmdRunExceptions_Click() {
    if (host_.StorePages()) {
        const DeskState& state = host_.State();
        host_.RunReport(ExceptionRequest{.type = static_cast<ExceptionType>(std::max<int>(state.optException, 0)),
                                         .date = state.dtcException,
                                         .excludeConferenceRooms = state.chkConferenceDaily,
                                         .startupArgument = host_.TheProgram().services().startupArgument});
    }
}

UsagePage::UsagePage(DeskHost& host)
    : host_(host), OptUsage(this, u"OptUsage"_s,
                            {{0, u"&Location by Area, Space Type and Organizaition"_s},
                             {1, u"Pesons by &First Area, Organization, and Space Type"_s},
                             {2, u"Persons by &Second Area, Organization and Space Type"_s},
                             {3, u"Persons by &Third Area, Organization, and Space Type"_s}}),
      chkUsageDetail(NewControl<QCheckBox>(u"chkUsageDetail"_s, u"&Include Detail"_s)),
      dtcUsage(NewDateBox(host, u"dtcUsage"_s)), Command7(NewControl<QPushButton>(u"Command7"_s, u"&Run Report"_s)) {
    const Frame frame = NewFrame(u"Frame10"_s, u"Usage Breakdown"_s);
    LayOut(this, frame, OptUsage, NewControl<QLabel>(u"Label8"_s, u"Report &Date"_s), dtcUsage, Command7);
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
