#include "notes/windows/GridSettings.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

const QString application = u"Velmora"_s;
const QString columnsKey = u"Columns"_s;
const QString fontKey = u"Font"_s;
constexpr int narrowest = 16;
constexpr int widest = 4000;
constexpr double smallest = 4;
constexpr double largest = 96;

} // namespace

std::optional<QList<int>> GridSettings::Widths(int count) const {
    QList<int> widths;
    for (const QString& part : settings_.Read(application, grid_, columnsKey).value_or(QString()).split(u',')) {
        bool number = false;
        const int width = part.toInt(&number);
        if (!number || width < narrowest || width > widest) {
            return std::nullopt;
        }
        widths.append(width);
    }
    return widths.size() == count ? std::optional(widths) : std::nullopt;
}

void GridSettings::SaveWidths(const QList<int>& widths) {
    QStringList parts;
    for (const int width : widths) {
        parts.append(QString::number(width));
    }
    settings_.Write(application, grid_, columnsKey, parts.join(u','));
}

std::optional<FontChoice> GridSettings::Font() const {
    const QStringList parts = settings_.Read(application, grid_, fontKey).value_or(QString()).split(u'|');
    if (parts.size() != 4 || parts[0].isEmpty()) {
        return std::nullopt;
    }
    bool number = false;
    const double points = parts[1].toDouble(&number);
    if (!number || points < smallest || points > largest) {
        return std::nullopt;
    }
    return FontChoice{parts[0], points, parts[2] == u"1", parts[3] == u"1"};
}

void GridSettings::SaveFont(const FontChoice& font) {
    settings_.Write(application, grid_, fontKey,
                    u"%1|%2|%3|%4"_s.arg(font.family, QString::number(font.points), QString::number(font.bold ? 1 : 0),
                                         QString::number(font.italic ? 1 : 0)));
}

} // namespace velmora
