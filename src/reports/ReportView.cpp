#include "reports/ReportView.h"

#include <algorithm>

namespace velmora {

void ShowReportProgress(ReportView& view, const QString& text, qint16 percent) {
    if (text.isEmpty()) {
        view.HideProgress();
    } else {
        view.ShowProgress(text, std::min<int>(percent, 100));
    }
}

} // namespace velmora
