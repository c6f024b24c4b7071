#include "platform/pages/PageFont.h"

#include "base/Error.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace velmora::pages {

QString DefaultFamily() {
    return QStringLiteral("Liberation Sans");
}

QString InstalledFamily(const QString& family) {
    for (const QString& candidate : {family, DefaultFamily()}) {
        if (QFontDatabase::hasFamily(candidate)) {
            return candidate;
        }
    }
    throw ProgramError(ErrorNumber::Unavailable,
                       QStringLiteral("Pages cannot be drawn: the font \"%1\" is not installed. Install the package "
                                      "fonts-liberation.")
                           .arg(DefaultFamily()));
}

QFont PageFont::MakeFont(const FontSpec& spec) {
    QFont font(spec.family);
    constexpr double twipsPerPoint = 20;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(spec.points * twipsPerPoint))));
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setUnderline(spec.underline);
    font.setStrikeOut(spec.strikeOut);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

PageFont::PageFont(const FontSpec& spec) : spec_(spec), font_(MakeFont(spec)), metrics_(font_) {
    for (qsizetype i = 0x20; i < tableSize; ++i) {
        advances_[static_cast<size_t>(i)] =
            static_cast<float>(metrics_.horizontalAdvance(QChar(static_cast<ushort>(i))));
    }
    lineHeight_ = static_cast<int>(std::lround(metrics_.height()));
    ascent_ = metrics_.ascent();
}

double PageFont::Advance(QStringView text) const {
    double width = 0;
    for (const QChar c : text) {
        const auto code = static_cast<size_t>(c.unicode());
        if (code >= static_cast<size_t>(tableSize)) {
            // Other scripts need the toolkit's own layout, of the whole text at once.
            return metrics_.horizontalAdvance(text.toString());
        }
        width += static_cast<double>(advances_[code]);
    }
    return width;
}

int PageFont::TextWidth(QStringView text) const {
    return static_cast<int>(std::lround(Advance(text)));
}

} // namespace velmora::pages
