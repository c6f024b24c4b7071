#pragma once

#include "base/Program.h"
#include "desk/windows/DeskState.h"

#include <QWidget>

namespace velmora {

class DateBox;

// A pair of dates, start and end.
class DateRangeBox : public QWidget {
    Q_OBJECT

public:
    explicit DateRangeBox(const Services& services, QWidget* parent = nullptr);
    DateRange Range() const;
    void SetRange(const DateRange& range);

private:
    DateBox* StartDate;
    DateBox* EndDate;
};

} // namespace velmora
