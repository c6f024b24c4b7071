#include "demo/WordFile.h"

#include "site/Resource.h"

#include <stdexcept>

// Qt's macro declares a function and so cannot stand in a namespace. It keeps the resources of a static library in the
// program.
static void InitResources() {
    Q_INIT_RESOURCE(velmora_demo_share);
}

namespace velmora::demo {

QByteArray ReadDemoFile(const QString& name) {
    InitResources();
    return ReadResourceBytes(QStringLiteral("demo/") + name);
}

WordFile::WordFile(const QString& name) {
    QStringList* section = nullptr;
    const QStringList lines = QString::fromUtf8(ReadDemoFile(name)).split(u'\n');
    for (const QString& raw : lines) {
        QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            const QString title = line.mid(1, line.size() - 2);
            names_.append(title);
            section = &sections_[title];
        } else if (section != nullptr) {
            section->append(line.replace(QStringLiteral("\\n"), QStringLiteral("\n")));
        }
    }
}

const QStringList& WordFile::Entries(const QString& section) const {
    const auto found = sections_.constFind(section);
    if (found == sections_.constEnd()) {
        throw std::logic_error("no such section of words: " + section.toStdString());
    }
    return *found;
}

std::vector<QStringList> WordFile::Rows(const QString& section) const {
    std::vector<QStringList> rows;
    for (const QString& entry : Entries(section)) {
        // A final "|" stands for an empty last part, whose blank the trimming took.
        QStringList parts = entry.split(u'|');
        for (QString& part : parts) {
            part = part.trimmed();
        }
        rows.push_back(std::move(parts));
    }
    return rows;
}

} // namespace velmora::demo
