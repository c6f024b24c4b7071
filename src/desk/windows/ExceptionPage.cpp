#include "desk/windows/ExceptionPage.h"

#include "base/windows/DateBox.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

using namespace Qt::StringLiterals;

ExceptionPage::ExceptionPage(DeskHost& host)
    : host_(host), optException(this, u"optException"_s,
                                {{0, u"Reservations outside of &Space Type"_s},
                                 {1, u"Reservations outside of &First Area"_s},
                                 {2, u"Reservations outside of S&econd Area"_s},
                                 {3, u"Reservations outside of &Third Area"_s},
                                 {4, u"Reservations not c&hecked-in"_s}}),
      dtcException(NewDateBox(host, u"dtcException"_s)),
      cmdRunExceptions(NewControl<QPushButton>(u"cmdRunExceptions"_s, u"&Run Report"_s)) {
    LayOutDayPage(this, NewFrame(u"Frame9"_s, u"Report Type"_s), optException,
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

} // namespace velmora
