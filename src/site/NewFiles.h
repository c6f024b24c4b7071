#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace velmora {

// Folders and files made on the way to a whole, taken away again with the object unless they are kept. What is there
// already stays as it is.
class NewFiles {
public:
    NewFiles() = default;
    ~NewFiles();
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    // Makes the folder and those above it. Throws Error (PathNotFound).
    void MakeFolder(const QString& path);
    // Throws Error (FileAccess).
    void WriteUnlessThere(const QString& path, const QByteArray& content);
    void Keep();

private:
    QStringList files_;
    QStringList folders_; // the innermost first
};

} // namespace velmora
