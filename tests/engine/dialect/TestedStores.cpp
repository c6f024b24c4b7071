#include "tests/engine/dialect/TestedStores.h"

#include "tests/engine/TestSite.h"
#include "tests/support/Folders.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

QString CorpusText(const QString& file) {
    QFile text(TestDataFolder() + u"/engine/dialect/corpus/"_s + file);
    EXPECT_TRUE(text.open(QIODevice::ReadOnly)) << text.fileName().toStdString();
    return QString::fromUtf8(text.readAll());
}

std::unique_ptr<Database> OpenEmbedded(const QString& folder) {
    const TestSite site;
    site.Run(CorpusText(u"rows.sql"_s).toUtf8().constData());
    const QString path = folder + u"/Corpus.MDB"_s;
    EXPECT_TRUE(QFile::copy(site.Path(), path));
    OpenOptions options;
    options.now = [] { return *ParseStorageText(u"2026-03-07 14:15:00"); };
    return Database::Open(path, options);
}

} // namespace velmora::engine::test
