#pragma once

#include "base/services/Dialogs.h"
#include "base/services/UserSettings.h"

#include <QList>

#include <optional>

namespace velmora {

// The column widths and the font of one grid, kept for the user. `grid` is the section that they are kept under.
class GridSettings {
public:
    GridSettings(UserSettings& settings, QString grid) : settings_(settings), grid_(std::move(grid)) {}

    // Device-independent dots, one for each of `count` columns; none where the user has not sized them, or what is kept
    // is not that many sound widths.
    std::optional<QList<int>> Widths(int count) const;
    void SaveWidths(const QList<int>& widths);
    std::optional<FontChoice> Font() const;
    void SaveFont(const FontChoice& font);

private:
    UserSettings& settings_;
    QString grid_;
};

} // namespace velmora
