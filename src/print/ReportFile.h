#pragma once

#include "print/DocumentSink.h"

#include <QIODevice>
#include <QString>

namespace velmora::print {

// The path of a report file: folder and name joined, and the filter's last four characters (".txt") appended unless
// the path ends with exactly those.
QString ReportFilePath(const QString& folder, const QString& name, const QString& filter);

// Writes a report as its file holds it: a PDF's bytes; a text and one line end, or nothing at all for an empty text.
// Returns false when the device did not take all of it. The device is opened unbuffered.
bool WriteReport(QIODevice& device, const QByteArray& bytes, ReportFileKind kind);

// Makes or replaces the file at a native path. The file appears complete or not at all: after a failure, a full disk
// included, what was there before is still there. Throws Error with the path and the reason.
void WriteReportFile(const QString& path, const QByteArray& bytes, ReportFileKind kind);

} // namespace velmora::print
