#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::demo {

// A file of share/demo, as stored. Throws std::logic_error when it is not there.
QByteArray ReadDemoFile(const QString& name);

// A text file of word lists: "[section]" lines with the entries below them, one a line. Lines that begin with "#" and
// empty lines say nothing; "\n" inside an entry is a line end.
class WordFile {
public:
    // A file of share/demo, for example "events.txt". Throws std::logic_error when it is not there.
    explicit WordFile(const QString& name);

    // The names of the sections in the order of the file.
    const QStringList& Sections() const { return names_; }
    // The entries of a section; throws std::logic_error when the file has no such section.
    const QStringList& Entries(const QString& section) const;
    // The entries of a section taken apart at " | ", each part trimmed.
    std::vector<QStringList> Rows(const QString& section) const;

private:
    QStringList names_;
    QHash<QString, QStringList> sections_;
};

} // namespace velmora::demo
