#include "desk/windows/DeskPage.h"

#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// The page of the exception reports: which one, and for which day.
class ExceptionPage : public DeskPage {
public:
    explicit ExceptionPage(DeskHost& host);

private:
    void cmdRunExceptions_Click();
};

ExceptionPage::ExceptionPage(DeskHost& host) : DeskPage(host) {
    const OptionGroup optException = NewOptions(u"optException"_s,
                                                {{0, u"Reservations outside of &Space Type"_s},
                                                 {1, u"Reservations outside of &First Area"_s},
                                                 {2, u"Reservations outside of S&econd Area"_s},
                                                 {3, u"Reservations outside of &Third Area"_s},
                                                 {4, u"Reservations not c&hecked-in"_s}},
                                                host.State().optException);
    auto* cmdRunExceptions = NewControl<QPushButton>(u"cmdRunExceptions"_s, u"&Run Report"_s);
    LayOutDayPage(this, NewFrame(u"Frame9"_s, u"Report Type"_s), optException,
                  NewControl<QLabel>(u"Label1"_s, u"Report &Date"_s),
                  NewDate(u"dtcException"_s, host.State().dtcException), cmdRunExceptions);
    connect(cmdRunExceptions, &QPushButton::clicked, this, &ExceptionPage::cmdRunExceptions_Click);
}

void ExceptionPage::cmdRunExceptions_Click() {
    if (Host().StorePages()) {
        const DeskState& state = Host().State();
        Host().RunReport(ExceptionRequest{.type = static_cast<ExceptionType>(std::max<int>(state.optException, 0)),
                                          .date = state.dtcException,
                                          .excludeConferenceRooms = state.daily.excludeConferenceRooms,
                                          .startupArgument = services().startupArgument});
    }
}

} // namespace

DeskPage* NewExceptionPage(DeskHost& host) {
    return new ExceptionPage(host);
}

} // namespace velmora
