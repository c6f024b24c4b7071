#pragma once

#include <QToolBar>

namespace velmora::print {

// The preview's eight toolbar buttons, two of them separators. Each button has a key.
class PreviewToolbar : public QToolBar {
    Q_OBJECT

public:
    explicit PreviewToolbar(QWidget* parent = nullptr);

    // Enables the paging buttons that lead to another page.
    void ShowPlace(int currentPage, int pageCount);
    // Null for a key that no button has.
    QAction* Button(const QString& key) const;

Q_SIGNALS:
    void ButtonClick(const QString& key);
};

} // namespace velmora::print
