#include "layouts/LayoutQuery.h"
#include "tests/layouts/LayoutFixture.h"

#include <random>

namespace velmora::layouts {
namespace {

class FuzzTest : public LayoutFixture {
protected:
    size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random_); }
    const QByteArray& Any(const QList<QByteArray>& choices) {
        return choices[static_cast<qsizetype>(Below(static_cast<size_t>(choices.size())))];
    }
    // The lines of a file, in percent encoding.
    static QList<QByteArray> Pieces(const QString& name) {
        QList<QByteArray> pieces;
        for (const QString& line : TestText(name).split(u'\n', Qt::SkipEmptyParts)) {
            pieces.append(QByteArray::fromPercentEncoding(line.toUtf8()));
        }
        return pieces;
    }
    // A few random changes: bytes flipped, cut, doubled, or taken from elsewhere.
    QByteArray Mutate(QByteArray bytes, const QList<QByteArray>& pieces) {
        for (size_t i = 0, changes = 1 + Below(4); i < changes && !bytes.isEmpty(); ++i) {
            const auto at = static_cast<qsizetype>(Below(static_cast<size_t>(bytes.size())));
            switch (Below(4)) {
            case 0:
                bytes[at] = static_cast<char>(Below(256));
                break;
            case 1:
                bytes.remove(at, static_cast<qsizetype>(Below(20)) + 1);
                break;
            case 2:
                bytes.insert(at, bytes.mid(static_cast<qsizetype>(Below(static_cast<size_t>(bytes.size()))), 30));
                break;
            default:
                bytes.insert(at, Any(pieces));
            }
        }
        return bytes;
    }
    // The rows of all tables, so that a change by a hostile text is seen.
    QString Fingerprint() {
        return store_
            ->Rows(
                u"SELECT (SELECT Count(*) || Sum(ID) FROM Reservation), (SELECT Count(*) || group_concat(Name) FROM "
                "Asset), (SELECT group_concat(name) FROM sqlite_master), (SELECT group_concat(Text) FROM StoredQuery)"_s)
            .join(u'\n');
    }

    std::mt19937 random_{20260305};
};

TEST_F(FuzzTest, FormulasAreRefusedOrRun) {
    FieldScope scope;
    scope.Add(*database_->Schema().FindTable(u"Reservation"), {});
    const QList<QByteArray> pieces = Pieces(u"layouts/formula_pieces.txt"_s);
    const QString before = Fingerprint();
    int taken = 0;
    int refused = 0;
    for (int n = 0; n < 1500; ++n) {
        QByteArray formula;
        for (size_t i = 0, count = Below(14); i < count; ++i) {
            formula += Any(pieces);
        }
        formula =
            Below(3) == 0
                ? Mutate(
                      "{Reservation.Start} >= Date(2026,3,6) And Not ({Reservation.ID} = 5 Or {Reservation.Permanent})",
                      pieces)
                : formula;
        const QString text = QString::fromUtf8(formula);
        std::optional<Formula> parsed;
        if (!Failure([&] { parsed = ParseFormula(text, scope); }).isEmpty()) {
            ++refused;
            continue;
        }
        ++taken;
        // What the formula language takes, the database takes too.
        QueryText query;
        const QString condition = query.Condition(*parsed);
        EXPECT_EQ(Failure([&] {
                      query
                          .Open(*database_,
                                u"SELECT ID FROM Reservation WHERE "_s + (condition.isEmpty() ? u"True"_s : condition))
                          ->OpenRecordset();
                  }),
                  QString())
            << text.toStdString();
    }
    EXPECT_GT(taken, 50);
    EXPECT_GT(refused, 50);
    EXPECT_EQ(Fingerprint(), before);
}

TEST_F(FuzzTest, LayoutsAreRefusedOrRun) {
    const QList<QByteArray> pieces = Pieces(u"layouts/layout_pieces.txt"_s);
    QList<QByteArray> layouts;
    for (const QString& name : QDir(ShareFolder() + u"/layouts"_s).entryList(QDir::Files)) {
        layouts.push_back(FileBytes(Path(name)));
    }
    const QString before = Fingerprint();
    int taken = 0;
    int refused = 0;
    fakes_.printers.font.family = u"Liberation Sans"_s;
    for (int n = 0; n < 1000; ++n) {
        const QByteArray layout = Mutate(Any(layouts), pieces);
        WriteLayout(u"Fuzz.rpx"_s, layout);
        previews_.opened.clear();
        const print::Target target = Below(2) == 0 ? print::Target::HtmlFile : print::Target::Preview;
        const QString said = Failure([&] { Run(target, u"Fuzz.rpx"_s, {}); });
        for (const print::PreviewReport& report : previews_.opened) {
            EXPECT_FALSE(report.document.pages.empty());
        }
        if (said.isEmpty()) {
            ++taken;
            continue;
        }
        ++refused;
        // A layout's faults are found in the file: none of them comes back from the database.
        EXPECT_TRUE(said.startsWith(u"The report layout Fuzz.rpx is wrong in line "_s)) << said.toStdString() << "\n"
                                                                                        << layout.toStdString();
    }
    EXPECT_GT(taken, 5);
    EXPECT_GT(refused, 50);
    EXPECT_EQ(Fingerprint(), before);
}

} // namespace
} // namespace velmora::layouts
