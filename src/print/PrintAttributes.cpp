#include "print/PrintAttributes.h"

#include "engine/Database.h"

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

void AttributeTable::Load(const AttributeSource& source) {
    styles_.clear();
    try {
        for (const PrintAttribute& attribute : source()) {
            if (!styles_.contains(attribute.caption)) {
                styles_.insert(attribute.caption, attribute.style);
            }
        }
    } catch (const std::exception&) {
        // Styles only adorn a report; without the table it is printed plain.
        styles_.clear();
    }
}

} // namespace velmora::print
