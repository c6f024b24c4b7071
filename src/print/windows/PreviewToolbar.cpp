#include "print/windows/PreviewToolbar.h"

#include "base/Translate.h"
#include "base/windows/Glyph.h"

#include <QToolButton>

#include <array>

namespace velmora::print {

namespace {

struct ButtonRow {
    const char16_t* key; // empty: a separator
    const char16_t* tip;
    Glyph glyph;
};

constexpr std::array buttons = {
    ButtonRow{u"First", u"First Page", Glyph::First},
    ButtonRow{u"Previous", u"Previous Page", Glyph::Previous},
    ButtonRow{u"", u"", Glyph::First},
    ButtonRow{u"Next", u"Next Page", Glyph::Next},
    ButtonRow{u"Last", u"Last Page", Glyph::Last},
    ButtonRow{u"", u"", Glyph::First},
    ButtonRow{u"PrintPage", u"Print the Current Page", Glyph::PrintPage},
    ButtonRow{u"Print", u"Print All Pages", Glyph::PrintAll},
};

} // namespace

PreviewToolbar::PreviewToolbar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("Toolbar1"));
    setMovable(false);
    setIconSize(QSize(20, 20));
    setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ButtonRow& row : buttons) {
        const QString key = QString::fromUtf16(row.key);
        if (key.isEmpty()) {
            addSeparator();
            continue;
        }
        const QString tip = Translate(QString::fromUtf16(row.tip));
        QAction* action = addAction(GlyphIcon(row.glyph), tip);
        action->setObjectName(key);
        action->setToolTip(tip);
        auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
        button->setObjectName(key);
        button->setAccessibleName(tip);
        button->setFocusPolicy(Qt::TabFocus);
        connect(action, &QAction::triggered, this, [this, key] { Q_EMIT ButtonClick(key); });
    }
}

QAction* PreviewToolbar::Button(const QString& key) const {
    return findChild<QAction*>(key, Qt::FindDirectChildrenOnly);
}

void PreviewToolbar::ShowPlace(int currentPage, int pageCount) {
    for (const QString& key : {QStringLiteral("First"), QStringLiteral("Previous")}) {
        Button(key)->setEnabled(currentPage != 1);
    }
    for (const QString& key : {QStringLiteral("Next"), QStringLiteral("Last")}) {
        Button(key)->setEnabled(currentPage != pageCount);
    }
}

} // namespace velmora::print
