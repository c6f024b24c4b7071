#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora {

// A test with a folder of its own.
class FolderTest : public testing::Test {
protected:
    // An absolute name stays as it is.
    QString Path(const QString& name) const { return QDir(folder_.path()).filePath(name); }
    void Put(const QString& name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    // The bytes of a file, or "(none)" when there is no such file.
    QByteArray Get(const QString& name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    QTemporaryDir folder_;
};

} // namespace velmora
