#include "demo/WordFile.h"

#include "demo/Resources.h"
#include "site/Resource.h"

#include <stdexcept>

namespace velmora::demo {

WordFile WordFile::Load(const QString& name) {
    RegisterResources();
    return Parse(ReadResource(QStringLiteral("demo/") + name));
}

WordFile WordFile::Parse(const QString& text) {
    WordFile file;
    QStringList* section = nullptr;
    const QStringList lines = text.split(u'\n');
    for (const QString& raw : lines) {
        QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            const QString name = line.mid(1, line.size() - 2);
            file.names_.append(name);
            section = &file.sections_[name];
        } else if (section != nullptr) {
            section->append(line.replace(QStringLiteral("\\n"), QStringLiteral("\n")));
        }
    }
    return file;
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
