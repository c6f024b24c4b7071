#pragma once

#include <QByteArray>

namespace velmora::print {

// What a site puts before and behind every HTML report: the files "htmlpre.txt" and "htmlpost.txt" of the data
// directory, byte for byte; empty when there is no such file.
QByteArray ReadHtmlHeader();
QByteArray ReadHtmlFooter();

} // namespace velmora::print
