#include "reports/PrintedAt.h"

#include "base/Translate.h"

namespace velmora {

QString PrintedAt(const Program& program, const QString& caption, const QString& days) {
    const Services& services = program.services();
    return Translate(caption) + u' ' + services.localeText.GeneralDate(services.clock.Now()) + days;
}

} // namespace velmora
