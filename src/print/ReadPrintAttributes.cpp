#include "print/ReadPrintAttributes.h"

namespace velmora::print {

std::vector<PrintAttribute> ReadPrintAttributes(engine::Database& database) {
    std::vector<PrintAttribute> attributes;
    const auto rows = database.OpenRecordset(u"PrintAttributes");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        attributes.push_back(
            {(*rows)["Caption"].ToText(), static_cast<qint16>((*rows)["PrintAttributes"].ToInteger())});
    }
    return attributes;
}

} // namespace velmora::print
