#include "print/HtmlWrapper.h"

#include "data/Configuration.h"
#include "data/Helpers.h"

namespace velmora::print {

QByteArray ReadHtmlHeader() {
    return ReadFileBytes(DataDirectory() + QStringLiteral("\\htmlpre.txt"));
}

QByteArray ReadHtmlFooter() {
    return ReadFileBytes(DataDirectory() + QStringLiteral("\\htmlpost.txt"));
}

} // namespace velmora::print
