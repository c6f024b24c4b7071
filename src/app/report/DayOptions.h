#pragma once

#include "app/report/OptionTable.h"
#include "reports/Requests.h"

namespace velmora::report {

// The options that name a report's days: --day next|current, or --day other --date YYYY-MM-DD [--days N].
class DayOptions {
public:
    void AddTo(OptionTable& table);
    // Throws BadUsage when the options do not fit together.
    DaySelection Resolve() const;

private:
    QString day_;
    std::optional<Date> date_;
    std::optional<int> days_;
};

} // namespace velmora::report
