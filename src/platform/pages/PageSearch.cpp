#include "platform/pages/PageSearch.h"

#include "platform/pages/PageFont.h"

#include <cmath>
#include <map>

namespace velmora::pages {

namespace {

class Search {
public:
    Search(const Document& document, const QString& wanted) : document_(document), wanted_(wanted) {}

    std::vector<TextHit> Run() {
        for (size_t i = 0; i < document_.pages.size(); ++i) {
            page_ = static_cast<int>(i);
            SearchPage(document_.pages[i]);
        }
        return std::move(hits_);
    }

private:
    void SearchPage(const Page& page) {
        const Item* last = nullptr;
        for (const Item& item : page.Items()) {
            if (item.kind != Item::Kind::Text) {
                continue;
            }
            if (last == nullptr || !RunsOn(page, *last, item)) {
                SearchParagraph(page);
            }
            paragraph_.push_back(&item);
            last = &item;
        }
        SearchParagraph(page);
    }

    // True when `next` is the next line of the wrapped text that `item` is a line of: those break behind a blank.
    static bool RunsOn(const Page& page, const Item& item, const Item& next) {
        return next.x == item.x && next.y == item.y + item.height && next.font == item.font &&
               page.Text(item).endsWith(u' ');
    }

    void SearchParagraph(const Page& page) {
        QString text;
        for (const Item* item : paragraph_) {
            text += page.Text(*item);
        }
        for (qsizetype at = 0; (at = text.indexOf(wanted_, at, Qt::CaseInsensitive)) >= 0; at += wanted_.size()) {
            AddHit(page, at);
        }
        paragraph_.clear();
    }

    void AddHit(const Page& page, qsizetype at) {
        TextHit hit{page_, {}};
        qsizetype before = 0;
        for (const Item* item : paragraph_) {
            const qsizetype from = std::max<qsizetype>(at - before, 0);
            const qsizetype to = std::min<qsizetype>(at + wanted_.size() - before, item->length);
            if (from < to) {
                const PageFont& font = Font(item->font);
                const QStringView text = page.Text(*item);
                const int left = font.TextWidth(text.first(from));
                const int right = font.TextWidth(text.first(to));
                hit.marks.emplace_back(item->x + left, item->y, right - left, item->height);
            }
            before += item->length;
        }
        hits_.push_back(std::move(hit));
    }

    const PageFont& Font(quint16 index) {
        std::unique_ptr<PageFont>& font = fonts_[index];
        if (!font) {
            font = std::make_unique<PageFont>(document_.fonts[index]);
        }
        return *font;
    }

    const Document& document_;
    const QString wanted_;
    int page_ = 0;
    std::vector<const Item*> paragraph_;
    std::map<quint16, std::unique_ptr<PageFont>> fonts_;
    std::vector<TextHit> hits_;
};

} // namespace

std::vector<TextHit> FindText(const Document& document, const QString& wanted) {
    return wanted.isEmpty() ? std::vector<TextHit>() : Search(document, wanted).Run();
}

} // namespace velmora::pages
