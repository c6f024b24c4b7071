#include "platform/pages/Page.h"

#include <algorithm>

namespace velmora::pages {

void Page::AddText(quint16 font, int x, int y, int width, int height, QStringView text) {
    items_.push_back({.font = font,
                      .x = x,
                      .y = y,
                      .width = width,
                      .height = height,
                      .text = static_cast<quint32>(texts_.size()),
                      .length = static_cast<quint32>(text.size())});
    texts_.append(text);
}

void Page::AddLine(int x1, int y1, int x2, int y2, int penWidth) {
    const auto pen = static_cast<quint32>(std::max(penWidth, 0));
    items_.push_back({.kind = Item::Kind::Line, .x = x1, .y = y1, .width = x2 - x1, .height = y2 - y1, .text = pen});
}

void Page::AddBox(int x, int y, int width, int height, Fill fill, int penWidth) {
    const auto pen = static_cast<quint32>(std::max(penWidth, 0));
    items_.push_back(
        {.kind = Item::Kind::Box, .fill = fill, .x = x, .y = y, .width = width, .height = height, .text = pen});
}

QString Page::PlainText() const {
    std::vector<const Item*> texts;
    for (const Item& item : items_) {
        if (item.kind == Item::Kind::Text && !Text(item).trimmed().isEmpty()) {
            texts.push_back(&item);
        }
    }
    std::stable_sort(texts.begin(), texts.end(), [](const Item* left, const Item* right) {
        return left->y != right->y ? left->y < right->y : left->x < right->x;
    });
    QString result;
    const Item* last = nullptr;
    for (const Item* item : texts) {
        if (last != nullptr) {
            result += item->y == last->y ? u'\t' : u'\n';
        }
        result += Text(*item).trimmed();
        last = item;
    }
    return last == nullptr ? result : result + u'\n';
}

void Page::Shrink() {
    items_.shrink_to_fit();
    texts_.squeeze();
}

quint16 Document::FontIndex(const FontSpec& font) {
    const auto found = std::find(fonts.begin(), fonts.end(), font);
    if (found != fonts.end()) {
        return static_cast<quint16>(found - fonts.begin());
    }
    fonts.push_back(font);
    return static_cast<quint16>(fonts.size() - 1);
}

} // namespace velmora::pages
