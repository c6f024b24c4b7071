#pragma once

#include "engine/DatabasePlace.h"
#include "engine/RepairReport.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace velmora::engine::test {

// What a program expects at opening.
OpenOptions ShippedOptions();

// The store's work on the database at a path. A repair takes place on March 7, 2026, 14:15:09.
bool IsInUse(const QString& path);
CheckResult CheckDatabase(const QString& path, const OpenOptions& options = {});
RepairReport RepairDatabase(const QString& path, const Schema& schema = ShippedOptions().schema);

// A folder of its own for every test, with a database in it.
class SampleFolder {
public:
    QString Path() const { return folder_.filePath(QStringLiteral("Velmora.MDB")); }
    QString File(const QString& name) const { return folder_.filePath(name); }
    // What is in the folder, sorted.
    QStringList Names() const;

private:
    QTemporaryDir folder_;
};

// A database with rows in every table, this many reservations among them; some notes need overflow pages. The rows of
// equal calls are equal.
void MakeSample(const QString& path, int reservations);

// All rows of a database by table: each row as one text with its row number or key in front.
using Rows = std::map<QByteArray, std::set<QByteArray>>;
Rows ReadRows(const QString& path);
qint64 CountRows(const Rows& rows);

// Pages by what they hold.
std::vector<int> PagesOf(const QString& path, const char* tableOrIndex, const char* kind);
constexpr int pageSize = 4096;
void Overwrite(const QString& path, qint64 offset, const QByteArray& bytes);
void OverwritePage(const QString& path, int page, const QByteArray& bytes = QByteArray(pageSize, '\x5a'));
QByteArray Contents(const QString& path);
void SetContents(const QString& path, const QByteArray& contents);
void Execute(const QString& path, const char* sql);

// Opens as the engine does: 0, or the number of the error.
int OpeningResult(const QString& path, const OpenOptions& options = ShippedOptions());
constexpr int NumberOf(EngineErrorNumber number) {
    return static_cast<int>(number);
}
// The number of the error that `action` ends with; 0 without one.
int ErrorOf(const std::function<void()>& action);
// Whether `action` reports a full disk, in a process where no file may have more than `most` bytes.
bool ReportsAFullDisk(qint64 most, const std::function<void()>& action);

} // namespace velmora::engine::test
