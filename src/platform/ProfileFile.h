#pragma once

#include <QString>

#include <optional>

namespace velmora {

// An initialisation file of sections "[Name]" and entries "Key=Value", read and written line by line so that comments,
// order and whatever else an administrator wrote stay as they are. Names ignore letter case and blanks around them. Of
// a section or key that stands twice the first counts. Text is UTF-8, or Latin-1 where a file is not valid UTF-8.
class ProfileFile {
public:
    // `path` in native form. The file need not exist.
    explicit ProfileFile(QString path) : path_(std::move(path)) {}

    // The value without blanks around it and without one pair of enclosing quotes; none when the file, the section
    // or the key is missing or the file cannot be read.
    std::optional<QString> Read(const QString& section, const QString& key) const;

    // Sets the value, adding section and key where they are missing; false when the file cannot be written, or the
    // names or the value hold a line break. The file is replaced as a whole, never left half-written.
    bool Write(const QString& section, const QString& key, const QString& value) const;

private:
    QString path_;
};

} // namespace velmora
