#include "platform/pages/PageSearch.h"

#include "platform/pages/PageFont.h"

#include <QStringMatcher>

#include <cmath>
#include <map>

namespace velmora::pages {

namespace {

class Search {
public:
    Search(const Document& document, const QString& wanted)
        : document_(document), matcher_(wanted, Qt::CaseInsensitive), length_(wanted.size()) {}

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
        QStringView text;
        if (paragraph_.size() == 1) {
            text = page.Text(*paragraph_.front());
        } else {
            joined_.clear();
            for (const Item* item : paragraph_) {
                joined_ += page.Text(*item);
            }
            text = joined_;
        }
        for (qsizetype at = matcher_.indexIn(text); at >= 0; at = matcher_.indexIn(text, at + length_)) {
            AddHit(page, at);
        }
        paragraph_.clear();
    }

    void AddHit(const Page& page, qsizetype at) {
        TextHit hit{page_, {}};
        qsizetype before = 0;
        for (const Item* item : paragraph_) {
            const qsizetype from = std::max<qsizetype>(at - before, 0);
            const qsizetype to = std::min<qsizetype>(at + length_ - before, item->length);
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
    const QStringMatcher matcher_;
    const qsizetype length_;
    int page_ = 0;
    std::vector<const Item*> paragraph_;
    QString joined_;
    std::map<quint16, std::unique_ptr<PageFont>> fonts_;
    std::vector<TextHit> hits_;
};

} // namespace

std::vector<TextHit> FindText(const Document& document, const QString& wanted) {
    return wanted.isEmpty() ? std::vector<TextHit>() : Search(document, wanted).Run();
}

} // namespace velmora::pages
